#include "tools/tern/RouteFeatures.hpp"

#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::command {

namespace {

std::vector<TernCoordinate> pointsOf(const TernPathPerFloor& segment) {
  std::vector<TernCoordinate> points;
  for (const TernPoint& at : segment.mapPoints) points.push_back({double{at.x}, double{at.y}});
  return points;
}

class RouteWalker {
 public:
  RouteWalker(const picture::PictureRoute& route, const TernVenueData& venue, GeoFeatures& features)
      : route_(route), venue_(venue), features_(features) {}

  void walk(bool hasStart, bool hasGoal) {
    for (const TernPathPerFloor& segment : route_.route) {
      const std::vector<TernCoordinate> points = pointsOf(segment);
      if (points.empty()) continue;
      const bool isLast = &segment == &route_.route.back();
      if (hasStart && &segment == &route_.route.front()) addPoint("start", segment, points.front());
      addWalk(segment, points);
      if (!isLast && segment.mover) addPoint("mover", segment, points.back());
      if (isLast && hasGoal) addPoint("goal", segment, points.back());
    }
  }

 private:
  // A map that is only passed has no walk.
  void addWalk(const TernPathPerFloor& segment, const std::vector<TernCoordinate>& points) {
    const TernMap* map = venue_.maps ? venue_.maps->findById(segment.mapId) : nullptr;
    const float before = std::exchange(lengthBefore_, segment.pixelDistance);
    const words::WalkLength length =
        words::lengthOn(map, double{segment.pixelDistance} - double{before});
    walked_ = walked_ + length;
    if (points.size() < 2) return;
    features_.add({"walk", venue_, segment.mapId, route_.title, length.metres}, points);
  }

  void addPoint(std::string_view kind, const TernPathPerFloor& segment, TernCoordinate at) {
    const std::string name = kind == "start"  ? route_.start
                             : kind == "goal" ? route_.goal
                                              : std::string(segment.mover->name.text());
    features_.add({kind, venue_, segment.mapId, name, walked_.metres}, {&at, 1});
  }

  const picture::PictureRoute& route_;
  const TernVenueData& venue_;
  GeoFeatures& features_;
  float lengthBefore_ = 0;
  words::WalkLength walked_{0, 0.0};
};

}  // namespace

GeoFeatures featuresOf(const picture::RoutePicture& drawn) {
  GeoFeatures features;
  for (const picture::PictureRoute& route : drawn.routes) {
    const bool isFirst = &route == &drawn.routes.front();
    const TernVenueData& venue = route.venue != nullptr ? *route.venue : drawn.venue;
    // Choices lead from one start to one goal, legs from one goal to the next.
    RouteWalker(route, venue, features)
        .walk(isFirst, isFirst || drawn.set == picture::RouteSet::legs);
  }
  return features;
}

}  // namespace tern::command
