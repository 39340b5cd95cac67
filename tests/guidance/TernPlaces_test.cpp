#include "TernCoreKit/guidance/TernPlaces.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "TernCoreKit/guidance/Misspelling.hpp"
#include "TernCoreKit/guidance/detail/Folding.hpp"
#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string>;

// A batch of records with the ids 1, 2, ... in turn.
template <class Collection>
std::shared_ptr<Collection> batchOf(const Names& names) {
  Value items = Value::list();
  std::int64_t id = 0;
  for (const std::string& name : names) items.append(Value::map({{"id", ++id}, {"name", name}}));
  auto collection = std::make_shared<Collection>();
  collection->createBatch(Value::map({{"items", items}}));
  return collection;
}

TernPlaces placesOf(const Names& destinations, const Names& amenities = {}) {
  TernVenueData venue;
  venue.destinations = batchOf<TernDestinationCollection>(destinations);
  venue.amenities = batchOf<TernAmenityCollection>(amenities);
  return TernPlaces(venue);
}

Names namesOf(const TernPlaces::Found& found) {
  Names names;
  for (const TernPlace* place : found) names.push_back(place->name);
  return names;
}

std::string labelOf(const TernPlace& place) {
  const bool isDestination = place.element.kind == TernElement::Kind::destination;
  return (isDestination ? "destination " : "amenity ") + place.element.record->id.printed();
}

std::vector<std::string> labelsOf(const TernPlaces::Found& found) {
  std::vector<std::string> labels;
  for (const TernPlace* place : found) labels.push_back(labelOf(*place));
  return labels;
}

TEST(TernPlaces, emptyVenueHasNone) {
  const TernPlaces places{TernVenueData()};
  EXPECT_THAT(places.all(), IsEmpty());
  EXPECT_THAT(places.find(""), IsEmpty());
  EXPECT_THAT(places.find("coffee"), IsEmpty());
  EXPECT_THAT(places.named("coffee"), IsEmpty());
  EXPECT_EQ(places.closest("coffee"), nullptr);
}

TEST(TernPlaces, allAreInTheOrderOfNameThenIdThenKind) {
  const TernPlaces places = placesOf({"Zoo", "écho", "Echo"}, {"Apple", "echo", "x"});
  std::vector<std::string> labels;
  for (const TernPlace& place : places.all()) labels.push_back(labelOf(place));
  EXPECT_THAT(labels, ElementsAre("amenity 1", "destination 2", "amenity 2", "destination 3",
                                  "amenity 3", "destination 1"));
  EXPECT_EQ(labelsOf(places.find("")), labels);
  EXPECT_EQ(labelsOf(places.find(" \t")), labels);
}

TEST(TernPlaces, recordsWithoutANameAreThereAndAreNotFound) {
  const TernPlaces places = placesOf({"", "Shop"});
  EXPECT_EQ(places.all().size(), 2U);
  EXPECT_THAT(namesOf(places.find("s")), ElementsAre("Shop"));
  EXPECT_THAT(places.named(""), IsEmpty());
  EXPECT_EQ(placesOf({"", ""}).closest("shop"), nullptr);
  EXPECT_EQ(places.closest("something else")->name, "Shop");
}

TEST(TernPlaces, bestMatchComesFirst) {
  const TernPlaces places = placesOf(
      {"The Coralbooks", "Uncoral", "Coral", "New Coral", "Corall", "Coral Books", "Corsl Bay"});
  EXPECT_THAT(namesOf(places.find("CORAL")),
              ElementsAre("Coral", "Coral Books", "Corall", "New Coral", "The Coralbooks",
                          "Uncoral", "Corsl Bay"));
}

TEST(TernPlaces, aWordStartsBehindASign) {
  const TernPlaces places = placesOf({"H&Mode", "Rock'n'Roll", "A-Mart", "Smart"});
  EXPECT_THAT(namesOf(places.find("m")), ElementsAre("A-Mart", "H&Mode", "Smart"));
  EXPECT_THAT(namesOf(places.find("ro")), ElementsAre("Rock'n'Roll"));
}

TEST(TernPlaces, oneSlipInFiveLettersIsForgiven) {
  const TernPlaces places = placesOf({"Shoes", "Café", "Foxglove Cameras"});
  for (const char* typed : {"shos", "shoees", "shose", "shoez", "SHÖSE"}) {
    EXPECT_THAT(namesOf(places.find(typed)), ElementsAre("Shoes")) << typed;
  }
  for (const char* typed : {"foxglve", "camreas", "Foxglove Camera5", "foxlgove cameras"}) {
    EXPECT_THAT(namesOf(places.find(typed)), ElementsAre("Foxglove Cameras")) << typed;
  }
  EXPECT_THAT(places.find("cefé"), IsEmpty());
  EXPECT_THAT(places.find("shso"), IsEmpty());
  EXPECT_THAT(places.find("foxgolve camreas"), IsEmpty());
}

TEST(TernPlaces, oneSlipIsForgivenInEveryScript) {
  const TernPlaces places = placesOf(
      {"Библиотека", "Παντοπωλείο", "ガラスショップ", "강남", "مكتبة", "Phở Hà Nội", "Kırtasiye"});
  const auto expectFound = [&](const char* typed, const char* name) {
    EXPECT_THAT(namesOf(places.find(typed)), ElementsAre(name)) << typed;
  };
  expectFound("библоитека", "Библиотека");
  expectFound("ΠΑΝΤΟΠΟΛΕΙΟ", "Παντοπωλείο");
  expectFound("ガラスショプ", "ガラスショップ");
  expectFound("강낭", "강남");
  expectFound("مكتة", "مكتبة");
  expectFound("pho ha noj", "Phở Hà Nội");
  expectFound("kirtaisye", "Kırtasiye");
}

TEST(TernPlaces, namedAreThoseOfTheWholeName) {
  const TernPlaces places =
      placesOf({"Coral Books", "coral books", "Coral", "Coral Books 2"}, {"CORAL  BOOKS"});
  EXPECT_THAT(labelsOf(places.named("Córal Books ")),
              ElementsAre("destination 1", "amenity 1", "destination 2"));
  EXPECT_THAT(places.named("Cora"), IsEmpty());
}

TEST(TernPlaces, closestIsTheFirstFoundElseTheOneWithFewestSlips) {
  const TernPlaces places = placesOf({"Coral Books", "Juniper Bakery", "Toy Land"});
  EXPECT_EQ(places.closest("books")->name, "Coral Books");
  EXPECT_EQ(places.closest("Juiper Bkery")->name, "Juniper Bakery");
  EXPECT_EQ(places.closest("tpyland")->name, "Toy Land");
  EXPECT_EQ(places.closest("Corl Boks")->name, "Coral Books");
  EXPECT_EQ(places.closest(" "), nullptr);
}

TEST(TernPlaces, waypointsAreThoseOfTheRecordWhenItIsMade) {
  TernVenueData venue;
  auto destinations = batchOf<TernDestinationCollection>({"Shop"});
  venue.destinations = destinations;
  const auto first = test::made<TernWaypoint>(R"({"id": 5})");
  destinations->getById(1)->addWaypoints({first});
  const TernPlaces places(venue);
  destinations->getById(1)->addWaypoints({});
  EXPECT_THAT(places.all().front().waypoints, ElementsAre(first));
}

// What a place is found by, word for word of the rules; 9 when it is not.
int literalRank(const std::string& name, const std::string& text) {
  const auto isWordByte = [](char byte) {
    return static_cast<unsigned char>(byte) >= 0x80 ||
           std::isalnum(static_cast<unsigned char>(byte));
  };
  std::vector<std::size_t> starts;
  std::vector<std::size_t> ends{name.size()};
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (i == 0 || (isWordByte(name[i]) && !isWordByte(name[i - 1]))) starts.push_back(i);
    if (i > 0 && isWordByte(name[i - 1]) && !isWordByte(name[i])) ends.push_back(i);
  }
  if (name == text) return 0;
  if (name.starts_with(text)) return 1;
  for (const std::size_t start : starts) {
    if (name.substr(start).starts_with(text)) return 2;
  }
  if (name.find(text) != name.npos) return 3;
  for (const std::size_t start : starts) {
    for (const std::size_t end : ends) {
      if (end <= start) continue;
      const std::string words = name.substr(start, end - start);
      if (lettersIn(words) >= 5 && slipsBetween(words, text, 2) < 2) return 4;
    }
  }
  return 9;
}

std::string someName() {
  static const std::vector<std::string> pieces{"coral",  "cor",    "al",    "Café", " ", " ", "-",
                                               "ガラス", "ラガス", "books", "b",    "o", "é", "強"};
  std::string name;
  for (int left = *rc::gen::inRange(1, 6); left > 0; --left) name += *rc::gen::elementOf(pieces);
  return name;
}

RC_GTEST_PROP(TernPlacesProperties, findsAndRanksAsTheRulesSay, ()) {
  Names names;
  for (int left = *rc::gen::inRange(0, 12); left > 0; --left) names.push_back(someName());
  const std::string text = someName();
  const std::string wanted = detail::folded(text);
  RC_PRE(!wanted.empty());
  std::vector<std::tuple<int, std::string, std::size_t>> expected;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = detail::folded(names[i]);
    if (literalRank(name, wanted) < 9)
      expected.emplace_back(literalRank(name, wanted), name, i + 1);
  }
  std::ranges::sort(expected);
  std::vector<std::string> labels;
  for (const auto& [rank, name, id] : expected)
    labels.push_back("destination " + std::to_string(id));
  RC_ASSERT(labelsOf(placesOf(names).find(text)) == labels);
}

RC_GTEST_PROP(TernPlacesProperties, oneRandomSlipStillFinds, ()) {
  static const std::vector<std::string> alphabet{"a",  "b", "c",  "d", "é",
                                                 "ガ", "я", "ス", "ñ", "q"};
  std::vector<std::string> name;
  for (int left = *rc::gen::inRange(5, 12); left > 0; --left)
    name.push_back(*rc::gen::elementOf(alphabet));
  const auto text = [](const std::vector<std::string>& letters) {
    std::string joined;
    for (const std::string& letter : letters) joined += letter;
    return joined;
  };
  std::vector<std::string> typed = name;
  const auto at = *rc::gen::inRange<std::ptrdiff_t>(0, std::ssize(name) - 1);
  switch (*rc::gen::inRange(0, 4)) {
    case 0:
      typed.erase(typed.begin() + at);
      break;
    case 1:
      typed.insert(typed.begin() + at, *rc::gen::elementOf(alphabet));
      break;
    case 2:
      typed[static_cast<std::size_t>(at)] = *rc::gen::elementOf(alphabet);
      break;
    default:
      std::swap(*(typed.begin() + at), *(typed.begin() + at + 1));
  }
  RC_ASSERT(namesOf(placesOf({"Nothing", text(name)}).find(text(typed))) == Names{text(name)});
}

RC_GTEST_PROP(TernPlacesProperties, equalAfterFoldingIsNamed, ()) {
  const std::string name = someName();
  const std::string other = someName();
  const TernPlaces places = placesOf({name});
  const bool isNamed = !places.named(other).empty();
  const bool isSame = detail::folded(name) == detail::folded(other);
  RC_ASSERT(isNamed == (isSame && !detail::folded(other).empty()));
}

}  // namespace
}  // namespace tern
