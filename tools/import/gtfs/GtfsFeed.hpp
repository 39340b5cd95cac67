// What a transit feed says of its stations: its stops, levels and pathways, row by row, and what
// they are called in other languages.
//
// Ownership: a plain value. Threads: plain values.
// Fails: by value, where a file or a column is missing without which there is no station. Whatever
// else is wrong with a row stands in the row, or is told of.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/import/draft/LocalPlane.hpp"
#include "tools/import/draft/Names.hpp"
#include "tools/import/draft/Oddities.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

// In the order of their numbers in a feed.
enum class StopKind { platform, station, entrance, node, boardingArea };

struct GtfsStop {
  std::string id;
  StopKind kind = StopKind::platform;
  std::string name;
  std::string description;
  std::string platformCode;
  // Not of the reference, but widely used: where the trains go.
  std::string platformName;
  std::string parent;
  std::string level;
  std::optional<LonLat> place;
  // As the feed has it: 0 not said, 1 yes, 2 no.
  int wheelchair = 0;
  bool isRagged = false;
};

struct GtfsLevel {
  std::string id;
  std::string name;
  double index = 0;
};

// In the order of their numbers in a feed.
enum class PathwayMode {
  unknown,
  walkway,
  stairs,
  movingSidewalk,
  escalator,
  elevator,
  fareGate,
  exitGate
};

struct GtfsPathway {
  std::string id;
  std::string from;
  std::string to;
  PathwayMode mode = PathwayMode::unknown;
  bool isBothWays = true;
  // Metres, seconds, and metres of rise in a metre; steps and slopes are above 0 where one goes up.
  std::optional<double> length;
  std::optional<double> traversalTime;
  std::optional<double> steps;
  std::optional<double> slope;
  std::optional<double> width;
  std::string signpostedAs;
  std::string reversedSignpostedAs;
  bool isRagged = false;
};

class GtfsFeed {
 public:
  static bool hasStops(const SourceFiles& source);
  // Whether there are stops and pathways.
  static bool isIn(const SourceFiles& source);

  // Why there is no station to be had; none when all went well.
  std::optional<std::string> read(const SourceFiles& source);

  const std::vector<GtfsStop>& stops() const { return stops_; }
  const std::vector<GtfsPathway>& pathways() const { return pathways_; }
  // By place in the list; none for an id that is not there.
  std::optional<std::size_t> stopOf(std::string_view id) const;
  const GtfsLevel* level(std::string_view id) const;
  // In the languages of the feed, its own first.
  Names stopNames(const GtfsStop& stop) const;
  Names levelNames(const GtfsLevel& level) const;
  // Empty where the feed does not say.
  const std::string& language() const { return language_; }
  // Who publishes it, else the first of its agencies; empty where it does not say.
  const std::string& publisher() const { return publisher_; }
  // What belongs to no station.
  const Oddities& told() const { return told_; }
  // Differs with every change of a file that is read.
  std::uint64_t stamp() const { return stamp_; }

 private:
  struct Table;
  class RowReader;

  std::optional<std::string> readTable(const SourceFiles& source, const Table& table);
  void tellOfOtherFeeds(const SourceFiles& source);
  void addStop(const RowReader& row);
  void addLevel(const RowReader& row);
  void addPathway(const RowReader& row);
  void addTranslation(const RowReader& row);
  void addPublisher(const RowReader& row);
  Names named(std::string_view text, std::string_view field, std::string_view id) const;

  std::vector<GtfsStop> stops_;
  std::vector<GtfsPathway> pathways_;
  std::unordered_map<std::string, GtfsLevel> levels_;
  std::unordered_map<std::string, std::size_t> stopOfId_;
  std::unordered_map<std::string, std::size_t> pathwayOfId_;
  // By field and, behind it, either the record's id or the text in the feed's own language.
  std::unordered_map<std::string, Names> translations_;
  std::string language_;
  std::string publisher_;
  Oddities told_;
  std::uint64_t stamp_ = 0;
};

}  // namespace tern::imports
