#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/AnswerLog.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

Outcome answerConvert(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const AnswerLog log;
  const Value answer = answerTo(call.request, TernAnswers(venue));
  // What cannot be converted is (0, 0) and a line in the log.
  Telling told{.remark = log.text()};
  told.isFound = told.remark.empty();
  if (told.isFound) {
    const auto point = answer["point"].items();
    told.text = numberText(point[0].number()) + "," + numberText(point[1].number()) + "\n";
  }
  return outcomeOf(call, answer, told);
}

constexpr std::string_view projections = "EPSG:4326 EPSG:3857 tern:local";

constexpr Option projectionOption(std::string_view name, std::string_view meaning) {
  return {name, "PROJ", meaning, readOneOf<projections>, required, {}, Naming::none, projections};
}

std::optional<std::string> objectionToProjections(const Arguments& call) {
  if (call.request["from"] != call.request["to"]) return std::nullopt;
  return "--from and --to: two different projections are wanted";
}

}  // namespace

const Command convertCommand{
    .name = "convert",
    .summary = "convert a point between projections",
    .options = {{"--point", "X,Y", "the point to convert", readPoint, required},
                projectionOption("--from", "the projection of the point"),
                projectionOption("--to", "the projection that is wanted")},
    .about = AboutVenue{answerConvert},
    .objection = objectionToProjections,
    .help = R"(Examples:
  tern generate --out mall
  tern convert --data mall --point 9.9945,53.55 --from EPSG:4326 --to tern:local
  tern convert --data mall --point 400,300 --from tern:local --to EPSG:3857

EPSG:4326 is longitude,latitude in degrees; EPSG:3857 metres of the Mercator
projection; tern:local map units of the venue's first map, from its top left
corner, y downward.
)"};

}  // namespace tern::command
