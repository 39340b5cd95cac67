#include "tools/service/ServedTokens.hpp"

#include <gtest/gtest.h>

#include <set>

#include "tests/support/TurnedClock.hpp"

namespace tern::service {
namespace {

using std::chrono::seconds;

TEST(ServedTokens, areValidUntilTheirEnd) {
  test::TurnedClock clock;
  ServedTokens tokens(seconds(10));
  const std::string token = tokens.handOut();
  clock.turn(seconds(9));
  EXPECT_TRUE(tokens.isValid(token));
  clock.turn(seconds(1));
  EXPECT_FALSE(tokens.isValid(token));
}

TEST(ServedTokens, areLongAndDiffer) {
  ServedTokens tokens(seconds(10));
  std::set<std::string> all;
  for (int i = 0; i < 100; ++i) all.insert(tokens.handOut());
  EXPECT_EQ(all.size(), 100U);
  EXPECT_EQ(all.begin()->size(), 48U);
}

TEST(ServedTokens, otherTextsAreNone) {
  ServedTokens tokens(seconds(10));
  const std::string token = tokens.handOut();
  EXPECT_FALSE(tokens.isValid(""));
  EXPECT_FALSE(tokens.isValid(token.substr(1)));
}

TEST(ServedTokens, oldestEndsWhenThereAreTooMany) {
  ServedTokens tokens(seconds(10));
  const std::string first = tokens.handOut();
  const std::string second = tokens.handOut();
  for (int i = 0; i < 9'999; ++i) tokens.handOut();
  EXPECT_FALSE(tokens.isValid(first));
  EXPECT_TRUE(tokens.isValid(second));
}

}  // namespace
}  // namespace tern::service
