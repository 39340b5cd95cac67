#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "tools/check/Checks.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::check {

namespace {

// In map units; 0 where it is unknown.
struct Extent {
  double width = 0;
  double height = 0;
};

class LengthCheck {
 public:
  LengthCheck(const Subject& subject, Findings& findings)
      : subject_(subject), findings_(findings) {}

  void check() {
    for (std::uint32_t node = 0; node < nodes().size(); ++node) {
      for (const Link& link : subject_.network.linksOf(node)) checkLink(node, link);
    }
  }

 private:
  const std::vector<Node>& nodes() const { return subject_.network.nodes(); }

  void checkLink(std::uint32_t from, const Link& link) {
    const Node& a = nodes()[from];
    const Node& b = nodes()[link.to];
    const double across = std::abs(a.at.x - b.at.x);
    const double down = std::abs(a.at.y - b.at.y);
    const bool isLevel = !subject_.network.changesMap(from, link);
    if (isLevel && across == 0 && down == 0) {
      tell(Kind::zeroLength, a, b, link, "joins two waypoints at one point");
      return;
    }
    const Extent one = extentOf(a.map);
    const Extent other = isLevel ? one : extentOf(b.map);
    if (isWithin(across, one.width, other.width) && isWithin(down, one.height, other.height)) {
      return;
    }
    const TernMap* map = subject_.venue.maps->findById(a.map);
    tell(Kind::longLink, a, b, link,
         "goes " + words::lengthOn(map, std::hypot(across, down)).text() +
             ", farther than the floor is wide");
  }

  // No way within a drawing goes farther than the drawing does; what is no number goes too far.
  static bool isWithin(double length, double one, double other) {
    return one <= 0 || other <= 0 ? std::isfinite(length) : length <= std::max(one, other);
  }

  Extent extentOf(std::int64_t map) const {
    const TernMap* found =
        subject_.venue.maps != nullptr ? subject_.venue.maps->findById(map) : nullptr;
    if (found == nullptr) return {};
    return {found->width.number(), found->height.number()};
  }

  // Each path once for two waypoints, whichever way it leads.
  void tell(Kind kind, const Node& a, const Node& b, const Link& link, const std::string& what) {
    const auto [least, most] = std::minmax(a.id, b.id);
    if (!told_.emplace(link.path, least, most).second) return;
    findings_.push_back({kind,
                         {link.path, least, most},
                         a.map,
                         "path " + std::to_string(link.path) + " from waypoint " +
                             std::to_string(least) + " to " + std::to_string(most) +
                             onFloor(subject_, a.map) + " " + what});
  }

  const Subject& subject_;
  Findings& findings_;
  std::set<std::tuple<std::int64_t, std::int64_t, std::int64_t>> told_;
};

// Paths that name a waypoint twice make no link of it.
void checkLoops(const Subject& subject, Findings& findings) {
  forEachMap(subject, [&](const Value& map) {
    for (const Value& path : itemsOf(map, "paths")) {
      std::set<std::int64_t> seen;
      for (const Value& id : path["waypointIds"].items()) {
        if (!id.isNumber() || seen.insert(id.integer()).second) continue;
        const std::int64_t mapId = map["id"].integer();
        findings.push_back({Kind::zeroLength,
                            {path["id"].integer(), id.integer()},
                            mapId,
                            "path " + path["id"].printed() + onFloor(subject, mapId) +
                                " joins waypoint " + id.printed() + " to itself"});
        break;
      }
    }
  });
}

}  // namespace

void checkLengths(const Subject& subject, Findings& findings) {
  LengthCheck(subject, findings).check();
  checkLoops(subject, findings);
}

}  // namespace tern::check
