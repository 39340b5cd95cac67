#include "tools/tern/Failure.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::command {
namespace {

TEST(Failure, errorIsShownWithItsThreeTexts) {
  const TernError error = TernError::initWithErrorType(TernErrorTypeObjectNotFound, "gone", "");
  EXPECT_EQ(encodeJson(errorAnswer(error), JsonLayout::compact),
            R"({"error":{"code":"TN007","message":"gone","description":""}})");
}

TEST(Failure, notUnderstoodHasTheDescriptionOfItsKind) {
  const Value error = notUnderstoodAnswer("\"from\" is missing")["error"];
  EXPECT_EQ(error["code"].text(), "TN006");
  EXPECT_EQ(error["message"].text(), "\"from\" is missing");
  EXPECT_EQ(error["description"].text(),
            "User passes incorrect object/primitive value into function.");
}

TEST(Failure, wrongWordsEndWithTwo) {
  EXPECT_EQ(static_cast<int>(wrongWords("--from is missing").status), 2);
}

}  // namespace
}  // namespace tern::command
