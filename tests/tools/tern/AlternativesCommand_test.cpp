#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/ActiveVenue.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

// A way round C, and F alone.
const test::Drawing oneDetour{
    .floors = {{.lines = {"A--B--C--D--E", "   |     |   ", "   F--G--H   ", "J            "}}},
    .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G", "G-H", "H-D"}};

Arguments callFor(std::int64_t to, Value options = {}) {
  Arguments call;
  call.request = Value::map({{"op", "alternatives"}, {"from", 1}, {"to", to}});
  if (options.isMap()) call.request.set("options", std::move(options));
  return call;
}

Answer answerOf(const Arguments& call) {
  const auto answer = std::get<AboutVenue>(alternativesCommand.about).one;
  return std::get<Answer>(answer(call, test::loadDrawnVenue(oneDetour)));
}

TEST(AlternativesCommand, bothRoutesAreToldInWords) {
  const Answer answer = answerOf(callFor(5));
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text, HasSubstr("12 m in all\n\nAlternative:\nFrom waypoint 1 on map 1\n"));
  EXPECT_THAT(answer.text, HasSubstr("16 m in all\n"));
}

TEST(AlternativesCommand, aRouteWithoutAnAlternativeIsAnAnswer) {
  const Answer answer = answerOf(callFor(5, Value::map({{"optimalPathMatchRatio", 1.5}})));
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text, HasSubstr("\nThere is no sensible alternative.\n"));
}

TEST(AlternativesCommand, withoutARouteThereIsNothing) {
  Arguments call = callFor(10);
  EXPECT_EQ(answerOf(call).status, ExitStatus::nothingFound);
  EXPECT_EQ(answerOf(call).text, "No route from waypoint 1 on map 1 to waypoint 10 on map 1\n");
  call.json = true;
  EXPECT_EQ(answerOf(call).text, "{\"optimal\":null,\"alternatives\":null}\n");
  EXPECT_THAT(answerOf(callFor(99)).remark, HasSubstr("no waypoint 99"));
}

TEST(AlternativesCommand, thePictureShowsBoth) {
  const test::TemporaryFolder folder;
  Arguments call = callFor(5);
  call.picture = folder.at("routes.svg");
  answerOf(call);
  EXPECT_THAT(folder.read("routes.svg"), HasSubstr("Best route"));
  EXPECT_THAT(folder.read("routes.svg"), HasSubstr("Alternative"));
}

}  // namespace
}  // namespace tern::command
