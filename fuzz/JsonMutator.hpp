// Changes JSON documents as trees, so that what comes out is a document again: a value takes the
// place of another, elements and keys come, go and move, numbers and texts change a little.
//
// Threads: one object, one thread. Fails: never; what is no JSON is changed as bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::fuzz {

// Changes some bytes.
using MutateBytes = std::function<std::string(std::string bytes)>;

class JsonMutator {
 public:
  // The same seed makes the same changes.
  JsonMutator(std::uint64_t seed, MutateBytes mutateBytes);

  // One to four changes. Values of the other text, when it is a document, may come in. A text of at
  // most `mostBytes`, unless the given one is longer.
  std::string mutate(const std::string& text, const std::string& other, std::size_t mostBytes);

 private:
  std::size_t below(std::size_t bound) { return random_() % bound; }
  Value& anyIn(Value& document);
  Value copyOfAny();

  void change(Value& value);
  void changeScalar(Value& value);
  void changeNumber(Value& value);
  void changeList(Value& list);
  void changeMap(Value& map);
  Value interesting();

  std::mt19937_64 random_;
  const MutateBytes mutateBytes_;
  Value document_;
  Value other_;
};

// For those who have nothing better: flips, drops, doubles and inserts some bytes.
std::string mutateSomeBytes(std::string bytes, std::mt19937_64& random);

}  // namespace tern::fuzz
