// A building of a few lines as an OpenStreetMap file. Places are metres east and south; points in
// the same place are one node.
//
//   DrawnOsm house;
//   house.box(1, {0, 0, 10, 4}, {{"indoor", "corridor"}, {"level", "0"}});
//   house.point({2, 4}, {{"door", "yes"}});
//   house.area(2, {{0, 4}, {2, 4}, {4, 4}, {4, 8}, {0, 8}}, {{"indoor", "room"}, {"level", "0"}});
//
// Ownership: a plain value. Threads: one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/tools/import/DrawnNetwork.hpp"
#include "tools/import/draft/LocalPlane.hpp"

namespace tern::test {

class DrawnOsm {
 public:
  using Tags = std::vector<std::pair<std::string, std::string>>;
  struct Member {
    std::int64_t way;
    std::string role;
  };

  // The node there, which further tags are put to.
  std::int64_t point(imports::Point at, const Tags& tags = {}) {
    const auto [known, isNew] = nodes_.try_emplace({at.x, at.y}, 1000 + nodes_.size());
    Tags& own = tagsOfNodes_[known->second];
    own.insert(own.end(), tags.begin(), tags.end());
    return known->second;
  }

  DrawnOsm& line(std::int64_t id, const std::vector<imports::Point>& points, const Tags& tags) {
    std::vector<std::int64_t> refs;
    for (const imports::Point at : points) refs.push_back(point(at));
    return way(id, refs, tags);
  }

  DrawnOsm& area(std::int64_t id, std::vector<imports::Point> corners, const Tags& tags) {
    corners.push_back(corners.front());
    return line(id, corners, tags);
  }

  DrawnOsm& box(std::int64_t id, const imports::Box& box, const Tags& tags) {
    return area(id,
                {{box.left, box.top},
                 {box.right, box.top},
                 {box.right, box.bottom},
                 {box.left, box.bottom}},
                tags);
  }

  DrawnOsm& way(std::int64_t id, const std::vector<std::int64_t>& refs, const Tags& tags) {
    ways_ << "<way id=\"" << id << "\" version=\"1\">";
    for (const std::int64_t ref : refs) ways_ << "<nd ref=\"" << ref << "\"/>";
    ways_ << tagged(tags) << "</way>\n";
    return *this;
  }

  DrawnOsm& relation(std::int64_t id, const std::vector<Member>& members, const Tags& tags) {
    relations_ << "<relation id=\"" << id << "\" version=\"1\">";
    for (const Member& member : members) {
      relations_ << "<member type=\"way\" ref=\"" << member.way << "\" role=\"" << member.role
                 << "\"/>";
    }
    relations_ << tagged(tags) << "</relation>\n";
    return *this;
  }

  std::string xml() const {
    std::ostringstream text;
    text.precision(12);
    text << "<?xml version=\"1.0\"?>\n<osm version=\"0.6\">\n";
    for (const auto& [at, id] : nodes_) {
      const imports::LonLat globe = DrawnNetwork::globe({at.first, at.second});
      text << "<node id=\"" << id << "\" version=\"1\" lat=\"" << globe.latitude << "\" lon=\""
           << globe.longitude << "\">" << tagged(tagsOfNodes_.at(id)) << "</node>\n";
    }
    text << ways_.str() << relations_.str() << "</osm>\n";
    return std::move(text).str();
  }

  void writeTo(const std::filesystem::path& file) const {
    std::ofstream(file, std::ios::binary) << xml();
  }

 private:
  static std::string tagged(const Tags& tags) {
    std::string text;
    for (const auto& [key, value] : tags) {
      text += "<tag k=\"" + key + "\" v=\"" + value + "\"/>";
    }
    return text;
  }

  std::map<std::pair<double, double>, std::int64_t> nodes_;
  std::map<std::int64_t, Tags> tagsOfNodes_;
  std::ostringstream ways_;
  std::ostringstream relations_;
};

}  // namespace tern::test
