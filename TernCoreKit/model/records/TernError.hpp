#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// What kind of error it is: the positions in the table of codes and texts.
enum TernErrorType : std::uint32_t {
  /// "TN001": the service was not reached.
  TernErrorTypeConnection = 0,
  /// "TN002": the service was reached and refused.
  TernErrorTypeAccessDenied = 1,
  /// "TN003": a text was no JSON.
  TernErrorTypeIncorrectJSON = 2,
  /// "TN004": the drawing of a map cannot be used.
  TernErrorTypeIncompatibleMaps = 3,
  /// "TN005": a file of the wrong type.
  TernErrorTypeInvalidURI = 4,
  /// "TN006": an argument of the wrong kind.
  TernErrorTypeIncorrectObjectType = 5,
  /// "TN007": a right argument, but nothing was found for it.
  TernErrorTypeObjectNotFound = 6,
  /// "TN008": this one and every greater value.
  TernErrorTypeUndefined = 7,
};

/// The one error that the library hands to its callers.
///
/// Ownership: a value.
/// Threads: as a standard container: any number of readers, or one writer.
/// Fails: never; a type that the table does not know is the undefined one.
///
///     TernError error = TernError::initWithErrorType(TernErrorTypeObjectNotFound);
///     error.code;     // "TN007"
///     error.message;  // "Object not found"
struct [[nodiscard]] TernError {
  /// "TN001" to "TN008": what kind of error it is.
  std::string code;
  /// One line for a person.
  std::string message;
  /// What the error means, as a sentence for a person.
  std::string errorDescription;
  /// Never set by the operations below: read `code` for the kind of error.
  std::uint32_t errorType = 0;

  /// Texts that are not given are those of the type; an empty one that is given stays empty.
  TERN_API static TernError initWithErrorType(
      std::uint64_t type, std::optional<std::string> message = std::nullopt,
      std::optional<std::string> description = std::nullopt);

  /// The code of a type, such as "TN001".
  TERN_API static std::string_view defaultErrorCodeForErrorType(std::uint64_t type);
  /// The message of a type when no other is given.
  TERN_API static std::string_view defaultErrorMessageForErrorType(std::uint64_t type);
  /// The description of a type when no other is given.
  TERN_API static std::string_view defaultErrorDescriptionForErrorType(std::uint64_t type);

  /// The type for an HTTP status.
  TERN_API static TernErrorType getErrorCodeWithStatusCode(std::int64_t statusCode);

  /// The error that the body of a failed response tells of by its "statusCode" and "message"; none
  /// without a "statusCode".
  TERN_API static std::optional<TernError> getErrorFromServerResponse(const Value& response);
  /// The same as `getErrorFromServerResponse`.
  TERN_API static std::optional<TernError> initWithWebResponse(const Value& response);
};

}  // namespace tern
