// Guesses the keys of a map from those of the map before it.
//
// The records of a list have the same keys in the same order, some left out. Comparing the text
// with the key that is expected next is quicker than reading it, and keys that were met in the
// order of a map without repetitions do not repeat either.
//
// Ownership: owns copies of the keys; pointers to them hold until the next `learn`.
// Threads: one at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

class KeyMemory {
 public:
  class Key {
   public:
    explicit Key(const Value& key);

    const Value& value() const { return value_; }
    std::size_t quotedSize() const { return quotedSize_; }

    // Whether the text goes on with this key in quotation marks.
    // REQUIRES: the text is at its first quotation mark and `window` bytes long.
    bool startsText(const char* text) const {
      std::uint64_t words[2];
      std::memcpy(words, text + 1, sizeof words);
      return (((words[0] ^ words_[0]) & masks_[0]) | ((words[1] ^ words_[1]) & masks_[1])) == 0;
    }

   private:
    Value value_;
    std::size_t quotedSize_;
    // The key with its closing quotation mark, and which of these bytes count.
    std::uint64_t words_[2] = {};
    std::uint64_t masks_[2] = {};
  };

  // How much text `Key::startsText` reads.
  static constexpr std::size_t window = 17;

  std::span<const Key> keys() const { return keys_; }

  // Replaces what is known by the keys of a map, every second of these values, which must differ.
  // Takes no key behind the first that is too long to be guessed.
  void learn(std::span<const Value> keysAndValues);

 private:
  std::vector<Key> keys_;
};

inline KeyMemory::Key::Key(const Value& key) : value_(key), quotedSize_(key.text().size() + 2) {
  char bytes[sizeof words_] = {};
  std::memset(bytes, 0xFF, quotedSize_ - 1);
  std::memcpy(masks_, bytes, sizeof bytes);
  std::memcpy(bytes, key.text().data(), key.text().size());
  bytes[key.text().size()] = '"';
  std::memcpy(words_, bytes, sizeof bytes);
}

inline void KeyMemory::learn(std::span<const Value> keysAndValues) {
  constexpr std::size_t most = 64;
  keys_.clear();
  for (std::size_t i = 0; i < std::min(keysAndValues.size(), 2 * most); i += 2) {
    if (keysAndValues[i].text().size() + 2 > window) break;
    keys_.emplace_back(keysAndValues[i]);
  }
}

}  // namespace tern
