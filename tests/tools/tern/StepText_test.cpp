#include "tools/tern/StepText.hpp"

#include <gtest/gtest.h>

namespace tern::command {
namespace {

TernStep stepOf(std::string text, std::int64_t mapId, double mm, double seconds = 60) {
  TernStep step;
  step.mapId = mapId;
  step.mm = mm;
  step.seconds = seconds;
  step.text = std::move(text);
  return step;
}

std::string nameOf(std::int64_t mapId) { return "Floor " + std::to_string(mapId); }

TEST(StepText, eachFloorIsNamedOnceAndStepsAreCounted) {
  std::vector<TernStep> steps(9, stepOf("Turn left", 2, 1'000));
  steps.front().mapId = 1;
  steps.push_back(stepOf("You are there", 2, 0, 0));
  const std::string text = stepsText(steps, nameOf, "en");
  EXPECT_TRUE(text.starts_with("Floor 1\n   1. Turn left, 1 m\nFloor 2\n   2. Turn left, 1 m\n"));
  EXPECT_TRUE(text.ends_with("\n  10. You are there\n9 m, about 9 minutes\n"));
}

TEST(StepText, withoutAScaleItHasNoLengths) {
  EXPECT_EQ(stepsText({stepOf("Go", 1, 0)}, nameOf, "en"), "Floor 1\n   1. Go\n");
}

TEST(StepText, whatTheDataCallsItselfCommandsNoTerminal) {
  EXPECT_EQ(stepsText({stepOf("Start at \x1b[2J\nX", 1, 0)}, nameOf, "en").find('\x1b'),
            std::string::npos);
}

TEST(StepText, noStepsAreNoText) { EXPECT_EQ(stepsText({}, nameOf, "en"), ""); }

TEST(StepText, landmarksAreThoseThatStepsAreToldBy) {
  std::vector<TernStep> steps{stepOf("Start", 1, 0), stepOf("Turn", 1, 0), stepOf("Arrive", 1, 0)};
  steps[1].landmark = TernStep::Landmark{7};
  EXPECT_EQ(landmarksOf(steps), std::vector<std::int64_t>{7});
}

}  // namespace
}  // namespace tern::command
