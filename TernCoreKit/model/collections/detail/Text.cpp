#include "TernCoreKit/model/collections/detail/Text.hpp"

#include <algorithm>
#include <iterator>

#include "TernCoreKit/model/collections/detail/CapitalLetters.hpp"
#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5::detail {

namespace {

char32_t small(char32_t letter) {
  const auto* run = std::ranges::lower_bound(capitalLetters, letter, {}, &CapitalLetters::last);
  const bool isCapital = run != std::end(capitalLetters) && letter >= run->first &&
                         (letter - run->first) % run->stride == 0;
  return isCapital ? letter + static_cast<char32_t>(run->toSmall) : letter;
}

}  // namespace

std::string lowered(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Utf8Character letter = firstUtf8Character(text);
    const char32_t lower = small(letter.code);
    if (lower == letter.code) {
      result += text.substr(0, letter.size);
    } else {
      char bytes[4];
      result.append(bytes, putUtf8(bytes, lower));
    }
    text.remove_prefix(letter.size);
  }
  return result;
}

bool sameTextInAnyCase(const Value& a, const Value& b) {
  return a.isText() && b.isText() && lowered(a.text()) == lowered(b.text());
}

}  // namespace tern::detail
