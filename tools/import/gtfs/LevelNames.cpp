#include "tools/import/gtfs/LevelNames.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace tern::imports {

namespace {

// The words with a space on either side, in small letters, so that whole ones are found.
std::string wordsOf(std::string_view name) {
  std::string words = " " + std::string(name) + " ";
  for (char& c : words) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return words;
}

// Whether one of the names holds the other, as "On street" does "Street".
bool saysTheSame(std::string_view one, std::string_view other) {
  const std::string words = wordsOf(one);
  const std::string otherWords = wordsOf(other);
  return words.find(otherWords) != std::string::npos || otherWords.find(words) != std::string::npos;
}

constexpr std::string_view betweenNames = ", ";

// Whether one of the names that stand in the text, with commas between, says the same.
bool isSaidIn(std::string_view text, std::string_view name) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(betweenNames), text.size());
    if (saysTheSame(text.substr(0, end), name)) return true;
    text.remove_prefix(std::min(end + betweenNames.size(), text.size()));
  }
  return false;
}

}  // namespace

void addLevelName(Names& names, const Name& added) {
  const auto same = std::ranges::find(names, added.language, &Name::language);
  if (same == names.end()) {
    names.push_back(added);
  } else if (!isSaidIn(same->text, added.text)) {
    same->text.append(betweenNames).append(added.text);
  }
}

}  // namespace tern::imports
