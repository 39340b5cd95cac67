// Reads the text of one JSON document into a Value, in one pass without recursion.
//
// Ownership: changes the text, which must outlive it: strings are unescaped in place.
// Threads: one at a time.
// Fails: `read` by false, and then `error` says what is wrong and where; std::bad_alloc when memory
// runs out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/platform/detail/KeyMemory.hpp"
#include "TernCoreKit/platform/detail/ValueStack.hpp"

namespace tern::inline v5 {

class JsonReader {
 public:
  explicit JsonReader(std::string& text) : begin_(text.data()), end_(text.data() + text.size()) {}

  bool read();
  // The document, once. REQUIRES: `read` gave true.
  Value takeDocument();
  std::string error() const;

 private:
  // A list or map that has not ended.
  struct Open {
    std::size_t start;  // where its values begin on the stack
    // Of a map: the keys that may come next, and how many came that were expected.
    const KeyMemory::Key* expected;
    const KeyMemory::Key* expectedEnd;
    std::uint32_t met;
    char closer;
  };

  // All of these read on from a point of the text, which ends with a NUL byte, and return the point
  // behind what they read; null after an error.
  char* value(char* at);
  char* next(char* at);
  char* open(char* at);
  char* close(char* at);
  char* key(char* at);
  char* expectedKey(char* at);
  char* scalar(char* at);
  char* word(char* at, std::string_view word, Value value);
  char* string(char* at);
  char* mixedString(char* begin);
  char* badString(char* begin, char* at);
  char* escape(char* at, char*& out);
  char* unicodeEscape(char* at, char*& out);
  char* number(char* at);
  char* integer(char* begin, char* end, std::uint64_t digits);
  char* fraction(char* begin, char* at, std::uint64_t digits);
  char* exponent(char* at, std::int64_t& power);
  char* nearestDouble(char* begin, char* end, std::int64_t power);
  char* space(char* at) const;
  char* plainEnd(char* at) const;

  // Notes an error; always null.
  char* fail(const char* message, const char* at);
  std::size_t distinct(std::span<Value> keysAndValues);

  char* const begin_;
  char* const end_;
  ValueStack stack_;
  std::vector<KeyMemory> memories_;  // by depth
  const char* message_ = nullptr;
  std::size_t offset_ = 0;
  Open open_[maximumJsonDepth + 1];
  Open* innermost_ = open_;  // the first stands for the document
};

}  // namespace tern
