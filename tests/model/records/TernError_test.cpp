#include "TernCoreKit/model/records/TernError.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <string>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {
namespace {

struct ErrorRow {
  std::uint32_t type;
  const char* code;
  const char* message;
  const char* description;
};

const ErrorRow rows[] = {
    {TernErrorTypeConnection, "TN001", "Unable to connect to server",
     "SDK cannot connect to the server (incorrect URL, server down etc)."},
    {TernErrorTypeAccessDenied, "TN002", "Access Denied",
     "SDK can connect to the server but cannot authenticate."},
    {TernErrorTypeIncorrectJSON, "TN003", "Incorrect JSON Data", "JSON is malformed."},
    {TernErrorTypeIncompatibleMaps, "TN004", "Incompatible/Incorrect Maps-(Map ID and Map Name)",
     "Map SVG format is incompatible."},
    {TernErrorTypeInvalidURI, "TN005", "Invalid URI", "File type error with URI."},
    {TernErrorTypeIncorrectObjectType, "TN006", "Incorrect object type was passed",
     "User passes incorrect object/primitive value into function."},
    {TernErrorTypeObjectNotFound, "TN007", "Object not found",
     "User passes correct object/primitive into collection but that value cannot be found."},
    {TernErrorTypeUndefined, "TN008", "Error is undefined. Please contact your server provider.",
     "There is no information on this error."},
};

void expectRow(const TernError& error, const ErrorRow& row) {
  EXPECT_EQ(error.code, row.code);
  EXPECT_EQ(error.message, row.message);
  EXPECT_EQ(error.errorDescription, row.description);
}

TEST(TernError, everyTypeHasItsTexts) {
  std::uint32_t type = 0;
  std::set<std::string> codes;
  for (const ErrorRow& row : rows) {
    EXPECT_EQ(row.type, type++);
    expectRow(TernError::initWithErrorType(row.type), row);
    EXPECT_EQ(TernError::defaultErrorCodeForErrorType(row.type), row.code);
    EXPECT_EQ(TernError::defaultErrorMessageForErrorType(row.type), row.message);
    EXPECT_EQ(TernError::defaultErrorDescriptionForErrorType(row.type), row.description);
    codes.insert(row.code);
  }
  EXPECT_EQ(codes.size(), 8U);
}

TEST(TernError, everyTypeBeyondTheTableIsUndefined) {
  for (const std::uint64_t type :
       {std::uint64_t{7}, std::uint64_t{8}, std::uint64_t{1000}, std::uint64_t{1} << 32U,
        (std::uint64_t{1} << 32U) + 5, std::numeric_limits<std::uint64_t>::max()}) {
    expectRow(TernError::initWithErrorType(type), rows[7]);
    EXPECT_EQ(TernError::defaultErrorCodeForErrorType(type), "TN008");
  }
}

TEST(TernError, givenTextsAreKept) {
  const TernError error = TernError::initWithErrorType(1, "mine", "because");
  EXPECT_EQ(error.code, "TN002");
  EXPECT_EQ(error.message, "mine");
  EXPECT_EQ(error.errorDescription, "because");
}

TEST(TernError, onlyAMissingTextIsReplacedAnEmptyOneStays) {
  const TernError error = TernError::initWithErrorType(1, "", "");
  EXPECT_EQ(error.message, "");
  EXPECT_EQ(error.errorDescription, "");
  expectRow(TernError::initWithErrorType(1, std::nullopt, std::nullopt), rows[1]);
}

TEST(TernError, theTypeIsToldByTheCodeOnly) {
  for (const ErrorRow& row : rows) EXPECT_EQ(TernError::initWithErrorType(row.type).errorType, 0U);
}

TEST(TernError, statusCodesHaveTheirTypes) {
  EXPECT_EQ(TernError::getErrorCodeWithStatusCode(400), TernErrorTypeIncorrectObjectType);
  EXPECT_EQ(TernError::getErrorCodeWithStatusCode(415), TernErrorTypeIncorrectObjectType);
  EXPECT_EQ(TernError::getErrorCodeWithStatusCode(401), TernErrorTypeAccessDenied);
  EXPECT_EQ(TernError::getErrorCodeWithStatusCode(404), TernErrorTypeObjectNotFound);
  EXPECT_EQ(TernError::getErrorCodeWithStatusCode(500), TernErrorTypeConnection);
  for (std::int64_t status : {0, -1, 200, 304, 402, 403, 501, 503}) {
    EXPECT_EQ(TernError::getErrorCodeWithStatusCode(status), TernErrorTypeUndefined) << status;
  }
}

TEST(TernError, aFailedResponseBecomesAnErrorWithItsMessage) {
  const auto error =
      TernError::getErrorFromServerResponse(Value::map({{"statusCode", 415}, {"message", "x"}}));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, "TN006");
  EXPECT_EQ(error->message, "x");
  EXPECT_EQ(error->errorDescription, "User passes incorrect object/primitive value into function.");
  EXPECT_EQ(error->errorType, 0U);
}

TEST(TernError, aResponseWithoutStatusCodeIsNoError) {
  EXPECT_FALSE(TernError::getErrorFromServerResponse(Value::map({{"message", "x"}})));
  EXPECT_FALSE(TernError::getErrorFromServerResponse(Value()));
  EXPECT_FALSE(TernError::getErrorFromServerResponse(Value::list({"statusCode"})));
  EXPECT_FALSE(TernError::initWithWebResponse(Value::map({{"message", "x"}})));
}

TEST(TernError, aForbiddenResponseIsUndefined) {
  const auto error = TernError::getErrorFromServerResponse(Value::map({{"statusCode", 403}}));
  ASSERT_TRUE(error);
  expectRow(*error, rows[7]);
}

TEST(TernError, aResponseWithoutMessageHasThatOfItsType) {
  for (const Value& message : {Value(), Value(nullptr)}) {
    const auto error =
        TernError::initWithWebResponse(Value::map({{"statusCode", 401}, {"message", message}}));
    ASSERT_TRUE(error);
    expectRow(*error, rows[1]);
  }
}

TEST(TernError, aMessageOfAnotherKindIsPrinted) {
  const auto error =
      TernError::initWithWebResponse(Value::map({{"statusCode", 404}, {"message", 12}}));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->message, "12");
}

TEST(TernError, aStatusCodeThatIsNoNumberIsUndefined) {
  for (const Value& status : {Value(nullptr), Value("401"), Value::list({401})}) {
    const auto error = TernError::getErrorFromServerResponse(Value::map({{"statusCode", status}}));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, "TN008");
  }
}

}  // namespace
}  // namespace tern::test
