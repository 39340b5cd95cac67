// The one error that the library hands to its callers.
//
// Ownership: a value. Threads: as a standard container: any number of readers, or one writer.
// Fails: never; a type that the table does not know is the undefined one.
//
//   TernError error = TernError::initWithErrorType(TernErrorTypeObjectNotFound);
//   error.code;     // "TN007"
//   error.message;  // "Object not found"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern {

enum TernErrorType : std::uint32_t {
  TernErrorTypeConnection = 0,
  TernErrorTypeAccessDenied = 1,
  TernErrorTypeIncorrectJSON = 2,
  TernErrorTypeIncompatibleMaps = 3,
  TernErrorTypeInvalidURI = 4,
  TernErrorTypeIncorrectObjectType = 5,
  TernErrorTypeObjectNotFound = 6,
  // This one and every greater value.
  TernErrorTypeUndefined = 7,
};

struct [[nodiscard]] TernError {
  // "TN001" to "TN008": what kind of error it is.
  std::string code;
  // One line.
  std::string message;
  std::string errorDescription;
  // Never set by the operations below: read `code` for the kind of error.
  std::uint32_t errorType = 0;

  // Texts that are not given are those of the type; an empty one that is given stays empty.
  TERN_API static TernError initWithErrorType(
      std::uint32_t type, std::optional<std::string> message = std::nullopt,
      std::optional<std::string> description = std::nullopt);

  TERN_API static std::string_view defaultErrorCodeForErrorType(std::uint32_t type);
  TERN_API static std::string_view defaultErrorMessageForErrorType(std::uint32_t type);
  TERN_API static std::string_view defaultErrorDescriptionForErrorType(std::uint32_t type);

  // The type for an HTTP status.
  TERN_API static TernErrorType getErrorCodeWithStatusCode(std::int64_t statusCode);

  // The error that the body of a failed response tells of by its "statusCode" and "message"; none
  // without a "statusCode".
  TERN_API static std::optional<TernError> getErrorFromServerResponse(const Value& response);
  // Another name of the same.
  TERN_API static std::optional<TernError> initWithWebResponse(const Value& response);
};

}  // namespace tern
