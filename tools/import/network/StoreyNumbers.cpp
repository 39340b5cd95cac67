#include "tools/import/network/StoreyNumbers.hpp"

#include <cmath>
#include <string>
#include <string_view>
#include <system_error>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::imports {

namespace {

std::optional<double> numberIn(std::string_view text) {
  double number = 0;
  const auto [end, error] = readDouble(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

// There is no storey 0 between the first one below the ground and the first one above.
double ordinalOfNumber(double storey) { return storey >= 1 ? storey - 1 : storey; }

bool takeFront(std::string_view& text, std::string_view small, std::string_view large) {
  if (!text.starts_with(small) && !text.starts_with(large)) return false;
  text.remove_prefix(small.size());
  return true;
}

}  // namespace

std::optional<double> numberOf(const Value& value) {
  if (value.isText()) return numberIn(value.text());
  const bool isFinite = value.isNumber() && std::isfinite(value.number());
  return isFinite ? std::optional(value.number()) : std::nullopt;
}

std::optional<double> ordinalOfStorey(const Value& storey) {
  if (const auto number = numberOf(storey)) return ordinalOfNumber(*number);
  std::string_view text = storey.text();
  const bool isBelow = takeFront(text, "b", "B");
  const bool isBetween = !isBelow && takeFront(text, "m", "M");
  if (text.ends_with('f') || text.ends_with('F')) text.remove_suffix(1);
  const auto number = numberIn(text);
  if (!number || *number <= 0) return std::nullopt;
  if (isBelow) return -*number;
  return ordinalOfNumber(*number) - (isBetween ? 0.5 : 0);
}

}  // namespace tern::imports
