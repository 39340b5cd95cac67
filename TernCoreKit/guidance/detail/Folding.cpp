#include "TernCoreKit/guidance/detail/Folding.hpp"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "TernCoreKit/guidance/detail/LetterFolds.hpp"
#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5::detail {

namespace {

static_assert(sizeof(LetterFold) == 8);

constexpr char32_t firstSyllable = 0xAC00;
constexpr char32_t lastSyllable = 0xD7A3;

// Null when the letter stays as it is.
const LetterFold* foldOf(char32_t letter) {
  const auto* after = std::ranges::upper_bound(
      letterFolds, letter, {}, [](const LetterFold& fold) { return char32_t{fold.first}; });
  if (after == std::begin(letterFolds)) return nullptr;
  const LetterFold& fold = *std::prev(after);
  const char32_t steps = (letter - fold.first) / fold.stride;
  const bool isHit = (letter - fold.first) % fold.stride == 0 && steps < fold.count;
  return isHit ? &fold : nullptr;
}

// 0 when the two have no code point together.
char32_t together(char32_t letter, char32_t mark) {
  const auto* found =
      std::ranges::lower_bound(markedLetters, std::tuple(letter, mark), {},
                               [](const MarkedLetter& m) { return std::tuple(m.letter, m.mark); });
  const bool isFound =
      found != std::end(markedLetters) && found->letter == letter && found->mark == mark;
  return isFound ? found->together : 0;
}

class Folder {
 public:
  void add(char32_t letter) {
    if (letter >= firstSyllable && letter <= lastSyllable) {
      addSyllable(letter - firstSyllable);
    } else if (const LetterFold* fold = foldOf(letter)) {
      addFold(*fold, letter);
    } else {
      append(letter);
    }
  }

  std::string finished() {
    if (last_ == U' ') text_.pop_back();
    return std::move(text_);
  }

 private:
  // As the first, the middle and perhaps the last letter of it.
  void addSyllable(char32_t index) {
    append(0x1100 + index / 588);
    append(0x1161 + index % 588 / 28);
    if (index % 28 != 0) append(0x11A7 + index % 28);
  }

  void addFold(const LetterFold& fold, char32_t letter) {
    if (fold.size == 1) {
      append(fold.to + (letter - fold.first) / fold.stride * fold.towards);
    } else {
      for (char32_t i = 0; i < fold.size; ++i) append(foldedTexts[fold.to + i]);
    }
  }

  void append(char32_t letter) {
    if (letter == U' ' && (text_.empty() || last_ == U' ')) return;
    if (const char32_t whole = letter < 0x80 ? 0 : together(last_, letter)) {
      text_.resize(lastStart_);
      letter = whole;
    }
    lastStart_ = text_.size();
    last_ = letter;
    char bytes[4];
    text_.append(bytes, putUtf8(bytes, letter));
  }

  std::string text_;
  char32_t last_ = 0;
  std::size_t lastStart_ = 0;
};

}  // namespace

std::string folded(std::string_view name) {
  Folder folder;
  while (!name.empty()) {
    const Utf8Character letter = firstUtf8Character(name);
    folder.add(letter.code);
    name.remove_prefix(letter.size);
  }
  return folder.finished();
}

}  // namespace tern::detail
