#include "TernCoreKit/platform/detail/JsonReader.hpp"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>
#include <utility>

#include "TernCoreKit/platform/Numbers.hpp"
#include "TernCoreKit/platform/Utf8.hpp"
#include "TernCoreKit/platform/detail/JsonText.hpp"
#include "TernCoreKit/platform/detail/RepeatedKeys.hpp"

// The steps of a value become one function: compilers find some too large, at a cost of a tenth.
#define TERN_IN_ONE_PIECE [[gnu::always_inline]] inline

namespace tern::inline v5 {
namespace {

constexpr std::uint64_t everyByte(unsigned char byte) { return 0x0101010101010101U * byte; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

std::uint64_t eightBytes(const char* at) {
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof word);
  return word;
}

constexpr bool lowByteFirst = std::endian::native == std::endian::little;

// Most of a document laid out for people is line breaks and their indents.
char* skipLongSpace(char* at, const char* end) {
  while (isSpace(*at)) {
    ++at;
    while (lowByteFirst && end - at >= 8) {
      const std::uint64_t others = eightBytes(at) ^ everyByte(' ');
      if (others != 0) {
        at += std::countr_zero(others) / 8;
        break;
      }
      at += 8;
    }
  }
  return at;
}

char* readDigits(char* at, std::uint64_t& digits) {
  for (; isDigit(*at); ++at) digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
  return at;
}

// How many digits a number would have before its decimal point without an exponent; 0 or less for
// one below 1. The power of ten is that of its last digit.
std::int64_t integerDigits(const char* number, std::int64_t power) {
  while (*number == '-' || *number == '0' || *number == '.') ++number;
  for (; isDigit(*number) || *number == '.'; ++number) power += *number == '.' ? 0 : 1;
  return power;
}

constexpr std::uint32_t noNumber = ~0U;

std::uint32_t fourHexDigits(const char* at, const char* end) {
  std::uint32_t number = 0;
  if (end - at < 4 || std::from_chars(at, at + 4, number, 16).ptr != at + 4) return noNumber;
  return number;
}

}  // namespace

Value JsonReader::takeDocument() { return std::move(stack_.from(0).front()); }

std::string JsonReader::error() const {
  return std::string(message_) + " (offset " + std::to_string(offset_) + ")";
}

char* JsonReader::fail(const char* message, const char* at) {
  message_ = message;
  offset_ = static_cast<std::size_t>(at - begin_);
  return nullptr;
}

bool JsonReader::read() {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  char* at = begin_ + (std::string_view(begin_, end_).starts_with(mark) ? mark.size() : 0);
  at = space(at);
  if (at == end_) return fail("The document is empty.", at) != nullptr;
  do {
    at = value(at);
    if (at != nullptr) at = next(at);
  } while (at != nullptr && innermost_ != open_);
  if (at == nullptr) return false;
  return at == end_ || fail("More text behind the end of the document.", at) != nullptr;
}

inline char* JsonReader::space(char* at) const {
  return static_cast<unsigned char>(*at) > ' ' ? at : skipLongSpace(at, end_);
}

// A value, or the beginning of one up to its first element.
TERN_IN_ONE_PIECE char* JsonReader::value(char* at) {
  while (*at == '{' || *at == '[') {
    at = open(at);
    if (at == nullptr || *at == innermost_->closer) return at;
    if (innermost_->closer == '}') {
      at = key(at);
      if (at == nullptr) return nullptr;
    }
  }
  return scalar(at);
}

// What lies between the end of a value and the beginning of the next one.
TERN_IN_ONE_PIECE char* JsonReader::next(char* at) {
  if (*at != ',' || innermost_ == open_) {
    at = space(at);
    while (innermost_ != open_ && *at == innermost_->closer) at = space(close(at));
    if (innermost_ == open_) return at;
  }
  const bool inMap = innermost_->closer == '}';
  if (*at != ',') {
    return fail(inMap ? "Missing a comma or } after a map entry."
                      : "Missing a comma or ] after an array element.",
                at);
  }
  at = space(at + 1);
  return inMap ? key(at) : at;
}

TERN_IN_ONE_PIECE char* JsonReader::open(char* at) {
  static_assert(maximumJsonDepth == 512);
  const auto depth = static_cast<std::size_t>(innermost_ - open_);
  if (depth == maximumJsonDepth) return fail("Lists and maps nest deeper than 512.", at);
  if (depth == memories_.size()) memories_.emplace_back();
  const auto keys = memories_[depth].keys();
  const char closer = *at == '{' ? '}' : ']';
  *++innermost_ = {stack_.size(), keys.data(), keys.data() + keys.size(), 0, closer};
  return space(at + 1);
}

TERN_IN_ONE_PIECE char* JsonReader::close(char* at) {
  const Open& closed = *innermost_--;
  if (closed.closer == ']') {
    stack_.makeList(closed.start);
  } else {
    const auto values = stack_.from(closed.start);
    const bool allExpected = values.size() == std::size_t{2} * closed.met;
    stack_.makeMap(closed.start, allExpected ? values.size() : distinct(values));
  }
  return at + 1;
}

// Leaves each key once and returns how many values that are.
std::size_t JsonReader::distinct(std::span<Value> keysAndValues) {
  const std::size_t count = removeRepeatedKeys(keysAndValues);
  memories_[static_cast<std::size_t>(innermost_ - open_)].learn(keysAndValues.first(count));
  return count;
}

TERN_IN_ONE_PIECE char* JsonReader::key(char* at) {
  if (*at != '"') return fail("Missing a key in double quotes.", at);
  char* end = expectedKey(at);
  if (end == nullptr) end = string(at);
  if (end == nullptr) return nullptr;
  if (*end != ':') end = space(end);
  if (*end != ':') return fail("Missing a colon after a key.", end);
  return space(end + 1);
}

// Null without an error when no key that is expected comes.
TERN_IN_ONE_PIECE char* JsonReader::expectedKey(char* at) {
  constexpr int mostLeftOut = 3;
  if (static_cast<std::size_t>(end_ - at) < KeyMemory::window) return nullptr;
  Open& map = *innermost_;
  const KeyMemory::Key* key = map.expected;
  for (int leftOut = 0; leftOut <= mostLeftOut && key != map.expectedEnd; ++leftOut, ++key) {
    if (!key->startsText(at)) continue;
    map.expected = key + 1;
    ++map.met;
    stack_.push(key->value());
    return at + key->quotedSize();
  }
  return nullptr;
}

TERN_IN_ONE_PIECE char* JsonReader::scalar(char* at) {
  switch (*at) {
    case '"':
      return string(at);
    case 't':
      return word(at, "true", true);
    case 'f':
      return word(at, "false", false);
    case 'n':
      return word(at, "null", nullptr);
    default:
      return number(at);
  }
}

char* JsonReader::word(char* at, std::string_view word, Value value) {
  if (!std::string_view(at, end_).starts_with(word)) return fail("Invalid value.", at);
  stack_.push(std::move(value));
  return at + word.size();
}

// The first byte that is no ASCII character or that a string cannot hold as it is.
TERN_IN_ONE_PIECE char* JsonReader::plainEnd(char* at) const {
  for (; lowByteFirst && end_ - at >= 8; at += 8) {
    const std::uint64_t word = eightBytes(at);
    const std::uint64_t quotes = word ^ everyByte('"');
    const std::uint64_t backslashes = word ^ everyByte('\\');
    // The high bit of each byte that is found; above the first one there may be wrong ones.
    const std::uint64_t found =
        (((quotes - everyByte(1)) & ~quotes) | ((backslashes - everyByte(1)) & ~backslashes) |
         (word - everyByte(' ')) | word) &
        everyByte(0x80);
    if (found != 0) return at + std::countr_zero(found) / 8;
  }
  while (isPlainInString(*at)) ++at;
  return at;
}

TERN_IN_ONE_PIECE char* JsonReader::string(char* at) {
  char* begin = at + 1;
  char* end = plainEnd(begin);
  if (*end != '"') return mixedString(begin);
  stack_.push(std::string_view(begin, end));
  return end + 1;
}

char* JsonReader::mixedString(char* begin) {
  char* out = begin;
  for (char* at = begin; at != nullptr;) {
    char* end = plainEnd(at);
    while (const std::size_t size = utf8SequenceSize(end, end_)) end = plainEnd(end + size);
    std::memmove(out, at, static_cast<std::size_t>(end - at));
    out += end - at;
    if (*end == '"') {
      stack_.push(std::string_view(begin, out));
      return end + 1;
    }
    at = *end == '\\' ? escape(end, out) : badString(begin, end);
  }
  return nullptr;
}

char* JsonReader::badString(char* begin, char* at) {
  if (at == end_) return fail("Missing a closing quotation mark.", begin - 1);
  if (static_cast<unsigned char>(*at) < ' ') return fail("Control character in a string.", at);
  return fail("Text that is not UTF-8.", at);
}

char* JsonReader::escape(char* at, char*& out) {
  constexpr std::string_view letters = "\"\\/bfnrt";
  constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
  if (at[1] == 'u') return unicodeEscape(at, out);
  const std::size_t which = letters.find(at[1]);
  if (which == letters.npos) return fail("Unknown escape in a string.", at);
  *out++ = meanings[which];
  return at + 2;
}

char* JsonReader::unicodeEscape(char* at, char*& out) {
  const auto isHalf = [](std::uint32_t code, std::uint32_t first) {
    return code >= first && code < first + 0x400;
  };
  std::uint32_t code = fourHexDigits(at + 2, end_);
  if (code == noNumber) return fail("Missing four hexadecimal digits after \\u.", at);
  char* end = at + 6;
  if (isHalf(code, 0xD800) && end[0] == '\\' && end[1] == 'u') {
    const std::uint32_t low = fourHexDigits(end + 2, end_);
    if (isHalf(low, 0xDC00)) {
      code = 0x10000 + ((code - 0xD800) << 10 | (low - 0xDC00));
      end += 6;
    }
  }
  if (isHalf(code, 0xD800) || isHalf(code, 0xDC00)) return fail("Half a surrogate pair.", at);
  out = putUtf8(out, code);
  return end;
}

TERN_IN_ONE_PIECE char* JsonReader::number(char* at) {
  char* const begin = at;
  if (*at == '-') ++at;
  std::uint64_t digits = 0;
  if (!isDigit(*at)) return fail(at == begin ? "Invalid value." : "Missing a digit.", at);
  at = *at == '0' ? at + 1 : readDigits(at, digits);
  if (*at == '.' || *at == 'e' || *at == 'E') return fraction(begin, at, digits);
  return integer(begin, at, digits);
}

TERN_IN_ONE_PIECE char* JsonReader::integer(char* begin, char* end, std::uint64_t digits) {
  const bool minus = *begin == '-';
  const std::ptrdiff_t count = end - begin - (minus ? 1 : 0);
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  // Nineteen digits never wrap round.
  if (count > 19 || digits > most + (minus ? 1 : 0)) {
    return fail("An integer that does not fit into 64 bits.", begin);
  }
  if (minus && digits == 0) {
    stack_.push(-0.0);
  } else {
    stack_.push(static_cast<std::int64_t>(minus ? 0 - digits : digits));
  }
  return end;
}

char* JsonReader::fraction(char* begin, char* at, std::uint64_t digits) {
  std::int64_t power = 0;
  if (*at == '.') {
    char* const first = ++at;
    at = readDigits(at, digits);
    if (at == first) return fail("Missing a digit.", at);
    power = first - at;
  }
  const bool fewDigits = at - begin <= 19;
  if (*at == 'e' || *at == 'E') {
    at = exponent(at + 1, power);
    if (at == nullptr) return nullptr;
  }
  static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                      1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  // Both numbers are exact, and the result is rounded once.
  if (FLT_EVAL_METHOD == 0 && fewDigits && digits <= 1ULL << 53 && std::abs(power) <= 22) {
    const double exact = static_cast<double>(digits);
    const double number = power < 0 ? exact / powers[-power] : exact * powers[power];
    stack_.push(*begin == '-' ? -number : number);
    return at;
  }
  return nearestDouble(begin, at, power);
}

char* JsonReader::exponent(char* at, std::int64_t& power) {
  const bool minus = *at == '-';
  if (*at == '-' || *at == '+') ++at;
  if (!isDigit(*at)) return fail("Missing a digit.", at);
  std::int64_t number = 0;
  for (; isDigit(*at); ++at) number = std::min<std::int64_t>(number * 10 + (*at - '0'), 1LL << 40);
  power += minus ? -number : number;
  return at;
}

char* JsonReader::nearestDouble(char* begin, char* end, std::int64_t power) {
  double number = 0;
  const auto result = readDouble(begin, end, number);
  if (result.ec == std::errc::result_out_of_range || std::isinf(number)) {
    if (integerDigits(begin, power) > 0) {
      return fail("A number that does not fit into a double.", begin);
    }
    number = *begin == '-' ? -0.0 : 0.0;
  }
  stack_.push(number);
  return end;
}

}  // namespace tern
