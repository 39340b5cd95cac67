#include "TernCoreKit/spatial/tree/KDPoint.hpp"

#include <cmath>
#include <limits>

namespace tern::inline v5 {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

Value archivedNumber(double number) {
  if (std::isfinite(number)) return number;
  if (std::isnan(number)) return "nan";
  return number > 0 ? "inf" : "-inf";
}

std::optional<double> numberOf(const Value& archived) {
  if (archived.isNumber()) return archived.number();
  if (archived == Value("inf")) return infinity;
  if (archived == Value("-inf")) return -infinity;
  if (archived == Value("nan")) return std::numeric_limits<double>::quiet_NaN();
  return std::nullopt;
}

}  // namespace

std::size_t KDPoint::dimensions = 2;

Value KDPoint::encode() const { return Value::list({archivedNumber(x), archivedNumber(y)}); }

std::optional<KDPoint> KDPoint::decode(const Value& archived) {
  if (archived.size() != 2 || !archived.isList()) return std::nullopt;
  const auto x = numberOf(archived.items()[0]);
  const auto y = numberOf(archived.items()[1]);
  if (!x || !y) return std::nullopt;
  return KDPoint{*x, *y};
}

}  // namespace tern
