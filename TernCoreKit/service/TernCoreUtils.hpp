#pragma once

#include <functional>
#include <optional>
#include <string>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// JSON as the service's requests, answers and cache use it.
///
/// Ownership: keeps nothing. Threads: any; the completion runs before the call returns.
/// Fails: by the completion's error text, "Error parsing JSON: " and what is wrong.
class TERN_API TernCoreUtils {
 public:
  /// Decodes bytes; the object is absent when there is an error.
  static void parseJSONWithData(
      std::string data,
      const std::function<void(std::optional<std::string> error, Value object)>& completion);

  /// Encodes an object, pretty-printed; the bytes are absent when there is an error. An absent
  /// value, a number that is not finite and nesting deeper than `maximumJsonDepth` are errors, so
  /// that whatever was written can be read back.
  static void createJSONWithData(
      const Value& object,
      const std::function<void(std::optional<std::string> error, std::optional<std::string> data)>&
          completion);
};

}  // namespace tern
