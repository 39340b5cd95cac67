// Small pieces of text that several messages are made of.
//
// Threads: any. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::command {

// The text with a space for every control character, so that what the data calls itself cannot
// command a terminal; on one line, or with its line breaks.
std::string onOneLine(std::string_view text);
std::string onItsLines(std::string_view text);

// With spaces behind it, as wide as that at least.
std::string padded(std::string_view text, std::size_t width);

// A whole decimal number that fits 64 bits and nothing else.
std::optional<std::int64_t> parseWhole(std::string_view text);
// Such numbers with a comma between each two.
std::optional<std::vector<std::int64_t>> parseWholes(std::string_view text);
// A finite decimal number and nothing else.
std::optional<double> parseNumber(std::string_view text);
// Two finite decimal numbers with a comma between them.
std::optional<TernCoordinate> parsePoint(std::string_view text);

// In the shortest form that reads back as the same number, without an exponent where that is
// readable.
std::string numberText(double number);

}  // namespace tern::command
