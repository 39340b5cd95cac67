#include "TernCoreKit/guidance/Misspelling.hpp"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5 {

namespace {

std::string_view firstLetter(std::string_view text) {
  return text.empty() ? text : text.substr(0, firstUtf8Character(text).size);
}

std::string_view withoutFirst(std::string_view text) {
  return text.substr(firstLetter(text).size());
}

bool isSwapped(std::string_view a, std::string_view b) {
  const std::string_view behindA = withoutFirst(a);
  const std::string_view behindB = withoutFirst(b);
  return firstLetter(a) == firstLetter(behindB) && firstLetter(b) == firstLetter(behindA) &&
         withoutFirst(behindA) == withoutFirst(behindB);
}

// Takes from both what they have in common at the beginning, whole letters.
void dropCommonStart(std::string_view& a, std::string_view& b) {
  auto common = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
  while (common > 0 && ((common < a.size() && continuesUtf8(a[common])) ||
                        (common < b.size() && continuesUtf8(b[common])))) {
    --common;
  }
  a.remove_prefix(common);
  b.remove_prefix(common);
}

std::u32string lettersOf(std::string_view text) {
  std::u32string letters;
  for (; !text.empty(); text = withoutFirst(text)) letters += firstUtf8Character(text).code;
  return letters;
}

// Rows of the table of slips between the beginnings of two texts: the last three.
struct Rows {
  std::vector<std::size_t> beforeLast, last, current;
};

void fillRow(Rows& rows, const std::u32string& a, const std::u32string& b, std::size_t i) {
  rows.current[0] = i;
  for (std::size_t j = 1; j <= b.size(); ++j) {
    const std::size_t replaced = rows.last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
    rows.current[j] = std::min({replaced, rows.last[j] + 1, rows.current[j - 1] + 1});
    const bool isSwap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
    if (isSwap) rows.current[j] = std::min(rows.current[j], rows.beforeLast[j - 2] + 1);
  }
}

}  // namespace

std::size_t lettersIn(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, continuesUtf8));
}

bool isOneSlipApart(std::string_view a, std::string_view b) {
  dropCommonStart(a, b);
  return withoutFirst(a) == withoutFirst(b) || withoutFirst(a) == b || a == withoutFirst(b) ||
         isSwapped(a, b);
}

std::size_t slipsBetween(std::string_view a, std::string_view b, std::size_t most) {
  const std::size_t lettersA = lettersIn(a);
  const std::size_t lettersB = lettersIn(b);
  if (std::max(lettersA, lettersB) - std::min(lettersA, lettersB) >= most) return most;
  const std::u32string left = lettersOf(a);
  const std::u32string right = lettersOf(b);
  Rows rows{std::vector<std::size_t>(right.size() + 1), std::vector<std::size_t>(right.size() + 1),
            std::vector<std::size_t>(right.size() + 1)};
  for (std::size_t j = 0; j <= right.size(); ++j) rows.last[j] = j;
  for (std::size_t i = 1; i <= left.size(); ++i) {
    fillRow(rows, left, right, i);
    if (std::min(*std::ranges::min_element(rows.current), *std::ranges::min_element(rows.last)) >=
        most) {
      return most;
    }
    std::swap(rows.beforeLast, rows.last);
    std::swap(rows.last, rows.current);
  }
  return std::min(most, rows.last.back());
}

}  // namespace tern
