#include "TernCoreKit/model/records/TernError.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace tern::inline v5 {

namespace {

struct ErrorTexts {
  std::string_view code;
  std::string_view message;
  std::string_view description;
};

// By error type; the last row is that of every type beyond.
constexpr std::array<ErrorTexts, 8> errorTable{{
    {"TN001", "Unable to connect to server",
     "SDK cannot connect to the server (incorrect URL, server down etc)."},
    {"TN002", "Access Denied", "SDK can connect to the server but cannot authenticate."},
    {"TN003", "Incorrect JSON Data", "JSON is malformed."},
    {"TN004", "Incompatible/Incorrect Maps-(Map ID and Map Name)",
     "Map SVG format is incompatible."},
    {"TN005", "Invalid URI", "File type error with URI."},
    {"TN006", "Incorrect object type was passed",
     "User passes incorrect object/primitive value into function."},
    {"TN007", "Object not found",
     "User passes correct object/primitive into collection but that value cannot be found."},
    {"TN008", "Error is undefined. Please contact your server provider.",
     "There is no information on this error."},
}};

static_assert(errorTable.size() == TernErrorTypeUndefined + 1);

const ErrorTexts& textsOf(std::uint64_t type) {
  return errorTable[std::min<std::uint64_t>(type, TernErrorTypeUndefined)];
}

}  // namespace

TernError TernError::initWithErrorType(std::uint64_t type, std::optional<std::string> message,
                                       std::optional<std::string> description) {
  TernError error;
  error.code = defaultErrorCodeForErrorType(type);
  error.message =
      message ? *std::move(message) : std::string(defaultErrorMessageForErrorType(type));
  error.errorDescription = description ? *std::move(description)
                                       : std::string(defaultErrorDescriptionForErrorType(type));
  return error;
}

std::string_view TernError::defaultErrorCodeForErrorType(std::uint64_t type) {
  return textsOf(type).code;
}

std::string_view TernError::defaultErrorMessageForErrorType(std::uint64_t type) {
  return textsOf(type).message;
}

std::string_view TernError::defaultErrorDescriptionForErrorType(std::uint64_t type) {
  return textsOf(type).description;
}

TernErrorType TernError::getErrorCodeWithStatusCode(std::int64_t statusCode) {
  switch (statusCode) {
    case 400:
    case 415:
      return TernErrorTypeIncorrectObjectType;
    case 401:
      return TernErrorTypeAccessDenied;
    case 404:
      return TernErrorTypeObjectNotFound;
    case 500:
      return TernErrorTypeConnection;
    default:
      return TernErrorTypeUndefined;
  }
}

std::optional<TernError> TernError::getErrorFromServerResponse(const Value& response) {
  const Value* statusCode = response.find("statusCode");
  if (statusCode == nullptr) return std::nullopt;
  const Value& given = response["message"];
  std::optional<std::string> message;
  if (!given.isAbsent() && !given.isNull()) message = given.printed();
  return initWithErrorType(getErrorCodeWithStatusCode(statusCode->integer()), std::move(message));
}

std::optional<TernError> TernError::initWithWebResponse(const Value& response) {
  return getErrorFromServerResponse(response);
}

}  // namespace tern
