// What answers about many waypoints have in common with the answers about one pair; the answers
// themselves stand in walks.txt.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/RandomSite.hpp"

namespace tern::test {
namespace {

using Venue = std::shared_ptr<TernActiveVenue>;

void blockSome(Tape& tape, const TernActiveVenue& venue) {
  const auto grid = venue.globalASGrid();
  for (std::size_t i = tape.below(5); i > 0; --i) {
    const auto a = grid->getNodeById(randomWaypoint(tape, venue)->id.integer());
    const auto b = grid->getNodeById(randomWaypoint(tape, venue)->id.integer());
    grid->shouldBlockEdgeBetweenNode(*a, *b, true);
  }
}

Value randomIds(Tape& tape, const TernActiveVenue& venue, std::size_t count) {
  Value ids = Value::list();
  for (; count > 0; --count) ids.append(randomWaypoint(tape, venue)->id);
  return ids;
}

// The cost and the walked millimetres that the answer to "route" says; null without a route.
std::pair<Value, Value> walkOf(const TernActiveVenue& venue, const Value& route) {
  if (route.size() == 0) return {nullptr, nullptr};
  float mm = 0;
  float before = 0;
  for (const Value& segment : route.items()) {
    const auto distance = static_cast<float>(segment["pixelDistance"].number());
    const TernMap& map = *venue.maps->findById(segment["mapId"].integer());
    mm += (distance - before) * static_cast<float>(map.mmPerPixel.number());
    before = distance;
  }
  return {route.items().back()["cost"], shortestDouble(mm)};
}

RC_GTEST_PROP(WalkOperations, cellsOfAMatrixAreWhatRouteSaysOfThePair, ()) {
  CapturedLog log;
  Tape tape(*tapes());
  const Venue venue = randomSite(tape);
  blockSome(tape, *venue);
  const TernAnswers answers(venue);
  const std::int64_t level = randomSiteLevel(tape);
  const Value from = randomIds(tape, *venue, 4);
  const Value to = randomIds(tape, *venue, 6);
  Value request = Value::map({{"op", "matrix"}, {"accessibility", level}});
  request.set("from", from);
  request.set("to", to);
  const Value matrix = answers.answer(request);
  for (std::size_t i = 0; i < from.size(); ++i) {
    for (std::size_t j = 0; j < to.size(); ++j) {
      const Value& start = from.items()[i];
      const Value& end = to.items()[j];
      const Value route = answers.answer(Value::map(
          {{"op", "route"}, {"from", start}, {"to", end}, {"accessibility", level}}))["route"];
      const bool isSelf = start == end;
      const auto [cost, mm] = walkOf(*venue, route);
      const auto text = [](const Value& value) { return encodeJson(value, JsonLayout::compact); };
      RC_ASSERT(text(matrix["costs"].items()[i].items()[j]) == (isSelf ? "0" : text(cost)));
      RC_ASSERT(text(matrix["mmDistances"].items()[i].items()[j]) == (isSelf ? "0" : text(mm)));
    }
  }
  log.take();
}

// From several starts: what any of them reaches, by the cheapest way.
RC_GTEST_PROP(WalkOperations, whatIsReachedIsWhatTheMatrixHasWithinTheLimits, ()) {
  CapturedLog log;
  Tape tape(*tapes());
  const Venue venue = randomSite(tape);
  const TernAnswers answers(venue);
  const std::int64_t level = randomSiteLevel(tape);
  const Value from = randomIds(tape, *venue, 1 + tape.below(3));
  const double metres = static_cast<double>(tape.below(12));
  Value all = Value::list();
  for (const auto& waypoint : venue->maps->getAllWaypoints()) all.append(waypoint->id);
  Value request = Value::map({{"op", "reach"}, {"metres", metres}, {"accessibility", level}});
  request.set("from", from);
  const Value reached = answers.answer(request)["reached"];
  request = Value::map({{"op", "matrix"}, {"accessibility", level}});
  request.set("from", from);
  request.set("to", all);
  const Value matrix = answers.answer(request);
  std::size_t count = 0;
  for (std::size_t j = 0; j < all.size(); ++j) {
    Value cost = nullptr;
    Value mm = nullptr;
    for (std::size_t i = 0; i < from.size(); ++i) {
      const Value& other = matrix["costs"].items()[i].items()[j];
      if (other.isNull() || (!cost.isNull() && cost.number() <= other.number())) continue;
      cost = other;
      mm = matrix["mmDistances"].items()[i].items()[j];
    }
    if (cost.isNull() || mm.number() > metres * 1000) continue;
    ++count;
    const Value wanted = Value::map({{"waypoint", all.items()[j]}, {"cost", cost}, {"mm", mm}});
    RC_ASSERT(std::ranges::count(reached.items(), wanted) == 1);
  }
  RC_ASSERT(count == reached.size());
  const auto costOf = [](const Value& each) { return each["cost"].number(); };
  RC_ASSERT(std::ranges::is_sorted(reached.items(), {}, costOf));
  log.take();
}

// Of waypoints that the venue does not have, so that only the bound takes time.
Value matrixOf(const TernAnswers& answers, std::size_t from, std::size_t to) {
  std::vector<Value> starts(from, Value(98));
  std::vector<Value> ends(to, Value(99));
  Value request = Value::map({{"op", "matrix"}});
  request.set("from", Value::listOf(starts));
  request.set("to", Value::listOf(ends));
  return answers.answer(request);
}

TEST(WalkOperations, matrixOfTooManyPairsIsRefused) {
  const TernAnswers answers(loadDrawnVenue({.floors = {{.lines = {"A-B"}}}, .paths = {"A-B"}}));
  EXPECT_EQ(matrixOf(answers, 2'000, 20)["costs"].size(), 2'000U);
  const Value refused = matrixOf(answers, 2'001, 2'000);
  EXPECT_EQ(refused["error"]["code"], Value("TN006"));
  EXPECT_EQ(refused["error"]["message"],
            Value("matrix: \"from\" and \"to\" make 4002000 pairs; at most 4000000 are answered at "
                  "once"));
}

}  // namespace
}  // namespace tern::test
