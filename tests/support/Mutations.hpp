// Damages documents at random: values of the wrong kind, nulls, missing keys, absurd numbers,
// repeated and missing elements, lists that are far too long.
//
// The same seed gives the same damage.
#pragma once

#include <cstdint>
#include <random>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {

class Mutations {
 public:
  explicit Mutations(std::uint64_t seed) : random_(seed) {}

  // Damages that many places of the document; any value at any depth is as likely as any other.
  void damage(Value& document, int places);

  std::uint64_t below(std::uint64_t bound) { return random_() % bound; }

 private:
  void damageOne(Value& value);
  void damageMap(Value& map);
  void damageList(Value& list);
  Value absurd();

  std::mt19937_64 random_;
};

}  // namespace tern::test
