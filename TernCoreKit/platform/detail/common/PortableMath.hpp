// Logarithm, power, tangent, arc tangent and angle that are the same on every machine: the double
// nearest to the true value, but for about one argument in 10^13, where the true value lies all but
// half-way between two doubles. C libraries round their last bit each in its own way.
//
// Threads: any. Fails: as the functions of <cmath>, which also answer for arguments outside of
// those that coordinates lead to.
#pragma once

namespace tern::inline v5::detail {

// Of numbers above 0.
double portableLog(double x);
// The power of the double that is nearest to Euler's number, for exponents up to 700 in size.
double portablePowerOfE(double exponent);
// Of angles up to 1000 in size.
double portableTan(double angle);
double portableAtan(double x);
// Where a finite vector points, in radians from -pi to pi, as std::atan2(y, x) has it, but for the
// last bits.
double portableAngle(double y, double x);

}  // namespace tern::detail
