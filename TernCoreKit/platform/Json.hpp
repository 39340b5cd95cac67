/// @file
/// Decodes JSON text into a Value and encodes a Value as JSON text.
///
/// Threads: free functions without state; call them from any thread.
/// Fails: by value: a decoding failure carries one readable line with the byte offset it lies at.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// What came of decoding a text.
struct [[nodiscard]] JsonResult {
  /// The decoded document; meaningful only without an error.
  Value value;
  /// What is wrong with the text and where, e.g. "Missing a comma or ] after an array element.
  /// (offset 12)".
  std::optional<std::string> error;
};

/// Lists and maps may nest this deep.
inline constexpr int maximumJsonDepth = 512;

/// Decodes one JSON document. Key order is kept; a key that is repeated keeps its first place and
/// its last value. Integers of 64 bits stay integers; a number with a fraction or an exponent, and
/// -0, is a double. A byte order mark in front is passed over. Takes the text over, since strings
/// are unescaped in place.
///
/// Fails: by the result, for text that is no JSON or goes on behind the document, nesting deeper
/// than `maximumJsonDepth`, a number that neither 64 bits nor a double can hold, text that is not
/// UTF-8 (half a surrogate pair included), text of 4 GiB or more, and want of memory.
[[nodiscard]] TERN_API JsonResult decodeJson(std::string text);

/// How a Value is laid out as text. `compact` is one line; `pretty` is indented by four spaces a
/// level; `rows` is indented by one space, with a list or map below the first level on one line
/// when it holds nothing but plain values and lists of such: for a person too, but little longer
/// than `compact`. Both put what lies deeper than eight levels on one line.
enum class JsonLayout { compact, pretty, rows };

/// Encodes a value. A double is written in the shortest form that reads back as the same double, or
/// as the same whole number; one that is not finite as null. What is absent is written as null too,
/// and left out of a map. Bytes of a text that are not UTF-8 become replacement characters.
[[nodiscard]] TERN_API std::string encodeJson(const Value& value, JsonLayout layout);

/// The double whose shortest decimal form is that of the given float: 0.1F becomes 0.1, which
/// encodes as 0.1 and reads back as the same float.
[[nodiscard]] TERN_API double shortestDouble(float number);

}  // namespace tern
