#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/ReachDrawing.hpp"
#include "tools/tern/ReachFeatures.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/Wording.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::command {

namespace {

// "150 m and cost 500"
std::string limitsText(const Value& request) {
  const Value* metres = request.find("metres");
  const Value* cost = request.find("cost");
  std::string text = metres != nullptr ? numberText(metres->number()) + " m" : "";
  if (metres != nullptr && cost != nullptr) text += " and ";
  return cost != nullptr ? text + "cost " + numberText(cost->number()) : text;
}

std::string startsText(const TernActiveVenue& venue, const Value& request) {
  std::string text;
  for (const Value& id : request["from"].items()) {
    text += (text.empty() ? "" : ", ") + placeNameWithId(venue, id.integer());
  }
  return text;
}

// Names of what is at a waypoint stand before its id; what is near it, or nothing, says its floor.
bool hasName(const TernActiveVenue& venue, std::int64_t waypointId) {
  return placeNameWithId(venue, waypointId) ==
         placeName(venue, waypointId) + " (waypoint " + std::to_string(waypointId) + ")";
}

// "Within 150 m: 37 waypoints"
std::string countText(const Value& request, const Value& answer) {
  const std::size_t count = answer["reached"].size();
  return "Within " + limitsText(request) + ": " + std::to_string(count) +
         (count == 1 ? " waypoint" : " waypoints");
}

// The places that have a name, each waypoint on a line:
//
//   Within 150 m of Juniper Bakery (waypoint 12): 37 waypoints
//     Juniper Bakery (waypoint 12) on Ground Floor
//     Shoe World (waypoint 40) on Ground Floor, 81 m
std::string reachText(const TernActiveVenue& venue, const Value& request, const Value& answer) {
  const auto reached = answer["reached"].items();
  std::string text = "Within " + limitsText(request) + " of " + startsText(venue, request) + ": " +
                     std::to_string(reached.size()) +
                     (reached.size() == 1 ? " waypoint\n" : " waypoints\n");
  for (const Value& each : reached) {
    const std::int64_t id = each["waypoint"].integer();
    if (!hasName(venue, id)) continue;
    const std::string length = words::WalkLength{.metres = each["mm"].number() / 1000}.text();
    text += "  " + placeOnFloor(venue, *venue.globalASGrid()->getWPById(id)) +
            (length.empty() ? "" : ", " + length) + "\n";
  }
  return text;
}

Outcome answerReach(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = answerTo(call.request, TernAnswers(venue));
  Telling told{
      .text = {},
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  told.isFound = told.remark.empty() && answer["reached"].size() > 0;
  if (told.remark.empty()) told.text = reachText(*venue, call.request, answer);
  if (told.isFound && isForFeatures(call.picture)) {
    told.features.emplace(featuresOfReach(*venue, call.request, answer));
  } else if (told.isFound && !call.picture.empty()) {
    picture::ReachPicture drawn = reachPictureOf(*venue, call.request, answer);
    drawn.summary = countText(call.request, answer);
    told.picture.emplace(std::move(drawn));
  }
  return outcomeOf(call, answer, told);
}

std::optional<std::string> objectionToLimits(const Arguments& call) {
  const bool isLimited =
      call.request.find("metres") != nullptr || call.request.find("cost") != nullptr;
  if (isLimited) return std::nullopt;
  return "--metres N or --cost C is wanted";
}

}  // namespace

const Command reachCommand{.name = "reach",
                           .summary = "find how far one gets",
                           .options = {startsOption,
                                       {"--metres", "N", "the longest walk", readNumber},
                                       {"--cost", "C", "the highest cost of a route", readNumber},
                                       accessibilityOption,
                                       pictureOption},
                           .about = AboutVenue{answerReach},
                           .objection = objectionToLimits,
                           .help = R"(Examples:
  tern generate --out mall
  tern reach --data mall --from 22001 --metres 40
  tern reach --data mall --from 22001,12002 --metres 25.5 --json
  tern reach --data mall --from 22001 --metres 40 --picture reach.geojson
  tern reach --data mall --from 22001 --metres 60 --picture reach.html

Cost and length are those of the cheapest route from any of the starts. Exits
with 1 for a waypoint that the venue does not have.
)"};

}  // namespace tern::command
