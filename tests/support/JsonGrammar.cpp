#include "tests/support/JsonGrammar.hpp"

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::test {
namespace {

class Grammar {
 public:
  explicit Grammar(std::string_view text) : rest_(text) {}

  bool document() {
    take("\xEF\xBB\xBF");
    return element(0) && rest_.empty();
  }

 private:
  bool take(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  std::optional<char> takeOneOf(std::string_view characters) {
    if (rest_.empty() || characters.find(rest_.front()) == characters.npos) return std::nullopt;
    const char taken = rest_.front();
    rest_.remove_prefix(1);
    return taken;
  }

  void space() {
    while (takeOneOf(" \n\r\t")) {
    }
  }

  // A value with the space round it.
  bool element(int depth) {
    space();
    const bool good = take("{") ? depth < maximumJsonDepth && elements(depth + 1, true)
                      : take("[")
                          ? depth < maximumJsonDepth && elements(depth + 1, false)
                          : take("true") || take("false") || take("null") || string() || number();
    space();
    return good;
  }

  bool elements(int depth, bool named) {
    const std::string_view end = named ? "}" : "]";
    space();
    if (take(end)) return true;
    do {
      if (named && !name()) return false;
      if (!element(depth)) return false;
    } while (take(","));
    return take(end);
  }

  bool name() {
    space();
    if (!string()) return false;
    space();
    return take(":");
  }

  bool string() {
    if (!take("\"")) return false;
    while (!take("\"")) {
      if (!(take("\\") ? escape() : character())) return false;
    }
    return true;
  }

  bool escape() {
    if (takeOneOf("\"\\/bfnrt")) return true;
    if (!take("u")) return false;
    const int first = hexadecimal();
    if (first < 0xD800 || first > 0xDFFF) return first >= 0;
    if (first > 0xDBFF || !take("\\u")) return false;
    const int second = hexadecimal();
    return second >= 0xDC00 && second <= 0xDFFF;
  }

  int hexadecimal() {
    std::string digits;
    while (digits.size() < 4) {
      const auto digit = takeOneOf("0123456789abcdefABCDEF");
      if (!digit) return -1;
      digits += *digit;
    }
    return std::stoi(digits, nullptr, 16);
  }

  bool character() {
    if (rest_.empty()) return false;
    const auto byte = [this](std::size_t i) { return static_cast<unsigned char>(rest_[i]); };
    const auto leadingOnes = static_cast<std::size_t>(std::countl_one(byte(0)));
    const std::size_t size = leadingOnes == 0 ? 1 : leadingOnes;
    if (leadingOnes == 1 || size > 4 || rest_.size() < size) return false;
    unsigned code = size == 1 ? byte(0) : byte(0) & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
      if (std::countl_one(byte(i)) != 1) return false;
      code = code * 64 + (byte(i) & 63U);
    }
    constexpr unsigned least[] = {0, 0x20, 0x80, 0x800, 0x10000};
    rest_.remove_prefix(size);
    return code >= least[size] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  }

  bool digits() {
    bool any = false;
    while (takeOneOf("0123456789")) any = true;
    return any;
  }

  bool number() {
    const std::string_view before = rest_;
    take("-");
    if (!take("0") && !digits()) return false;
    bool whole = true;
    if (take(".")) {
      whole = false;
      if (!digits()) return false;
    }
    if (takeOneOf("eE")) {
      whole = false;
      takeOneOf("+-");
      if (!digits()) return false;
    }
    return isInRange(std::string(before.substr(0, before.size() - rest_.size())), whole);
  }

  static bool isInRange(const std::string& number, bool whole) {
    if (!whole) return std::isfinite(std::strtod(number.c_str(), nullptr));
    errno = 0;
    std::strtoll(number.c_str(), nullptr, 10);
    return errno == 0;
  }

  std::string_view rest_;
};

}  // namespace

bool isJsonDocument(std::string_view text) { return Grammar(text).document(); }

}  // namespace tern::test
