// The arc tangent in single precision, with the same last bit on every machine. C libraries differ
// in it, and whether a way counts as turning can hang on it.
//
// Ownership: values. Threads: any. Fails: never.
//
//   arcTangent(1, -1);   // 2.3561945: the angle from the x axis to (-1, 1)
#pragma once

namespace tern::inline v5::detail {

// As std::atan2(y, x), infinities and the signs of zeros included.
float arcTangent(float y, float x) noexcept;

}  // namespace tern::detail
