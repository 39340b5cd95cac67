#include "tools/tern/CommandWords.hpp"

#include <algorithm>

namespace tern::command {

namespace {

// Options with a value that may stand before the command.
constexpr std::array<std::string_view, 11> leadingOptions{
    "--data",          "--venue", "--building", "--host",    "--customer", "--client-id",
    "--client-secret", "--cache", "--locale",   "--timeout", "--ca-file"};

bool isOption(std::string_view word) { return word.size() > 1 && word.front() == '-'; }

bool isBareOption(std::string_view word) {
  return word.starts_with("--") && word.find('=') == std::string_view::npos;
}

bool isNegativeNumber(std::string_view word) {
  return isOption(word) && (word[1] == '.' || (word[1] >= '0' && word[1] <= '9'));
}

}  // namespace

const CommandWord* findCommand(std::string_view name) {
  const auto* found = std::ranges::find(commandWords, name, &CommandWord::name);
  return found != commandWords.end() ? found : nullptr;
}

std::string namesOfCommands() {
  std::string names;
  for (const CommandWord& word : commandWords) {
    names.append(names.empty() ? "" : ", ").append(word.name);
  }
  return names;
}

std::optional<std::size_t> placeOfCommand(std::span<const std::string> words) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (std::ranges::find(leadingOptions, words[i]) != leadingOptions.end()) {
      ++i;
    } else if (!isOption(words[i])) {
      return i;
    }
  }
  return std::nullopt;
}

std::vector<std::string> withNegativesJoined(std::span<const std::string> words) {
  std::vector<std::string> joined;
  for (const std::string& word : words) {
    if (!joined.empty() && isBareOption(joined.back()) && isNegativeNumber(word)) {
      joined.back() += "=" + word;
    } else {
      joined.push_back(word);
    }
  }
  return joined;
}

}  // namespace tern::command
