// Numbers out of texts and doubles.
//
// Ownership: values. Threads: any. Fails: never.
//
//   leadingInteger("12:3456");   // 12
//   readDouble(text.data(), text.data() + text.size(), number);
//   wholeNumber(1e5);            // 100000
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// The decimal integer that the text starts with, which may be negative: 0 without a digit, and the
/// nearest integer of 64 bits when it lies beyond them.
TERN_API std::int64_t leadingInteger(std::string_view text) noexcept;

/// Reads the double that the text from `first` to `last` starts with as `std::from_chars` does,
/// which some standard libraries have for integers only. A number that lies beyond a double, or so
/// near to 0 that only 0 is left of it, is out of range.
TERN_API std::from_chars_result readDouble(const char* first, const char* last,
                                           double& number) noexcept;

/// The integer that the double is; none when it has a fraction or 64 bits cannot hold it.
TERN_API std::optional<std::int64_t> wholeNumber(double number) noexcept;

}  // namespace tern
