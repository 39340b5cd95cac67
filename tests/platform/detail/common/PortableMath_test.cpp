#include "TernCoreKit/platform/detail/common/PortableMath.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tern::detail {
namespace {

constexpr double endlessNumber = std::numeric_limits<double>::infinity();

// Arguments and values, computed with 200 binary digits and rounded once.
struct Row {
  double ofLog, log, exponent, power, angle, tangent, ofAtan, atan;
};
constexpr Row rows[] = {
    {0x1.c9495ad5cdcddp+2, 0x1.f767c482c9b00p+0, 0x1.ef2e045bc8fb8p+0, 0x1.bad3b12196c77p+2,
     0x1.3e17c2300193fp+0, 0x1.77d821a6b16dcp+1, 0x1.947586b3d2140p+7, 0x1.90dba4b0fba95p+0},
    {0x1.7399ab64555fbp+5, 0x1.eb4ff1a6eb8c8p+1, 0x1.b075f6c3d8588p+1, 0x1.d5465e8ed5fdfp+4,
     0x1.c2377f548540dp-5, 0x1.c2abad3d96c36p-5, 0x1.52ee547a3daf6p-1, 0x1.2b63fbb0eab16p-1},
    {0x1.2d1756f2de887p+10, 0x1.c5ff4d9fe0f50p+2, 0x1.3119920d46410p+0, 0x1.a580beec067dcp+1,
     0x1.68098d7bf0987p+0, 0x1.81c78e9220a7ap+2, 0x1.3bfae8d03d393p-7, 0x1.3bf866fe18ab6p-7},
    {0x1.38220c80d9311p-1, -0x1.fac5d10d6c780p-2, -0x1.0382694f43532p+1, 0x1.0dabb417be8e8p-3,
     0x1.b4a60bd26f949p-1, 0x1.2514d8096e6a0p+0, 0x1.36dab796d6aeap+1, 0x1.2e20adb7aeabfp+0},
    {0x1.b1e192ee66688p-12, -0x1.f29231a268928p+2, -0x1.2211954bc1b4ep+1, 0x1.a8cb49d84e616p-4,
     0x1.c5d59bfb29ef6p-2, 0x1.e615df3eb37aap-2, 0x1.27af20efc5489p+7, 0x1.90646e517beffp+0},
    {0x1.18df6a1a635b6p+6, 0x1.101a5531d914ep+2, -0x1.5c90b69e793a6p+1, 0x1.0cf852355ddc6p-4,
     0x1.3ede306953ebap+0, 0x1.7b9b52c05bb3fp+1, 0x1.ad6975f74ea9fp-7, 0x1.ad632b2f68efcp-7},
    {0x1.a31b162b9a3a6p+2, 0x1.e115e4e3c1808p+0, -0x1.7e428e6f12bb6p+1, 0x1.9d70171f46131p-5,
     0x1.a1d37231a7a75p-7, 0x1.a1d93e5422408p-7, 0x1.58dd495a4e126p+6, 0x1.8f279b0fdc870p+0},
    {0x1.39b90a2335409p-7, -0x1.2984441cfae1cp+2, -0x1.2358e7851a8e4p+1, 0x1.a49269ef49cacp-4,
     0x1.88627b6f96238p+0, 0x1.a45df89369b07p+4, 0x1.5d0a54b74fb7dp+6, 0x1.8f30b2e7ffb8dp+0},
    {0x1.1967c2b4b1c9ep-5, -0x1.af80c5afb48b8p+1, 0x1.d88daf9975348p+1, 0x1.40f190bf84ca8p+5,
     0x1.b10c39026e55ep-1, 0x1.20f45055072cap+0, 0x1.0e5881e9300dap+3, 0x1.73f656a950a5fp+0},
    {0x1.231a935480b6fp-7, -0x1.2e4e4768bf14ep+2, 0x1.c38f367bf9ab0p+1, 0x1.1064dd3bd241bp+5,
     0x1.149b5225ecd9fp+0, 0x1.df9a441bb837ep+0, 0x1.0e182e7f651a6p+8, 0x1.912d1171db20ap+0},
    {0x1.103fec5a656d3p+9, 0x1.933104b10d77ap+2, -0x1.9c1490fa7a600p+0, 0x1.997f4b45ad7f5p-3,
     0x1.23c2a5217a8f1p-1, 0x1.48104243856d0p-1, 0x1.2989100ce0e6fp-6, 0x1.2980b0eb397d3p-6},
    {0x1.c4799cd660a10p-9, -0x1.6acd1e5e3b692p+2, -0x1.bd4c03d585caep+1, 0x1.f950273ebeb6fp-6,
     0x1.e88ea25936542p-2, 0x1.08ac326ccffd9p-1, 0x1.b9227a9877857p+1, 0x1.49d3f6e20d0eep+0},
};

TEST(PortableMath, givesTheDoubleNearestToTheTrueValue) {
  for (const Row& row : rows) {
    EXPECT_EQ(portableLog(row.ofLog), row.log) << row.ofLog;
    EXPECT_EQ(portablePowerOfE(row.exponent), row.power) << row.exponent;
    EXPECT_EQ(portableTan(row.angle), row.tangent) << row.angle;
    EXPECT_EQ(portableAtan(row.ofAtan), row.atan) << row.ofAtan;
  }
}

// Whether two numbers are the same or neighbours.
bool isBesideOrEqual(double a, double b) {
  return a == b || std::nextafter(a, b) == b || (std::isnan(a) && std::isnan(b));
}

TEST(PortableMath, isAtMostOneDigitFromTheCLibraryAnywhere) {
  for (double x = 1e-12; x < 1e12; x *= 1.0037) {
    EXPECT_TRUE(isBesideOrEqual(portableLog(x), std::log(x))) << x;
    for (const double either : {x, -x}) {
      EXPECT_TRUE(isBesideOrEqual(portableAtan(either), std::atan(either))) << either;
      EXPECT_TRUE(isBesideOrEqual(portableTan(either), std::tan(either))) << either;
      EXPECT_TRUE(isBesideOrEqual(portablePowerOfE(either), std::pow(2.718281828459045, either)))
          << either;
    }
  }
}

TEST(PortableMath, answersForArgumentsAtTheEdgesAsTheCLibrary) {
  for (const double x : {0.0, -0.0, 1.0, -1.0, endlessNumber, -endlessNumber, std::nan(""), 5e-324,
                         1e308, 699.0, -699.0, 701.0, 999.0, 1001.0}) {
    EXPECT_TRUE(isBesideOrEqual(portableLog(x), std::log(x))) << x;
    EXPECT_TRUE(isBesideOrEqual(portablePowerOfE(x), std::pow(2.718281828459045, x))) << x;
    EXPECT_TRUE(isBesideOrEqual(portableTan(x), std::tan(x))) << x;
    EXPECT_TRUE(isBesideOrEqual(portableAtan(x), std::atan(x))) << x;
  }
  EXPECT_TRUE(std::signbit(portableTan(-0.0)));
  EXPECT_TRUE(std::signbit(portableAtan(-0.0)));
}

TEST(PortableMath, angleIsThatOfTheCLibraryAllAround) {
  constexpr double lastDigits = 1e-15;
  for (int degrees = -720; degrees <= 720; ++degrees) {
    const double angle = degrees * 0.25 * 3.14159 / 180;
    for (const double length : {1e-9, 1.0, 3e7}) {
      const double y = length * std::sin(angle);
      const double x = length * std::cos(angle);
      EXPECT_NEAR(portableAngle(y, x), std::atan2(y, x), lastDigits) << degrees;
    }
  }
}

TEST(PortableMath, angleOfAnAxisIsExact) {
  EXPECT_EQ(portableAngle(0, 2), 0);
  EXPECT_EQ(portableAngle(2, 0), std::atan2(1, 0));
  EXPECT_EQ(portableAngle(-2, 0), std::atan2(-1, 0));
  EXPECT_EQ(portableAngle(0, -2), std::atan2(0, -1));
  EXPECT_EQ(portableAngle(-0.0, -2), std::atan2(-0.0, -1));
  EXPECT_EQ(portableAngle(0, 0), 0);
}

}  // namespace
}  // namespace tern::detail
