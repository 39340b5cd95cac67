// Works with numbers of twice a double's digits, an unevaluated sum of two doubles, after T. J.
// Dekker, "A floating-point technique for extending the available precision" (1971): additions,
// subtractions, multiplications and divisions alone, each of which rounds as IEEE 754 says.
#include "TernCoreKit/platform/detail/common/PortableMath.hpp"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace tern::inline v5::detail {

namespace {

// high + low, of which low is less than half of high's last digit.
struct Twofold {
  double high;
  double low = 0;
};

Twofold sumOf(double a, double b) {
  const double sum = a + b;
  const double ofB = sum - a;
  return {sum, (a - (sum - ofB)) + (b - ofB)};
}

// Where a is not smaller than b in size.
Twofold quickSumOf(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

Twofold productOf(double a, double b) {
  constexpr double splitter = 134217729;  // 2^27 + 1
  const auto upperHalf = [](double x) {
    const double shifted = splitter * x;
    return shifted - (shifted - x);
  };
  const double product = a * b;
  const double aHigh = upperHalf(a);
  const double aLow = a - aHigh;
  const double bHigh = upperHalf(b);
  const double bLow = b - bHigh;
  return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

Twofold operator+(Twofold a, Twofold b) {
  const Twofold highs = sumOf(a.high, b.high);
  const Twofold lows = sumOf(a.low, b.low);
  const Twofold sum = quickSumOf(highs.high, highs.low + lows.high);
  return quickSumOf(sum.high, sum.low + lows.low);
}

Twofold operator-(Twofold a) { return {-a.high, -a.low}; }
Twofold operator-(Twofold a, Twofold b) { return a + -b; }

Twofold operator*(Twofold a, Twofold b) {
  const Twofold product = productOf(a.high, b.high);
  return quickSumOf(product.high, product.low + (a.high * b.low + a.low * b.high));
}

Twofold operator/(Twofold a, Twofold b) {
  const double first = a.high / b.high;
  const Twofold rest = a - b * Twofold{first};
  const double second = rest.high / b.high;
  const Twofold restOfRest = rest - b * Twofold{second};
  return quickSumOf(first, second) + Twofold{restOfRest.high / b.high};
}

// x - n * constant, of a constant in three parts, the first of which leaves room for n.
struct Threefold {
  double high, middle, low;
};
Twofold reduced(Twofold x, double n, Threefold constant) {
  return ((x - productOf(n, constant.high)) - productOf(n, constant.middle)) -
         Twofold{n * constant.low};
}

constexpr Threefold logOf2{0x1.62e42fefap-1, 0x1.cf79abc9ep-40, 0x1.d9cc01f97b57ap-79};
constexpr Threefold halfPi{0x1.921fb544p+0, 0x1.0b4611a6p-34, 0x1.3198a2e037073p-69};

// 1 / 0!, 1 / 1!, 1 / 2! and so on.
constexpr Twofold inverseFactorials[] = {{0x1.0000000000000p+0, 0x0.0p+0},
                                         {0x1.0000000000000p+0, 0x0.0p+0},
                                         {0x1.0000000000000p-1, 0x0.0p+0},
                                         {0x1.5555555555555p-3, 0x1.5555555555555p-57},
                                         {0x1.5555555555555p-5, 0x1.5555555555555p-59},
                                         {0x1.1111111111111p-7, 0x1.1111111111111p-63},
                                         {0x1.6c16c16c16c17p-10, -0x1.f49f49f49f49fp-65},
                                         {0x1.a01a01a01a01ap-13, 0x1.a01a01a01a01ap-73},
                                         {0x1.a01a01a01a01ap-16, 0x1.a01a01a01a01ap-76},
                                         {0x1.71de3a556c734p-19, -0x1.c154f8ddc6c00p-73},
                                         {0x1.27e4fb7789f5cp-22, 0x1.cbbc05b4fa99ap-76},
                                         {0x1.ae64567f544e4p-26, -0x1.c062e06d1f209p-80},
                                         {0x1.1eed8eff8d898p-29, -0x1.2aec959e14c06p-83},
                                         {0x1.6124613a86d09p-33, 0x1.f28e0cc748ebep-87},
                                         {0x1.93974a8c07c9dp-37, 0x1.05d6f8a2efd1fp-92},
                                         {0x1.ae7f3e733b81fp-41, 0x1.1d8656b0ee8cbp-97},
                                         {0x1.ae7f3e733b81fp-45, 0x1.1d8656b0ee8cbp-101},
                                         {0x1.952c77030ad4ap-49, 0x1.ac981465ddc6cp-103},
                                         {0x1.6827863b97d97p-53, 0x1.eec01221a8b0bp-107},
                                         {0x1.2f49b46814157p-57, 0x1.2650f61dbdcb4p-112},
                                         {0x1.e542ba4020225p-62, 0x1.ea72b4afe3c2fp-120},
                                         {0x1.71b8ef6dcf572p-66, -0x1.d043ae40c4647p-120},
                                         {0x1.0ce396db7f853p-70, -0x1.aebcdbd20331cp-124},
                                         {0x1.761b41316381ap-75, -0x1.3423c7d91404fp-130},
                                         {0x1.f2cf01972f578p-80, -0x1.9ada5fcc1ab14p-135},
                                         {0x1.3f3ccdd165fa9p-84, -0x1.58ddadf344487p-139},
                                         {0x1.88e85fc6a4e5ap-89, -0x1.71c37ebd16540p-143},
                                         {0x1.d1ab1c2dccea3p-94, 0x1.054d0c78aea14p-149}};

// The sum of x^(n * stride) / (first + n * stride)!, by Horner's rule.
Twofold series(Twofold x, std::size_t first, std::size_t stride, std::size_t last) {
  Twofold sum = inverseFactorials[last];
  for (std::size_t degree = last; degree > first; degree -= stride) {
    sum = sum * x + inverseFactorials[degree - stride];
  }
  return sum;
}

// For sizes up to 700.
Twofold powerOfTrueE(Twofold x) {
  constexpr int halvings = 4;
  const double n = std::round(x.high / logOf2.high);
  const Twofold rest = reduced(x, n, logOf2);
  Twofold power =
      series({std::ldexp(rest.high, -halvings), std::ldexp(rest.low, -halvings)}, 0, 1, 14);
  for (int i = 0; i < halvings; ++i) power = power * power;
  return {std::ldexp(power.high, static_cast<int>(n)), std::ldexp(power.low, static_cast<int>(n))};
}

// For sizes up to 1000.
Twofold tangentOf(double angle) {
  const double n = std::round(angle / halfPi.high);
  const Twofold rest = reduced({angle}, n, halfPi);
  const Twofold minusSquare = -(rest * rest);
  const Twofold sine = rest * series(minusSquare, 1, 2, 27);
  const Twofold cosine = series(minusSquare, 0, 2, 26);
  return std::fmod(n, 2) == 0 ? sine / cosine : -cosine / sine;
}

}  // namespace

// A step from the C library's logarithm, which is near enough for one.
double portableLog(double x) {
  const double near = std::log(x);
  if (!(x > 0) || !(std::fabs(near) < 700)) return near;
  const Twofold power = powerOfTrueE({near});
  const Twofold miss = (Twofold{x} - power) / (Twofold{x} + power);
  return (Twofold{near} + miss * Twofold{2}).high;
}

double portablePowerOfE(double exponent) {
  constexpr double e = 2.718281828459045;
  // How much the logarithm of that double is less than 1.
  constexpr double lessThanOne = 5.318237706605891e-17;
  if (!(std::fabs(exponent) < 700)) return std::pow(e, exponent);
  const Twofold scaled = Twofold{exponent} - Twofold{exponent * lessThanOne};
  return powerOfTrueE(scaled).high;
}

double portableTan(double angle) {
  if (!(std::fabs(angle) < 1000) || angle == 0) return std::tan(angle);
  return tangentOf(angle).high;
}

// A step from the C library's arc tangent.
double portableAtan(double x) {
  const double near = std::atan(x);
  if (!(std::fabs(x) < 1e15) || std::fabs(x) < 1e-15) return near;
  const Twofold tangent = tangentOf(near);
  const Twofold miss = (Twofold{x} - tangent) / (Twofold{1} + Twofold{x} * tangent);
  return (Twofold{near} + miss).high;
}

double portableAngle(double y, double x) {
  if (x == 0) return y == 0 ? 0 : std::copysign(std::numbers::pi / 2, y);
  const double angle = portableAtan(y / x);
  return x > 0 ? angle : angle + std::copysign(std::numbers::pi, y);
}

}  // namespace tern::detail
