#include "tools/import/gtfs/GtfsFeed.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <span>
#include <utility>

#include "TernCoreKit/platform/Numbers.hpp"
#include "tools/import/draft/Hash.hpp"
#include "tools/import/source/CsvReader.hpp"
#include "tools/import/source/PlaneSystem.hpp"
#include "tools/import/source/Utf8Text.hpp"

namespace tern::imports {

namespace {

constexpr double mostLevelIndex = 1'000;
// Of one thing, in so many languages.
constexpr std::size_t mostNames = 100;

// The folder that the feed lies in, with a slash behind; the highest one with such a file.
std::optional<std::string> folderOf(const SourceFiles& source, std::string_view file) {
  std::optional<std::string> folder;
  for (const std::string& name : source.names()) {
    if (!name.ends_with(file)) continue;
    std::string before = name.substr(0, name.size() - file.size());
    if (!before.empty() && before.back() != '/') continue;
    if (!folder || before.size() < folder->size()) folder = std::move(before);
  }
  return folder;
}

std::optional<double> numberOf(std::string_view text) {
  double number = 0;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, error] = readDouble(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

// A code of one digit; -1 for what is none.
int codeOf(std::string_view text, int fallback) {
  if (text.empty()) return fallback;
  return text.size() == 1 && text[0] >= '0' && text[0] <= '9' ? text[0] - '0' : -1;
}

// Many feeds have 0 and 0 where they know nothing.
std::optional<LonLat> placeOf(std::string_view longitude, std::string_view latitude) {
  const auto east = numberOf(longitude);
  const auto north = numberOf(latitude);
  if (!east || !north || (*east == 0 && *north == 0)) return std::nullopt;
  return PlaneSystem().onGlobe({*east, *north});
}

void addName(Names& names, std::string_view language, std::string_view text) {
  const bool isKnown = std::ranges::any_of(
      names, [&](const Name& name) { return name.language == language || name.text == text; });
  if (!text.empty() && !isKnown && names.size() < mostNames)
    names.push_back({std::string(language), std::string(text)});
}

bool isUtf16(std::string_view text) {
  return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

using Columns = std::span<const std::string_view>;
constexpr std::array<std::string_view, 13> stopColumns{
    "stop_id",       "location_type",  "stop_name", "stop_desc",
    "platform_code", "stop_lat",       "stop_lon",  "wheelchair_boarding",
    "platform_name", "parent_station", "level_id",  "stop_code",
    "stop_url"};
constexpr std::array<std::string_view, 3> levelColumns{"level_id", "level_index", "level_name"};
constexpr std::array<std::string_view, 12> pathwayColumns{
    "pathway_id",       "from_stop_id", "to_stop_id",     "pathway_mode",
    "is_bidirectional", "length",       "traversal_time", "stair_count",
    "max_slope",        "min_width",    "signposted_as",  "reversed_signposted_as"};
constexpr std::array<std::string_view, 6> translationColumns{
    "table_name", "field_name", "language", "translation", "record_id", "field_value"};
constexpr std::array<std::string_view, 4> publisherColumns{"feed_lang", "agency_lang",
                                                           "feed_publisher_name", "agency_name"};

}  // namespace

// How a file of the feed is read. The first `required` columns have to be there.
struct GtfsFeed::Table {
  std::string_view file;
  Columns columns;
  std::size_t required;
  bool isRequired;
  void (GtfsFeed::*add)(const RowReader&);
};

// A row by the names of its columns.
class GtfsFeed::RowReader {
 public:
  RowReader(const Table& table, const CsvRow& row) : table_(table), row_(row) {}

  // REQUIRES: one of the table's columns.
  const std::string& operator[](std::string_view column) const {
    const auto found = std::ranges::find(table_.columns, column);
    return row_.fields[static_cast<std::size_t>(found - table_.columns.begin())];
  }
  std::optional<double> number(std::string_view column) const { return numberOf((*this)[column]); }
  bool isRagged() const { return row_.isRagged; }
  // The row by its place, for one that has no id of its own.
  std::string place() const { return std::string(table_.file) + "#" + std::to_string(row_.number); }

 private:
  const Table& table_;
  const CsvRow& row_;
};

bool GtfsFeed::hasStops(const SourceFiles& source) {
  return folderOf(source, "stops.txt").has_value();
}

bool GtfsFeed::isIn(const SourceFiles& source) {
  return hasStops(source) && folderOf(source, "pathways.txt");
}

std::optional<std::string> GtfsFeed::read(const SourceFiles& source) {
  stamp_ = emptyHash;
  const std::array<Table, 6> tables{{
      {"feed_info.txt", publisherColumns, 0, false, &GtfsFeed::addPublisher},
      {"agency.txt", publisherColumns, 0, false, &GtfsFeed::addPublisher},
      {"translations.txt", translationColumns, 4, false, &GtfsFeed::addTranslation},
      {"levels.txt", levelColumns, 2, false, &GtfsFeed::addLevel},
      {"stops.txt", stopColumns, 1, true, &GtfsFeed::addStop},
      {"pathways.txt", pathwayColumns, 4, true, &GtfsFeed::addPathway},
  }};
  for (const Table& table : tables) {
    if (auto error = readTable(source, table)) {
      if (table.isRequired) return error;
      told_.tell(table.file, "unreadable", *error + ".");
    }
  }
  tellOfOtherFeeds(source);
  return std::nullopt;
}

void GtfsFeed::tellOfOtherFeeds(const SourceFiles& source) {
  const std::string own = folderOf(source, "stops.txt").value_or("") + "stops.txt";
  for (const std::string& name : source.names()) {
    if (name.ends_with("/stops.txt") && name != own) {
      told_.tell(name, "notRead", "Another feed of the source is read, that of " + own + ".");
    }
  }
}

std::optional<std::string> GtfsFeed::readTable(const SourceFiles& source, const Table& table) {
  const std::string file(table.file);
  const auto folder = folderOf(source, "stops.txt");
  const std::string name = folder.value_or("") + file;
  if (!std::ranges::binary_search(source.names(), name)) {
    return table.isRequired ? std::optional("there is no " + file) : std::nullopt;
  }
  const ReadFile read = source.read(name);
  if (read.error) return read.error;
  stamp_ = hashOf(read.text, hashOf(file, stamp_));
  if (isUtf16(read.text)) return name + " is written in UTF-16, not in UTF-8";
  const Utf8Text text = utf8TextOf(read.text);
  if (!text.wasUtf8) {
    told_.remark(file, "encoding", "It is not UTF-8; other bytes are taken for Windows-1252.");
  }
  const CsvHead head = readCsv(text.text, table.columns, [&](const CsvRow& row) {
    (this->*table.add)(RowReader(table, row));
  });
  if (head.error) return name + ": " + *head.error;
  for (std::size_t i = 0; i < table.required; ++i) {
    if (!head.has[i]) return name + " has no column " + std::string(table.columns[i]);
  }
  if (table.columns.data() == publisherColumns.data()) return std::nullopt;
  for (const std::string& column : head.others) {
    told_.tell(file + ": " + column, "notRead", "A venue has nothing for this column.");
  }
  return std::nullopt;
}

void GtfsFeed::addStop(const RowReader& row) {
  const std::string& id = row["stop_id"];
  const int kind = codeOf(row["location_type"], 0);
  if (id.empty() || kind < 0 || kind > 4) {
    told_.tell(id.empty() ? row.place() : id, "unknownKind",
               "The stop has no id, or a location type that is not known.");
  } else if (!stopOfId_.emplace(id, stops_.size()).second) {
    told_.tell(row.place(), "repeated",
               "Another stop has the id " + id + "; the first one counts.");
  } else {
    stops_.push_back({.id = id,
                      .kind = static_cast<StopKind>(kind),
                      .name = row["stop_name"],
                      .description = row["stop_desc"],
                      .platformCode = row["platform_code"],
                      .platformName = row["platform_name"],
                      .parent = row["parent_station"],
                      .level = row["level_id"],
                      .place = placeOf(row["stop_lon"], row["stop_lat"]),
                      .wheelchair = codeOf(row["wheelchair_boarding"], 0),
                      .isRagged = row.isRagged()});
  }
}

void GtfsFeed::addLevel(const RowReader& row) {
  const std::string& id = row["level_id"];
  const auto index = row.number("level_index");
  if (id.empty() || !index || std::abs(*index) > mostLevelIndex) {
    told_.tell(id.empty() ? row.place() : id, "noFloor", "The level has no id or no index.");
  } else if (!levels_.try_emplace(id, GtfsLevel{id, row["level_name"], *index + 0.0}).second) {
    told_.tell(row.place(), "repeated",
               "Another level has the id " + id + "; the first one counts.");
  } else if (row.isRagged()) {
    told_.remark(id, "ragged", "Its row has more or fewer fields than the head of levels.txt.");
  }
}

void GtfsFeed::addPathway(const RowReader& row) {
  const std::string& id = row["pathway_id"];
  const int mode = codeOf(row["pathway_mode"], 0);
  if (id.empty()) {
    told_.tell(row.place(), "noId", "The pathway has no id.");
    return;
  }
  if (!pathwayOfId_.emplace(id, pathways_.size()).second) {
    told_.tell(row.place(), "repeated",
               "Another pathway has the id " + id + "; the first one counts.");
    return;
  }
  pathways_.push_back(
      {.id = id,
       .from = row["from_stop_id"],
       .to = row["to_stop_id"],
       .mode = mode >= 1 && mode <= 7 ? static_cast<PathwayMode>(mode) : PathwayMode::unknown,
       .isBothWays = row["is_bidirectional"] != "0",
       .length = row.number("length"),
       .traversalTime = row.number("traversal_time"),
       .steps = row.number("stair_count"),
       .slope = row.number("max_slope"),
       .width = row.number("min_width"),
       .signpostedAs = row["signposted_as"],
       .reversedSignpostedAs = row["reversed_signposted_as"],
       .isRagged = row.isRagged()});
}

void GtfsFeed::addTranslation(const RowReader& row) {
  const std::string& table = row["table_name"];
  if (table != "stops" && table != "levels") return;
  const std::string& record = row["record_id"];
  const std::string key =
      row["field_name"] + "\n" + (record.empty() ? "=" + row["field_value"] : "#" + record);
  addName(translations_[key], row["language"], row["translation"]);
}

// The first file that says it; "mul" says only that there are several languages.
void GtfsFeed::addPublisher(const RowReader& row) {
  const std::string& language = row["feed_lang"].empty() ? row["agency_lang"] : row["feed_lang"];
  if (language_.empty() && language != "mul") language_ = language;
  const std::string& name = row["feed_publisher_name"];
  if (publisher_.empty()) publisher_ = name.empty() ? row["agency_name"] : name;
}

std::optional<std::size_t> GtfsFeed::stopOf(std::string_view id) const {
  const auto found = stopOfId_.find(std::string(id));
  return found == stopOfId_.end() ? std::nullopt : std::optional(found->second);
}

const GtfsLevel* GtfsFeed::level(std::string_view id) const {
  const auto found = levels_.find(std::string(id));
  return found == levels_.end() ? nullptr : &found->second;
}

Names GtfsFeed::named(std::string_view text, std::string_view field, std::string_view id) const {
  Names names;
  addName(names, language_, text);
  const std::string head = std::string(field) + "\n";
  const std::string keys[] = {head + "#" + std::string(id), head + "=" + std::string(text)};
  for (const std::string& key : keys) {
    const auto found = translations_.find(key);
    if (names.empty() || found == translations_.end()) continue;
    for (const Name& name : found->second) addName(names, name.language, name.text);
  }
  return names;
}

Names GtfsFeed::stopNames(const GtfsStop& stop) const {
  return named(stop.name, "stop_name", stop.id);
}

Names GtfsFeed::levelNames(const GtfsLevel& level) const {
  return named(level.name, "level_name", level.id);
}

}  // namespace tern::imports
