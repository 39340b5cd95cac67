// The version of the library: of these headers as numbers, of the library that was linked as text.
// CMake reads it here, so it stands nowhere else.
#pragma once

#include <string_view>

#include "TernCoreKit/platform/Export.hpp"

/// Raised by a change that breaks programs which use these headers.
#define TERN_VERSION_MAJOR 5
/// Raised by what is new.
#define TERN_VERSION_MINOR 12
/// Raised by what is only put right.
#define TERN_VERSION_PATCH 2

/// The version of these headers as one number for comparison: 51202 is 5.12.2.
#define TERN_VERSION (TERN_VERSION_MAJOR * 10000 + TERN_VERSION_MINOR * 100 + TERN_VERSION_PATCH)

/// All of TernCoreKit.
namespace tern {

/// The version of the library that the program runs with, such as "5.12.2". With a shared library
/// it may be another one than that of the headers. Threads: any. Fails: never.
[[nodiscard]] TERN_API std::string_view version() noexcept;

}  // namespace tern
