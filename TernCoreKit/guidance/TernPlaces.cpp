#include "TernCoreKit/guidance/TernPlaces.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

#include "TernCoreKit/guidance/Misspelling.hpp"
#include "TernCoreKit/guidance/detail/Folding.hpp"
#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5 {

namespace {

constexpr std::size_t fewestLettersToMisspell = 5;
constexpr std::size_t mostBytesOfALetter = 4;

// How well a name matches, best first.
enum Rank : std::uint8_t { exact, startOfName, startOfWord, within, misspelled, noMatch };

template <class Collection>
void appendPlaces(const Nested<Collection>& collection, std::vector<TernPlace>& places) {
  if (!collection) return;
  for (const auto& record : collection->getAll()) {
    places.push_back({record, std::string(record->name.text()), record->waypoints});
  }
}

std::vector<TernPlace> placesOf(const TernVenueData& venue) {
  std::vector<TernPlace> places;
  const MutexLock lock(venue.recordsMutex());
  appendPlaces(venue.destinations, places);
  appendPlaces(venue.amenities, places);
  return places;
}

// Between words stand spaces and ASCII signs; every other letter is part of a word.
bool isInWord(char byte) {
  const bool isDigit = byte >= '0' && byte <= '9';
  return isDigit || (byte >= 'a' && byte <= 'z') || static_cast<unsigned char>(byte) >= 0x80;
}

bool startsWord(std::string_view name, std::size_t at) {
  return at == 0 || (isInWord(name[at]) && !isInWord(name[at - 1]));
}

bool endsWord(std::string_view name, std::size_t at) {
  return at == name.size() || (isInWord(name[at - 1]) && !isInWord(name[at]));
}

// Of a name that contains the text, at that place first.
Rank rankWithin(std::string_view name, std::string_view text, std::size_t at) {
  if (at == 0) return name.size() == text.size() ? exact : startOfName;
  for (; at != name.npos; at = name.find(text, at + 1)) {
    if (startsWord(name, at)) return startOfWord;
  }
  return within;
}

// Whether some words of the name, from the place on where one starts, are the text but for a slip.
bool isMisspelledAt(std::string_view name, std::size_t start, std::string_view text) {
  const std::string_view rest = name.substr(start);
  const std::size_t shortest =
      text.size() > mostBytesOfALetter ? text.size() - mostBytesOfALetter : 1;
  const std::size_t longest = std::min(rest.size(), text.size() + mostBytesOfALetter);
  for (std::size_t end = shortest; end <= longest; ++end) {
    if (!endsWord(rest, end)) continue;
    const std::string_view words = rest.substr(0, end);
    if (isOneSlipApart(words, text) && lettersIn(words) >= fewestLettersToMisspell) return true;
  }
  return false;
}

bool isMisspelledIn(std::string_view name, std::string_view text) {
  for (std::size_t start = 0; start < name.size(); ++start) {
    if (startsWord(name, start) && isMisspelledAt(name, start, text)) return true;
  }
  return false;
}

// One slip leaves the first half of a text or the second; but for two letters that changed places
// where the halves meet, and then the whole text is there with them changed back.
std::array<std::string, 3> partsThatASlipLeaves(std::string_view text) {
  const auto letterBehind = [&](std::size_t at) {
    while (++at < text.size() && continuesUtf8(text[at])) {
    }
    return at;
  };
  std::size_t before = 0;
  std::size_t middle = letterBehind(0);
  while (letterBehind(middle) <= text.size() / 2) {
    before = middle;
    middle = letterBehind(middle);
  }
  const std::size_t behind = letterBehind(middle);
  std::string changed(text.substr(0, before));
  changed.append(text.substr(middle, behind - middle)).append(text.substr(before, middle - before));
  return {std::string(text.substr(0, middle)), std::string(text.substr(middle)),
          changed.append(text.substr(behind))};
}

// Shows each place whose folded name contains the text, and where in it first.
template <class Visit>
void eachWith(const std::string& names, const std::vector<std::uint32_t>& starts,
              std::string_view text, Visit visit) {
  std::size_t place = 0;
  for (std::size_t hit = names.find(text); hit != names.npos;) {
    while (starts[place + 1] <= hit) ++place;
    visit(place, hit - starts[place]);
    hit = names.find(text, starts[place + 1]);
  }
}

}  // namespace

TernPlaces::TernPlaces(const TernVenueData& venue) {
  std::vector<TernPlace> places = placesOf(venue);
  std::vector<std::string> names;
  names.reserve(places.size());
  for (const TernPlace& place : places) names.push_back(detail::folded(place.name));
  std::vector<std::size_t> order(places.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(order, {}, [&](std::size_t i) {
    const TernElement& element = places[i].element;
    return std::tuple(std::string_view(names[i]), element.record->id.integer(), element.kind, i);
  });
  places_.reserve(places.size());
  starts_.reserve(places.size() + 1);
  for (const std::size_t i : order) {
    places_.push_back(std::move(places[i]));
    starts_.push_back(static_cast<std::uint32_t>(text_.size()));
    text_.append(names[i]) += '\n';
  }
  starts_.push_back(static_cast<std::uint32_t>(text_.size()));
}

std::string_view TernPlaces::nameFrom(std::size_t start) const {
  return std::string_view(text_).substr(start, text_.find('\n', start) - start);
}

std::vector<std::uint8_t> TernPlaces::rank(std::string_view text) const {
  std::vector<std::uint8_t> ranks(places_.size(), noMatch);
  eachWith(text_, starts_, text, [&](std::size_t place, std::size_t at) {
    ranks[place] = rankWithin(nameFrom(starts_[place]), text, at);
  });
  if (lettersIn(text) + 1 < fewestLettersToMisspell) return ranks;
  for (const std::string& part : partsThatASlipLeaves(text)) {
    eachWith(text_, starts_, part, [&](std::size_t place, std::size_t) {
      if (ranks[place] == noMatch && isMisspelledIn(nameFrom(starts_[place]), text))
        ranks[place] = misspelled;
    });
  }
  return ranks;
}

TernPlaces::Found TernPlaces::find(std::string_view text) const {
  const std::string wanted = detail::folded(text);
  std::array<Found, noMatch + 1> byRank;
  if (wanted.empty()) {
    for (const TernPlace& place : places_) byRank[exact].push_back(&place);
    return std::move(byRank[exact]);
  }
  const std::vector<std::uint8_t> ranks = rank(wanted);
  for (std::size_t place = 0; place < places_.size(); ++place) {
    if (ranks[place] != noMatch) byRank[ranks[place]].push_back(&places_[place]);
  }
  Found found = std::move(byRank[exact]);
  for (std::size_t i = startOfName; i < noMatch; ++i) {
    found.insert(found.end(), byRank[i].begin(), byRank[i].end());
  }
  return found;
}

TernPlaces::Found TernPlaces::named(std::string_view text) const {
  const std::string wanted = detail::folded(text);
  Found found;
  if (wanted.empty()) return found;
  const auto same = std::ranges::equal_range(starts_.begin(), starts_.end() - 1, wanted, {},
                                             [&](std::size_t start) { return nameFrom(start); });
  for (auto start = same.begin(); start != same.end(); ++start) {
    found.push_back(&places_[static_cast<std::size_t>(start - starts_.begin())]);
  }
  return found;
}

const TernPlace* TernPlaces::closest(std::string_view text) const {
  const std::string wanted = detail::folded(text);
  if (wanted.empty()) return nullptr;
  if (const Found found = find(text); !found.empty()) return found.front();
  const TernPlace* best = nullptr;
  std::size_t fewest = std::numeric_limits<std::size_t>::max();
  for (std::size_t place = 0; place < places_.size(); ++place) {
    const std::string_view name = nameFrom(starts_[place]);
    const std::size_t slips = name.empty() ? fewest : slipsBetween(name, wanted, fewest);
    if (slips < fewest) {
      fewest = slips;
      best = &places_[place];
    }
  }
  return best;
}

}  // namespace tern
