// The places of a building: planned before ways are made, so that ways lead to them, and put into
// the draft when their nodes are known.
//
// Ownership: borrows the draft, the site and the tags. Threads: one caller at a time.
// Fails: never; a place that no way leads to is told of.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/draft/NearNodes.hpp"
#include "tools/import/osm/OsmData.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

struct OsmSpot {
  // Of the source, and of the place, which may be one of several of the record.
  std::string record;
  std::string id;
  const OsmTags* tags = nullptr;
  std::size_t floor = 0;
  Point at;
};

class OsmPlaces {
 public:
  OsmPlaces(Draft& draft, Site& site) : draft_(draft), site_(site) {}

  // Whether somebody may want to go there: it has a name, or one of its kind is as good as another.
  static bool isPlace(const OsmTags& tags);

  // In a room, by areas of the site, one comes as far as in at its doors; without one, to the spot.
  void plan(OsmSpot spot, std::vector<std::size_t> rooms);
  // A door, whose node has its id.
  void planDoor(OsmSpot door);

  void add(const MadeWays& made);

 private:
  struct Planned {
    OsmSpot spot;
    std::vector<std::size_t> rooms;
    std::optional<std::size_t> stand;
  };

  std::vector<std::size_t> nodesIn(const std::vector<std::size_t>& rooms,
                                   const MadeWays& made) const;
  std::vector<std::size_t> nodesOf(const Planned& planned, const MadeWays& made,
                                   const NearNodes& near) const;
  void findStands(const MadeWays& made);
  void addPlace(const OsmSpot& spot, const std::vector<std::size_t>& nodes);
  void add(const OsmSpot& spot, const std::string& category, Names names,
           const std::vector<std::size_t>& nodes);

  Draft& draft_;
  Site& site_;
  std::vector<Planned> planned_;
  std::map<std::string, std::size_t> nodesById_;
  std::map<std::string, std::size_t> categories_;
  // By area the nodes that drawn ways, lifts and places amid it have there: a room without a door
  // may be one that stairs or a lift end in.
  std::map<std::size_t, std::vector<std::size_t>> standsIn_;
};

}  // namespace tern::imports
