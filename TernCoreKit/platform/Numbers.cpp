#include "TernCoreKit/platform/Numbers.hpp"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <system_error>

namespace tern::inline v5 {

namespace {

bool isDecimal(char letter) { return letter >= '0' && letter <= '9'; }

// Whether digits were read as infinity, or digits other than 0 as 0.
bool isOutOfRange(const char* first, const char* end, double read) {
  if (std::isinf(read)) return std::any_of(first, end, isDecimal);
  const auto isNonZero = [](char letter) { return isDecimal(letter) && letter != '0'; };
  const auto isExponent = [](char letter) { return letter == 'e' || letter == 'E'; };
  return read == 0 && std::any_of(first, std::find_if(first, end, isExponent), isNonZero);
}

}  // namespace

std::int64_t leadingInteger(std::string_view text) noexcept {
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                             : std::numeric_limits<std::int64_t>::max();
}

std::from_chars_result readDouble(const char* first, const char* last, double& number) noexcept {
  double read = 0;
  const auto [end, error] = fast_float::from_chars(first, last, read);
  if (error != std::errc()) return {end, error};
  if (isOutOfRange(first, end, read)) return {end, std::errc::result_out_of_range};
  number = read;
  return {end, error};
}

std::optional<std::int64_t> wholeNumber(double number) noexcept {
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (!(number >= -limit && number < limit)) return std::nullopt;
  const auto integer = static_cast<std::int64_t>(number);
  if (static_cast<double>(integer) != number) return std::nullopt;
  return integer;
}

}  // namespace tern
