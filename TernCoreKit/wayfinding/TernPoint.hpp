// A point of three single-precision numbers, in map units unless its user says otherwise.
//
// Ownership and threads: a plain value.
#pragma once

namespace tern {

struct TernPoint {
  float x = 0;
  float y = 0;
  float z = 0;

  static TernPoint initWithX(float x, float y, float z) { return {x, y, z}; }
  friend bool operator==(const TernPoint&, const TernPoint&) = default;
};

}  // namespace tern
