// After the arc tangent of fdlibm (Sun Microsystems, 1993) in its single-precision form, operation
// by operation: each of them rounds as IEEE 754 says, so that the result is the same everywhere.
#include "TernCoreKit/platform/detail/common/ArcTangent.hpp"

#include <bit>
#include <cmath>
#include <cstdint>

namespace tern::inline v5::detail {

namespace {

constexpr float pi = 3.1415927410e+00F;
constexpr float piRest = -8.7422776573e-08F;  // what is missing in it

// A point of the curve with what rounding left of its angle.
struct Angle {
  float high;
  float low;
};
constexpr Angle ofOneHalf{4.6364760399e-01F, 5.0121582440e-09F};
constexpr Angle ofOne{7.8539812565e-01F, 3.7748947079e-08F};
constexpr Angle ofThreeHalves{9.8279368877e-01F, 3.4473217170e-08F};
constexpr Angle ofInfinity{1.5707962513e+00F, 7.5497894159e-08F};

// The share of its tangent by which an angle is smaller than that, for tangents below 7/16 in size.
float excess(float tangent) {
  const float z = tangent * tangent;
  const float w = z * z;
  const float odd =
      z * (3.3333334327e-01F +
           w * (1.4285714924e-01F +
                w * (9.0908870101e-02F +
                     w * (6.6610731184e-02F + w * (4.9768779427e-02F + w * 1.6285819933e-02F)))));
  const float even =
      w * (-2.0000000298e-01F +
           w * (-1.1111110449e-01F +
                w * (-7.6918758452e-02F + w * (-5.8335702866e-02F + w * -3.6531571299e-02F))));
  return odd + even;
}

// The angle of a point plus the one that is left, whose tangent is given.
float sum(Angle point, float rest) {
  return point.high - ((rest * excess(rest) - point.low) - rest);
}

// The angle of a tangent that is not negative.
float angleOf(float tangent) {
  if (tangent >= 0x1p25F) return ofInfinity.high + ofInfinity.low;
  if (tangent < 0x1p-29F) return tangent;
  if (tangent < 7.0F / 16) return tangent - tangent * excess(tangent);
  if (tangent < 11.0F / 16) return sum(ofOneHalf, (2 * tangent - 1) / (2 + tangent));
  if (tangent < 19.0F / 16) return sum(ofOne, (tangent - 1) / (tangent + 1));
  if (tangent < 39.0F / 16) return sum(ofThreeHalves, (tangent - 1.5F) / (1 + 1.5F * tangent));
  return sum(ofInfinity, -1 / tangent);
}

// By how many powers of two y is greater than x.
int powersBetween(float y, float x) {
  const auto bits = [](float size) { return std::bit_cast<std::int32_t>(std::fabs(size)); };
  return (bits(y) - bits(x)) >> 23;
}

// The angle from the nearer end of the x axis, of a point that lies on neither axis.
float angleFromAxis(float y, float x) {
  if (std::isinf(x)) return std::isinf(y) ? pi / 4 : 0;
  const int powers = powersBetween(y, x);
  if (powers > 60) return pi / 2 + 0.5F * piRest;
  if (x < 0 && powers < -60) return 0;
  return angleOf(std::fabs(y / x));
}

}  // namespace

float arcTangent(float y, float x) noexcept {
  if (std::isnan(x) || std::isnan(y)) return x + y;
  const bool isLeft = std::signbit(x);
  if (y == 0) return std::copysign(isLeft ? pi : 0, y);
  if (x == 0 || (std::isinf(y) && !std::isinf(x))) return std::copysign(pi / 2, y);
  const float angle = angleFromAxis(y, x);
  return std::copysign(isLeft ? pi - (angle - piRest) : angle, y);
}

}  // namespace tern::detail
