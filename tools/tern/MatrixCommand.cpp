#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/Wording.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::command {

namespace {

// "81 m, cost 565", "cost 565" where no scale tells the length, or "no route"
std::string walkText(const Value& cost, const Value& mm) {
  if (cost.isNull()) return "no route";
  const std::string length = words::WalkLength{.metres = mm.number() / 1000}.text();
  return (length.empty() ? "" : length + ", ") + "cost " + numberText(cost.number());
}

//   From Juniper Bakery (waypoint 12)
//     to Shoe World (waypoint 40): 81 m, cost 565
//     to waypoint 41: no route
std::string matrixText(const TernActiveVenue& venue, const Value& request, const Value& answer) {
  const auto from = request["from"].items();
  const auto to = request["to"].items();
  std::string text;
  for (std::size_t i = 0; i < from.size(); ++i) {
    text += "From " + placeNameWithId(venue, from[i].integer()) + "\n";
    const auto costs = answer["costs"].items()[i].items();
    const auto lengths = answer["mmDistances"].items()[i].items();
    for (std::size_t j = 0; j < to.size(); ++j) {
      text += "  to " + placeNameWithId(venue, to[j].integer()) + ": " +
              walkText(costs[j], lengths[j]) + "\n";
    }
  }
  return text;
}

bool hasWalk(const Value& answer) {
  for (const Value& row : answer["costs"].items()) {
    for (const Value& cost : row.items()) {
      if (!cost.isNull()) return true;
    }
  }
  return false;
}

Outcome answerMatrix(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = answerTo(call.request, TernAnswers(venue));
  if (const Value* error = answer.find("error")) {
    return wrongWords(std::string((*error)["message"].text()));
  }
  Telling told{
      .text = matrixText(*venue, call.request, answer),
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  told.isFound = told.remark.empty() && hasWalk(answer);
  return outcomeOf(call, answer, told);
}

}  // namespace

const Command matrixCommand{.name = "matrix",
                            .summary = "tell how far it is between many waypoints",
                            .options = {startsOption,
                                        {"--to",
                                         "W,...",
                                         "where they end: waypoints, or places by their names",
                                         readPlaces,
                                         required,
                                         {},
                                         Naming::start},
                                        accessibilityOption},
                            .about = AboutVenue{answerMatrix},
                            .help = R"(Examples:
  tern generate --out mall
  tern matrix --data mall --from 22001,12002 --to 14016,11001,13001
  tern matrix --data mall --from 22001,12002 --to 14016 --accessibility 0 --json

Each pair has the cost and the walked length of its cheapest route. Exits with 1
when there is no route at all, or a waypoint that the venue does not have.
)"};

}  // namespace tern::command
