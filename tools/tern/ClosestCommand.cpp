#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/words/FloorName.hpp"

namespace tern::command {

namespace {

Outcome answerClosest(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = answerTo(call.request, TernAnswers(venue));
  const Value& mapId = call.request["map"];
  Telling told{.isFound = !answer["waypoint"].isNull()};
  if (venue->maps->findById(mapId.integer()) == nullptr) {
    told.remark = "there is no map " + mapId.printed() + " in " + venueTitle(*venue);
  } else if (told.isFound) {
    const auto waypoint = venue->globalASGrid()->getWPById(answer["waypoint"].integer());
    told.text =
        placeOnFloor(*venue, *waypoint) + awayText(*venue, *waypoint, call.request["at"]) + "\n";
  } else {
    told.text = "No waypoint lies on " + words::floorName(*venue, mapId.integer()).text() + "\n";
  }
  return outcomeOf(call, answer, told);
}

}  // namespace

const Command closestCommand{
    .name = "closest",
    .summary = "find the waypoint nearest to a point",
    .options = {{"--map", "M", "the map to search", readWhole, required}, atOption},
    .about = AboutVenue{answerClosest},
    .help = R"(Examples:
  tern generate --out mall
  tern closest --data mall --map 11 --at 400,300
  tern closest --data mall --map 11 --at -12.5,3 --json
)"};

}  // namespace tern::command
