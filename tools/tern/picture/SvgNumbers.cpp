#include "tools/tern/picture/SvgNumbers.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <system_error>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::picture {

namespace {

constexpr double largestSize = 1e7;

}  // namespace

std::optional<double> takeNumber(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n,+"), text.size()));
  double number = 0;
  const auto [end, error] = readDouble(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || !(std::abs(number) <= largestSize)) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

}  // namespace tern::picture
