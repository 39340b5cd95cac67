#include "tools/tern/RouteAnswer.hpp"

#include <vector>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::command {

namespace {

template <class Items, class ValueOf>
Value listOf(const Items& items, ValueOf valueOf) {
  std::vector<Value> values;
  values.reserve(items.size());
  for (const auto& item : items) values.push_back(valueOf(item));
  return Value::listOf(values);
}

Value segmentAnswer(const TernPathPerFloor& segment) {
  const auto nodeId = [](const TernASNode& node) { return Value(node.nodeId()); };
  const auto place = [](const TernPoint& point) {
    return Value::list({shortestDouble(point.x), shortestDouble(point.y)});
  };
  Value answer =
      Value::map({{"mapId", segment.mapId},
                  {"mover", segment.mover ? Value(segment.mover->id.integer()) : Value(nullptr)},
                  {"cost", shortestDouble(segment.cost)},
                  {"pixelDistance", shortestDouble(segment.pixelDistance)},
                  {"mmDistance", shortestDouble(segment.mmDistance)}});
  // Set apart, since what stands in braces is copied.
  answer.set("points", listOf(segment.points, nodeId));
  answer.set("mapPoints", listOf(segment.mapPoints, place));
  return answer;
}

}  // namespace

Value routeAnswer(const TernRoute& route) { return listOf(route, segmentAnswer); }

Value neighborAnswer(const TernNeighbor& neighbor) {
  return Value::map({{"id", neighbor.neighborId.integer()},
                     {"cost", shortestDouble(neighbor.cost)},
                     {"distance", shortestDouble(neighbor.distance)},
                     {"accessibility", neighbor.acc.integer()},
                     {"edge", neighbor.edgeId.integer()},
                     {"pathType", neighbor.edgeTypeId.integer()}});
}

}  // namespace tern::command
