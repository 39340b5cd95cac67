#pragma once

namespace tern::inline v5 {

/// A point of three single-precision numbers, in map units unless its user says otherwise.
///
/// Ownership and threads: a plain value.
struct TernPoint {
  /// The first number.
  float x = 0;
  /// The second number.
  float y = 0;
  /// The third number: a height, or what its user says.
  float z = 0;

  /// The point of these three numbers.
  static TernPoint initWithX(float x, float y, float z) { return {x, y, z}; }
  /// Whether all three numbers are equal.
  friend bool operator==(const TernPoint&, const TernPoint&) = default;
};

}  // namespace tern
