// The command that finds destinations and amenities by name.
#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/guidance/TernPlaces.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/PlaceText.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

std::string nothingText(const TernActiveVenue& venue, const TernPlaces& places,
                        const Value& request) {
  const std::string_view text = request["text"].text();
  if (text.empty()) return venueTitle(venue) + " has no destinations and no amenities";
  std::string remark = "nothing in " + venueTitle(venue) + " is called " + inQuotes(text);
  const TernPlace* closest = places.closest(text);
  return closest == nullptr ? remark : remark + "; the closest is " + placeText(venue, *closest);
}

Outcome answerPlaces(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  if (call.json) {
    const Value answer = answerTo(call.request, TernAnswers(venue));
    return outcomeOf(call, answer, {.isFound = answer["places"].size() > 0});
  }
  const TernPlaces places(*venue);
  Telling told;
  for (const TernPlace* place : places.find(call.request["text"].text())) {
    told.text += placeText(*venue, *place) + "\n";
  }
  told.isFound = !told.text.empty();
  if (!told.isFound) told.remark = nothingText(*venue, places, call.request);
  return outcomeOf(call, {}, told);
}

}  // namespace

const Command placesCommand{.name = "places",
                            .summary = "find destinations and amenities by name",
                            .operand = {"TEXT", "TEXT", "the name or some of it; left out: all",
                                        readText, optional, "text"},
                            .about = AboutVenue{answerPlaces},
                            .help = R"(Examples:
  tern generate --out mall
  tern places --data mall books
  tern places toilets --data mall --json
  tern places --data mall

Neither case nor accents count, and one wrong letter is forgiven. The best match
comes first: the whole name, its beginning, the beginning of a word, somewhere
within. Exits with 1 when there is none.
)"};

}  // namespace tern::command
