// The places of a building: named units, amenities, occupants and kiosks. They are planned before
// ways are made, so that ways lead to them, and put into the draft when their nodes are known.
//
// Ownership: borrows all that it is made of. Threads: one caller at a time.
// Fails: never; a place that no way leads to is told of.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/imdf/ImdfFiles.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

// Places in a list, by what the source calls them.
using ImdfIndex = std::map<std::string, std::size_t, std::less<>>;

// Those that are walked, which are the areas of the site.
struct ImdfUnits {
  ImdfIndex byId;
  std::vector<const ImdfFeature*> features;
  std::vector<AreaKind> kinds;
};

class ImdfPlaces {
 public:
  ImdfPlaces(ImdfFiles& files, const ImdfIndex& floors, const ImdfUnits& units, Draft& draft,
             Site& site)
      : files_(files), floors_(floors), units_(units), draft_(draft), site_(site) {}

  void plan();
  void add(const MadeWays& made);

 private:
  struct Planned {
    const ImdfFeature* feature;
    std::string category;
    Names names;
    std::size_t floor;
    Point at;
    // The unit that it is in, where it is named.
    std::optional<std::size_t> unit;
    std::size_t stand;
    // One of its kind is as good as another, whatever it is called.
    bool isAmenity;
    // Of the site, of an opening.
    std::vector<std::size_t> doors = {};
  };

  void planUnit(std::size_t index);
  void planAmenity(const ImdfFeature& amenity);
  void planOccupant(const ImdfFeature& occupant);
  void planKiosk(const ImdfFeature& kiosk);
  void planOpenings();
  void plan(const ImdfFeature& feature, std::string_view category, Names names, std::size_t floor,
            Point at, std::optional<std::size_t> unit, bool isAmenity = false);
  std::vector<std::size_t> nodesOf(const Planned& place, const MadeWays& made) const;
  bool isEnteredByDoor(std::optional<std::size_t> unit) const;
  void addPlace(const Planned& place, Names names, const std::vector<std::size_t>& nodes);
  std::size_t categoryOf(const std::string& category);

  ImdfFiles& files_;
  const ImdfIndex& floors_;
  const ImdfUnits& units_;
  Draft& draft_;
  Site& site_;
  std::map<std::string, const ImdfFeature*, std::less<>> anchors_;
  std::vector<Planned> planned_;
  std::map<std::string, std::size_t> categories_;
};

}  // namespace tern::imports
