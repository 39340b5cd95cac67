#include "TernCoreKit/model/collections/RecordKey.hpp"

namespace tern::inline v5 {

RecordKey::RecordKey(Value key) {
  const auto doubled = static_cast<std::int64_t>(static_cast<std::uint64_t>(key.integer()) << 1U);
  if (key.isInteger() && doubled >> 1 == key.integer()) {
    bits_ = doubled | 1;
  } else {
    bits_ = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(new Value(std::move(key))));
  }
}

}  // namespace tern
