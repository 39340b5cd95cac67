#include "TernCoreKit/guidance/detail/PhraseBook.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "TernCoreKit/guidance/detail/Folding.hpp"
#include "TernCoreKit/guidance/detail/LanguageFiles.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr std::string_view fallback = "en";
constexpr double mmPerFoot = 304.8;
constexpr double feetPerMile = 5280;

const std::vector<Value>& files() {
  static const std::vector<Value> read = [] {
    std::vector<Value> values;
    for (const std::string_view file : languageFiles()) {
      JsonResult parsed = decodeJson(std::string(file));
      // A constant is read or there is no memory for it; then the next one to ask tries again.
      if (parsed.error) breakOffAttempt();
      values.push_back(std::move(parsed.value));
    }
    return values;
  }();
  return read;
}

const Value& fileOf(std::string_view language) {
  const auto found = std::ranges::find_if(
      files(), [&](const Value& file) { return file["language"].text() == language; });
  return found != files().end() || language == fallback ? *found : fileOf(fallback);
}

const Value& at(const Value& file, std::string_view key) {
  const std::size_t dot = key.find('.');
  const Value& found = file[key.substr(0, dot)];
  return dot == key.npos ? found : at(found, key.substr(dot + 1));
}

struct KnownMover {
  std::string word;
  std::string_view kind;
};

// The longest first, since an "escalier mécanique" is no "escalier".
const std::vector<KnownMover>& knownMovers() {
  static const std::vector<KnownMover> known = [] {
    std::vector<KnownMover> words;
    for (const Value& file : files()) {
      for (const auto& [kind, texts] : file["mover"].entries()) {
        for (const Value& word : texts["known"].items()) {
          words.push_back({folded(word.text()), kind.text()});
        }
      }
    }
    std::ranges::stable_sort(words, std::ranges::greater(),
                             [](const KnownMover& each) { return each.word.size(); });
    return words;
  }();
  return known;
}

std::string filledIn(std::string_view text, std::span<const PhraseBook::Filling> fillings) {
  std::string filled;
  while (!text.empty()) {
    const std::size_t open = std::min(text.find('{'), text.size());
    filled += text.substr(0, open);
    text.remove_prefix(open);
    const std::size_t close = text.find('}');
    if (close == text.npos) break;
    const std::string_view name = text.substr(1, close - 1);
    const auto found = std::ranges::find(fillings, name, &PhraseBook::Filling::first);
    if (found != fillings.end()) filled += found->second;
    text.remove_prefix(close + 1);
  }
  return filled + std::string(text);
}

}  // namespace

PhraseBook PhraseBook::of(std::string_view tag) {
  const std::string whole = folded(tag);
  const std::string_view language = std::string_view(whole).substr(0, whole.find_first_of("-_"));
  const bool isImperial = whole.ends_with("-us") || whole.ends_with("_us");
  return {fileOf(language), isImperial};
}

std::vector<std::string> PhraseBook::languages() {
  std::vector<std::string> names;
  for (const Value& file : files()) names.emplace_back(file["language"].text());
  return names;
}

std::string_view PhraseBook::moverKind(std::string_view name) {
  const std::string low = folded(name);
  const auto found = std::ranges::find_if(
      knownMovers(), [&](const KnownMover& known) { return low.find(known.word) != low.npos; });
  return found != knownMovers().end() ? found->kind : std::string_view();
}

std::string PhraseBook::text(std::string_view key, std::initializer_list<Filling> fillings) const {
  const Value& own = at(*file_, key);
  const Value& text = own.isText() ? own : at(fileOf(fallback), key);
  return filledIn(text.text(), {fillings.begin(), fillings.size()});
}

bool PhraseBook::has(std::string_view key) const {
  return at(*file_, key).isText() || at(fileOf(fallback), key).isText();
}

std::string PhraseBook::number(double value, int decimals) const {
  std::array<char, 64> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, decimals);
  std::string text(digits.data(), end.ec == std::errc() ? end.ptr : digits.data());
  const std::size_t dot = text.find('.');
  if (dot != text.npos) text.replace(dot, 1, (*file_)["decimal"].text());
  return text;
}

// By the rules of the Unicode CLDR for the languages that are here: one for 1; in French for all
// below 2.
std::string PhraseBook::counted(std::string_view key, double count, int decimals) const {
  const std::string_view rule = (*file_)["plural"].text();
  const bool isOne =
      (rule == "one" && decimals == 0 && count == 1) || (rule == "zeroOrOne" && count < 2);
  const std::string unit = "units." + std::string(key) + ".";
  const std::string one = unit + "one";
  return text(isOne && has(one) ? one : unit + "other", {{"n", number(count, decimals)}});
}

std::string PhraseBook::length(double mm) const {
  const double small = isImperial_ ? mm / mmPerFoot : mm / 1000;
  const double smallInLarge = isImperial_ ? feetPerMile : 1000;
  if (isImperial_ ? small >= 0.1 * smallInLarge : small >= 999.5) {
    return counted(isImperial_ ? "miles" : "kilometres", std::round(10 * small / smallInLarge) / 10,
                   1);
  }
  return counted(isImperial_ ? "feet" : "metres", std::round(small), 0);
}

std::string PhraseBook::minutes(double seconds) const {
  return counted("minutes", std::max(1.0, std::round(seconds / 60)), 0);
}

}  // namespace tern::detail
