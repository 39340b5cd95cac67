// What an OpenStreetMap file holds, as plain data: nodes, ways and relations with their tags.
//
// Ownership: plain values. Threads: plain values. Fails: never.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/import/draft/LocalPlane.hpp"

namespace tern::imports {

class OsmTags {
 public:
  using Tag = std::pair<std::string, std::string>;

  OsmTags() = default;
  // Of a key that stands twice the first counts.
  explicit OsmTags(std::vector<Tag> tags) : tags_(std::move(tags)) {
    std::ranges::stable_sort(tags_, {}, &Tag::first);
  }

  // Empty for a key that is not there.
  std::string_view operator[](std::string_view key) const {
    const auto tag = std::ranges::lower_bound(tags_, key, std::less<>(), &Tag::first);
    return tag != tags_.end() && tag->first == key ? std::string_view(tag->second)
                                                   : std::string_view();
  }

  bool has(std::string_view key) const { return !(*this)[key].empty(); }
  bool is(std::string_view key, std::string_view value) const { return (*this)[key] == value; }
  bool isOneOf(std::string_view key, std::initializer_list<std::string_view> values) const {
    return std::ranges::find(values, (*this)[key]) != values.end();
  }
  bool isEmpty() const { return tags_.empty(); }
  // By key.
  const std::vector<Tag>& all() const { return tags_; }

 private:
  std::vector<Tag> tags_;
};

struct OsmNode {
  std::int64_t id = 0;
  LonLat at;
  OsmTags tags;
};

struct OsmWay {
  std::int64_t id = 0;
  // Of nodes.
  std::vector<std::int64_t> refs;
  OsmTags tags;
};

enum class OsmKind { node, way, relation };

struct OsmMember {
  OsmKind kind = OsmKind::way;
  std::int64_t ref = 0;
  std::string role;
};

struct OsmRelation {
  std::int64_t id = 0;
  std::vector<OsmMember> members;
  OsmTags tags;
};

// What some files say beside their records: where the nodes of a way lie, and the ways of a
// relation. The records themselves may be missing then.
struct OsmPlaced {
  struct Way {
    std::int64_t id = 0;
    std::vector<LonLat> line;
  };

  // Without tags.
  std::vector<OsmNode> nodes;
  std::vector<Way> ways;
};

struct OsmData {
  std::vector<OsmNode> nodes;
  std::vector<OsmWay> ways;
  std::vector<OsmRelation> relations;
  OsmPlaced placed;
};

// "way/12", as its page on the web ends.
inline std::string osmId(OsmKind kind, std::int64_t id) {
  const char* const word = kind == OsmKind::node  ? "node/"
                           : kind == OsmKind::way ? "way/"
                                                  : "relation/";
  return word + std::to_string(id);
}

}  // namespace tern::imports
