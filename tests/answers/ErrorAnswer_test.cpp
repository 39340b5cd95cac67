#include "TernCoreKit/answers/ErrorAnswer.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Json.hpp"

namespace tern {
namespace {

TEST(ErrorAnswer, errorIsShownWithItsThreeTexts) {
  const TernError error = TernError::initWithErrorType(TernErrorTypeObjectNotFound, "gone", "");
  EXPECT_EQ(encodeJson(errorAnswer(error), JsonLayout::compact),
            R"({"error":{"code":"TN007","message":"gone","description":""}})");
}

TEST(ErrorAnswer, refusalHasTheDescriptionOfItsKind) {
  const Value error = refusal("\"from\" is missing")["error"];
  EXPECT_EQ(error["code"].text(), "TN006");
  EXPECT_EQ(error["message"].text(), "\"from\" is missing");
  EXPECT_EQ(error["description"].text(),
            "User passes incorrect object/primitive value into function.");
}

TEST(ErrorAnswer, longTextIsCutBetweenCharacters) {
  EXPECT_EQ(shortened("short"), "short");
  EXPECT_EQ(shortened(std::string(40, 'x')), std::string(40, 'x'));
  EXPECT_EQ(shortened(std::string(41, 'x')), std::string(40, 'x') + "...");
  // The character of two bytes lies across the fortieth byte.
  EXPECT_EQ(shortened(std::string(39, 'x') + "\xC3\xA9y"), std::string(39, 'x') + "...");
}

}  // namespace
}  // namespace tern
