#include "tools/import/osm/OsmLevels.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace tern::imports {

namespace {

// Half decks are halves; nothing lies a hundredth of a level up.
constexpr double finest = 100;

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::optional<double> levelOf(std::string_view text) {
  text = trimmed(text);
  const bool isBelow = text.starts_with('-');
  if (isBelow || text.starts_with('+')) text.remove_prefix(1);
  // What from_chars reads beside it: signs, exponents, infinity.
  if (text.empty() || text.find_first_not_of("0123456789.") != std::string_view::npos) {
    return std::nullopt;
  }
  // Levels are short; no reader of doubles of its own is needed.
  int whole = 0;
  const char* const end = text.data() + text.size();
  auto read = std::from_chars(text.data(), end, whole);
  if (read.ec != std::errc() || whole > mostLevel) return std::nullopt;
  double level = whole;
  if (read.ptr != end) {
    if (*read.ptr != '.') return std::nullopt;
    double part = 0.1;
    for (const char* digit = read.ptr + 1; digit != end; ++digit, part /= 10) {
      if (*digit == '.') return std::nullopt;
      level += (*digit - '0') * part;
    }
  }
  level = std::round(level * finest) / finest;
  // Never a negative zero.
  return isBelow ? 0 - level : level;
}

// "0-3", "-3--1": the line between is the first one behind a digit.
bool addRange(std::string_view text, std::vector<double>& levels) {
  const std::size_t digit = text.find_first_of("0123456789");
  if (digit == std::string_view::npos) return false;
  const std::size_t line = text.find('-', digit);
  if (line == std::string_view::npos) return false;
  const auto low = levelOf(text.substr(0, line));
  const auto high = levelOf(text.substr(line + 1));
  if (!low || !high || *low > *high) return false;
  for (double level = *low; level <= *high; ++level) levels.push_back(level);
  return true;
}

void addLevels(std::string_view text, OsmLevels& found) {
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(";,");
    const std::string_view item = trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (item.empty()) continue;
    if (const auto level = levelOf(item)) {
      found.levels.push_back(*level);
    } else if (!addRange(item, found.levels)) {
      found.unread = std::string(item);
    }
    if (found.levels.size() > mostLevelsOfOne * 4) break;
  }
}

OsmLevels inOrder(OsmLevels found) {
  std::ranges::sort(found.levels);
  const auto repeated = std::ranges::unique(found.levels);
  found.levels.erase(repeated.begin(), repeated.end());
  if (found.levels.size() > mostLevelsOfOne) {
    found.levels.resize(mostLevelsOfOne);
    found.unread = "more than " + std::to_string(mostLevelsOfOne) + " levels";
  }
  return found;
}

}  // namespace

OsmLevels osmLevels(std::string_view text) {
  OsmLevels found;
  addLevels(text, found);
  return inOrder(std::move(found));
}

OsmLevels osmLevels(const OsmTags& tags) {
  OsmLevels found;
  addLevels(tags["level"], found);
  addLevels(tags["repeat_on"], found);
  return inOrder(std::move(found));
}

}  // namespace tern::imports
