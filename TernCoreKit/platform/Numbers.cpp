#include "TernCoreKit/platform/Numbers.hpp"

#include <charconv>
#include <limits>
#include <system_error>

namespace tern::inline v5 {

std::int64_t leadingInteger(std::string_view text) noexcept {
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                             : std::numeric_limits<std::int64_t>::max();
}

std::optional<std::int64_t> wholeNumber(double number) noexcept {
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (!(number >= -limit && number < limit)) return std::nullopt;
  const auto integer = static_cast<std::int64_t>(number);
  if (static_cast<double>(integer) != number) return std::nullopt;
  return integer;
}

}  // namespace tern
