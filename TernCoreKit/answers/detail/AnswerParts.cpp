#include "TernCoreKit/answers/detail/AnswerParts.hpp"

#include <utility>
#include <vector>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::inline v5::detail {

namespace {

template <class Items, class ValueOf>
Value listOf(const Items& items, ValueOf valueOf) {
  std::vector<Value> values;
  values.reserve(items.size());
  for (const auto& item : items) values.push_back(valueOf(item));
  return Value::listOf(values);
}

Value segmentPart(const TernPathPerFloor& segment) {
  const auto nodeId = [](const TernASNode& node) { return Value(node.nodeId()); };
  const auto mapPoint = [](const TernPoint& point) {
    return pointPart({shortestDouble(point.x), shortestDouble(point.y)});
  };
  Value part =
      Value::map({{"mapId", segment.mapId},
                  {"mover", segment.mover ? Value(segment.mover->id.integer()) : Value(nullptr)},
                  {"cost", shortestDouble(segment.cost)},
                  {"pixelDistance", shortestDouble(segment.pixelDistance)},
                  {"mmDistance", shortestDouble(segment.mmDistance)}});
  // Set apart, since what stands in braces is copied.
  part.set("points", listOf(segment.points, nodeId));
  part.set("mapPoints", listOf(segment.mapPoints, mapPoint));
  return part;
}

}  // namespace

Value answerOf(std::string_view key, Value value) {
  Value answer = Value::map();
  answer.set(key, std::move(value));
  return answer;
}

Value waypointPart(const std::shared_ptr<TernWaypoint>& waypoint) {
  return waypoint != nullptr ? Value(waypoint->id.integer()) : Value(nullptr);
}

Value pointPart(TernCoordinate point) { return Value::list({point.x, point.y}); }

Value routePart(const TernRoute& route) { return listOf(route, segmentPart); }

Value neighborPart(const TernNeighbor& neighbor) {
  return Value::map({{"id", neighbor.neighborId.integer()},
                     {"cost", shortestDouble(neighbor.cost)},
                     {"distance", shortestDouble(neighbor.distance)},
                     {"accessibility", neighbor.acc.integer()},
                     {"edge", neighbor.edgeId.integer()},
                     {"pathType", neighbor.edgeTypeId.integer()}});
}

}  // namespace tern::detail
