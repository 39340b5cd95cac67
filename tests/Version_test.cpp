#include "TernCoreKit/Version.hpp"

#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/service/TernHub.hpp"

namespace {

TEST(Version, theTextIsThatOfTheHeadersNumbers) {
  const std::string text = std::to_string(TERN_VERSION / 10000) + "." +
                           std::to_string(TERN_VERSION / 100 % 100) + "." +
                           std::to_string(TERN_VERSION % 100);
  EXPECT_EQ(tern::version(), text);
}

TEST(Version, theHubNamesTheSameOne) { EXPECT_EQ(tern::TernHub::getSDKVersion(), tern::version()); }

}  // namespace
