#include "tools/tern/Option.hpp"

#include <algorithm>
#include <limits>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

constexpr std::int64_t leastWhole = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t mostWhole = std::numeric_limits<std::int64_t>::max();

// Whether it is a whole number of which 64 bits do not hold as many digits.
bool isTooLong(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return text.size() > 18 && text.find_first_not_of("0123456789") == text.npos;
}

std::string outOfRange(const std::string& number, std::int64_t least, std::int64_t most) {
  return number + " is out of range, " + std::to_string(least) + " to " + std::to_string(most);
}

}  // namespace

std::string inQuotes(std::string_view text) { return "\"" + shortened(text) + "\""; }

Reading readText(const std::string& text) { return Value(text); }

Reading readWhole(const std::string& text) {
  if (const auto whole = parseWhole(text)) return Value(*whole);
  if (isTooLong(text)) return outOfRange(inQuotes(text), leastWhole, mostWhole);
  return inQuotes(text) + " must be a whole number, such as 12";
}

Reading readWholeWithin(std::int64_t least, std::int64_t most, const std::string& text) {
  Reading reading = readWhole(text);
  const auto* value = std::get_if<Value>(&reading);
  if (value == nullptr || (value->integer() >= least && value->integer() <= most)) return reading;
  return outOfRange(value->printed(), least, most);
}

Reading readNumber(const std::string& text) {
  if (const auto number = parseNumber(text)) return Value(*number);
  return inQuotes(text) + " must be a finite number, such as 0.5";
}

Reading readWholes(const std::string& text) {
  const auto wholes = parseWholes(text);
  if (!wholes) return inQuotes(text) + " must be whole numbers, such as 7,9,30";
  Value list = Value::list();
  for (const std::int64_t whole : *wholes) list.append(whole);
  return list;
}

Reading readPlace(const std::string& text) {
  const auto whole = parseWhole(text);
  return whole && std::to_string(*whole) == text ? Value(*whole) : Value(text);
}

Reading readPlaces(const std::string& text) {
  Value list = Value::list();
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    if (end == start) return inQuotes(text) + " must be ids or names, such as 7,9,Coral Books";
    list.append(std::get<Value>(readPlace(text.substr(start, end - start))));
    start = end + 1;
  }
  return list;
}

Reading readPoint(const std::string& text) {
  if (const auto point = parsePoint(text)) return Value::list({point->x, point->y});
  return inQuotes(text) + " must be two numbers with a comma between them, such as 120.5,88";
}

Reading readVenueIds(const std::string& text) {
  auto ids = parseWholes(text);
  if (!ids) return inQuotes(text) + " must be a whole number, such as 12, or several: 1,2";
  std::ranges::sort(*ids);
  if (std::ranges::adjacent_find(*ids) == ids->end()) return readWholes(text);
  return inQuotes(text) + " names a venue twice";
}

Reading readWordOf(std::string_view words, const std::string& text) {
  std::string list;
  for (std::size_t start = 0; start < words.size();) {
    const std::size_t end = std::min(words.find(' ', start), words.size());
    const std::string_view word = words.substr(start, end - start);
    if (word == text) return Value(text);
    list.append(start == 0 ? "" : end == words.size() ? " or " : ", ").append(word);
    start = end + 1;
  }
  return inQuotes(text) + " must be " + list;
}

Reading readUrl(const std::string& text) {
  if (text.starts_with("http://") || text.starts_with("https://")) {
    return Value(text.substr(0, text.find_last_not_of('/') + 1));
  }
  return inQuotes(text) + " must begin with http:// or https://";
}

Reading readPictureFile(const std::string& text) {
  for (const char* end : {".svg", ".html", ".geojson"}) {
    if (text.ends_with(end)) return Value(text);
  }
  return inQuotes(text) + " must end in .svg, .html or .geojson";
}

}  // namespace tern::command
