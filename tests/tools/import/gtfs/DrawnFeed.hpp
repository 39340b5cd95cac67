// A transit feed of a few rows, written as its files.
//
//   DrawnFeed feed;
//   feed.station("s").entrance("door", {0, 0}).node("hall").way("w", "door", "hall", 1);
//   feed.writeTo(folder, "feed");
//
// Threads: one. Fails: never.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::test {

class DrawnFeed {
 public:
  struct Metres {
    double east = 0;
    double north = 0;
  };
  struct Stop {
    std::string name = {};
    std::string level = {};
    std::string parent = "s";
    std::string code = {};
    std::string description = {};
    std::string wheelchair = {};
  };
  struct Way {
    bool isBothWays = true;
    std::string length = {};
    std::string steps = {};
    std::string slope = {};
    std::string time = {};
    std::string sign = {};
  };

  DrawnFeed& stop(std::string_view id, int kind, std::optional<Metres> at, const Stop& stop) {
    stops_ += std::string(id) + "," + std::to_string(kind) + ",\"" + stop.name + "\"," +
              stop.description + "," + stop.code + "," + placeOf(at) + "," + stop.parent + "," +
              stop.level + "," + stop.wheelchair + "\n";
    return *this;
  }
  DrawnFeed& station(std::string_view id, const std::string& name = "Mill Street") {
    return stop(id, 1, Metres{}, {.name = name, .parent = {}});
  }
  DrawnFeed& entrance(std::string_view id, std::optional<Metres> at,
                      const std::string& level = {}) {
    return stop(id, 2, at, {.name = "Door " + std::string(id), .level = level});
  }
  DrawnFeed& platform(std::string_view id, std::optional<Metres> at,
                      const std::string& level = {}) {
    return stop(id, 0, at, {.name = "Track " + std::string(id), .level = level});
  }
  DrawnFeed& node(std::string_view id, std::optional<Metres> at = {},
                  const std::string& level = {}) {
    return stop(id, 3, at, {.level = level});
  }
  DrawnFeed& level(std::string_view id, std::string_view index, std::string_view name) {
    levels_ += std::string(id) + "," + std::string(index) + "," + std::string(name) + "\n";
    return *this;
  }
  DrawnFeed& way(std::string_view id, std::string_view from, std::string_view to, int mode) {
    return way(id, from, to, mode, Way());
  }
  DrawnFeed& way(std::string_view id, std::string_view from, std::string_view to, int mode,
                 const Way& way) {
    ways_ += std::string(id) + "," + std::string(from) + "," + std::string(to) + "," +
             std::to_string(mode) + "," + (way.isBothWays ? "1" : "0") + "," + way.length + "," +
             way.time + "," + way.steps + "," + way.slope + "," + way.sign + "\n";
    return *this;
  }

  void writeTo(const TemporaryFolder& folder, const std::string& name) const {
    folder.write(name + "/stops.txt", stops_);
    folder.write(name + "/pathways.txt", ways_);
    if (levels_.find('\n') + 1 < levels_.size()) folder.write(name + "/levels.txt", levels_);
  }

 private:
  // Near the equator, where a degree is as long one way as the other, but for the ellipsoid.
  static std::string placeOf(std::optional<Metres> at) {
    if (!at) return ",";
    return std::to_string(1 + at->north / 110'574.3) + "," +
           std::to_string(1 + at->east / 111'302.6);
  }

  std::string stops_ =
      "stop_id,location_type,stop_name,stop_desc,platform_code,stop_lat,stop_lon,parent_station,"
      "level_id,wheelchair_boarding\n";
  std::string levels_ = "level_id,level_index,level_name\n";
  std::string ways_ =
      "pathway_id,from_stop_id,to_stop_id,pathway_mode,is_bidirectional,length,traversal_time,"
      "stair_count,max_slope,signposted_as\n";
};

}  // namespace tern::test
