// What a request or a load ends with where memory has run out.
//
// Ownership: a value. Threads: any. Fails: never; its texts take no memory.
#pragma once

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

inline TernError outOfMemoryError() {
  return TernError::initWithErrorType(TernErrorTypeUndefined, outOfMemory, outOfMemory);
}

}  // namespace tern::detail
