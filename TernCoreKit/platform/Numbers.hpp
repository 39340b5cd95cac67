// Whole numbers out of texts and doubles.
//
// Ownership: values. Threads: any. Fails: never.
//
//   leadingInteger("12:3456");   // 12
//   wholeNumber(1e5);            // 100000
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// The decimal integer that the text starts with, which may be negative: 0 without a digit, and the
/// nearest integer of 64 bits when it lies beyond them.
TERN_API std::int64_t leadingInteger(std::string_view text) noexcept;

/// The integer that the double is; none when it has a fraction or 64 bits cannot hold it.
TERN_API std::optional<std::int64_t> wholeNumber(double number) noexcept;

}  // namespace tern
