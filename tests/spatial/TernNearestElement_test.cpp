#include "TernCoreKit/spatial/TernNearestElement.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/Mutations.hpp"

namespace tern::test {
namespace {

using testing::IsEmpty;

constexpr auto wrongKind = "element must be TernDestination or TernAmenity or TernPathType";
constexpr auto noTree = "k-d tree is not initialzed yet";
constexpr auto noFloor = "current floor or map not found";
constexpr auto noConnector = "No path type found to reach to the searched element";

// Three floors: a lift (type 2) from B over E to H, stairs (type 3) at C and F; destination 7 at A
// and G, 8 at I only, 9 nowhere; amenity 4 at D.
const Drawing threeStoreys{
    .floors = {{.lines = {"A  B     C"}}, {.lines = {"D  E     F"}}, {.lines = {"G  H  I"}}},
    .paths = {"B-E Lift", "E-B Lift", "E-H Lift", "H-E Lift", "C-F Stairs"},
    .pathTypes = {{.name = "Lift"}, {.name = "Stairs", .accessibility = 50}},
    .destinations = {{.id = 7, .at = "A G"}, {.id = 8, .at = "I"}, {.id = 9}},
    .amenities = {{.id = 4, .at = "D"}},
    .connectors = {{.id = 2, .at = "B E H"}, {.id = 3, .at = "C F"}}};

class TernNearestElementTest : public testing::Test {
 protected:
  explicit TernNearestElementTest(const Drawing& drawing = threeStoreys)
      : venue_(assembleVenue(drawing)) {
    nearest_->initializeKDTree(venue_);
  }

  std::shared_ptr<TernMap> map(std::int64_t id) const { return venue_->maps->getById(id); }
  std::shared_ptr<TernWaypoint> at(char letter) const { return waypointAt(*venue_, letter); }
  TernElement destination(std::int64_t id) const { return venue_->destinations->getById(id); }
  TernElement amenity(std::int64_t id) const { return venue_->amenities->getById(id); }
  TernElement pathType(std::int64_t id) const { return venue_->pathTypes->getById(id); }

  std::string taken() const { return lettersOf(nearest_->arrayOfPathTypeTaken()); }

  // The letter found and the connectors, or what went wrong: "I by BEEH".
  std::string search(const TernElement& element, TernCoordinate from, std::int64_t mapId) {
    std::string answer;
    int calls = 0;
    nearest_->searchNearestElement(element, from, map(mapId),
                                   [&](auto waypoint, auto found, auto error) {
                                     ++calls;
                                     EXPECT_EQ(waypoint != nullptr, found.has_value());
                                     EXPECT_EQ(waypoint == nullptr, error.has_value());
                                     EXPECT_TRUE(!found || found == element);
                                     answer = error ? error->message : lettersOf({waypoint});
                                   });
    EXPECT_EQ(calls, 1);
    return taken().empty() ? answer : answer + " by " + taken();
  }
  std::string reach(char from, std::int64_t toMap, const TernNearestElement::Elements& elements,
                    std::int64_t level = 1) {
    const auto found = nearest_->getNearestElementFrom(at(from), toMap, elements, level);
    if (!found) return "none";
    return lettersOf({found->waypoint}) + " by " + taken();
  }
  std::string errorText() const { return nearest_->error() ? nearest_->error()->message : ""; }

  CapturedLog log_;
  std::shared_ptr<TernActiveVenue> venue_;
  std::shared_ptr<TernNearestElement> nearest_ = TernNearestElement::init();
};

TEST_F(TernNearestElementTest, isEmptyAtFirst) {
  const auto fresh = TernNearestElement::init();
  EXPECT_TRUE(fresh->isUpperFloorValid());
  EXPECT_TRUE(fresh->isLowerFloorValid());
  EXPECT_THAT(fresh->treesDestination(), IsEmpty());
  EXPECT_FALSE(fresh->tree() || fresh->userNode() || fresh->currentFloorLevel() || fresh->error());
}

TEST_F(TernNearestElementTest, keepsATreeOfEachKindForEachMap) {
  EXPECT_EQ(nearest_->treesDestination().at("1").count(), 1U);
  EXPECT_EQ(nearest_->treesDestination().at("2").count(), 0U);
  EXPECT_EQ(nearest_->treesDestination().at("3").count(), 2U);
  EXPECT_EQ(nearest_->treesAmenity().at("2").elements().front().waypoint, at('D'));
  EXPECT_EQ(nearest_->treesPathType().at("1").count(), 2U);
}

TEST_F(TernNearestElementTest, theTargetedSearchKnowsTwoLevelsOnly) {
  for (const auto& [asked, used] : {std::pair{-3, 0}, {0, 0}, {1, 100}, {2, 100}, {100, 100}}) {
    reach('A', 3, {destination(7)}, asked);
    EXPECT_EQ(nearest_->accessible(), used) << asked;
  }
  search(destination(7), {0, 0}, 1);
  EXPECT_EQ(nearest_->accessible(), 100);
}

TEST_F(TernNearestElementTest, findsOnTheStartsFloorWithoutAConnector) {
  EXPECT_EQ(search(destination(7), {100, 0}, 1), "A");
  EXPECT_EQ(search(pathType(2), {100, 0}, 1), "B");
  EXPECT_EQ(search(destination(8), {0, 0}, 3), "I");
}

TEST_F(TernNearestElementTest, walksToTheNearestFloorThatHasTheElement) {
  EXPECT_EQ(search(amenity(4), {0, 0}, 1), "D by BE");
  EXPECT_EQ(search(amenity(4), {100, 0}, 1), "D by CF");
  EXPECT_EQ(search(amenity(4), {0, 0}, 3), "D by HE");
  EXPECT_EQ(search(destination(7), {0, 0}, 2), "G by EH");
}

TEST_F(TernNearestElementTest, goesFloorByFloorWhereNoConnectorLeadsAllTheWay) {
  EXPECT_EQ(search(destination(8), {0, 0}, 1), "I by BEEH");
  EXPECT_EQ(reach('G', 1, {destination(7)}), "A by HEEB");
}

TEST_F(TernNearestElementTest, anUpperFloorThatIsNotThereEndsTheWalkUpwardsOnly) {
  EXPECT_EQ(search(amenity(4), {0, 0}, 3), "D by HE");
  EXPECT_FALSE(nearest_->isUpperFloorValid());
  EXPECT_TRUE(nearest_->isLowerFloorValid());
}

TEST_F(TernNearestElementTest, tellsWhatIsNowhere) {
  EXPECT_EQ(search(destination(9), {0, 0}, 2), "element not found");
  EXPECT_FALSE(nearest_->isUpperFloorValid());
  EXPECT_FALSE(nearest_->isLowerFloorValid());
}

TEST_F(TernNearestElementTest, totalDistanceAddsTheStraightLinesOnEachFloor) {
  const auto found = nearest_->getNearestElementFrom(at('A'), 2, {amenity(4)}, 1);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->waypoint, at('D'));
  EXPECT_EQ(taken(), "BE");
  // A to B, nothing for the lift, E to D.
  EXPECT_EQ(found->totalDistance, 30 + 30);
}

TEST_F(TernNearestElementTest, aLegWithoutTwoCoordinatesCountsNothing) {
  at('D')->coordinates = Value::list({0, 0, 0});
  EXPECT_EQ(nearest_->getNearestElementFrom(at('A'), 2, {amenity(4)}, 1)->totalDistance, 30);
}

TEST_F(TernNearestElementTest, takesOnlyConnectorsOfItsLevel) {
  EXPECT_EQ(reach('C', 2, {amenity(4)}, 1), "D by CF");
  EXPECT_EQ(reach('C', 2, {amenity(4)}, 0), "D by BE");
}

TEST_F(TernNearestElementTest, theKindOfTheFirstElementChoosesWhatIsSearched) {
  EXPECT_EQ(reach('A', 3, {destination(8), amenity(4)}), "I by BEEH");
  EXPECT_EQ(reach('A', 3, {amenity(4), destination(8)}), "none");
}

TEST_F(TernNearestElementTest, theStartsOwnMapIsSearchedAtOnce) {
  EXPECT_EQ(reach('C', 1, {destination(7)}), "A by ");
  EXPECT_EQ(nearest_->getNearestElementFrom(at('C'), 1, {destination(7)}, 1)->totalDistance, 90);
}

TEST_F(TernNearestElementTest, aFloorWithoutTheElementGivesNoneWithoutAnError) {
  EXPECT_EQ(reach('A', 2, {destination(7)}), "none");
  EXPECT_FALSE(nearest_->error());
}

TEST_F(TernNearestElementTest, whatIsNoElementIsRefused) {
  for (const auto& elements : {TernNearestElement::Elements{},
                               {std::shared_ptr<TernBaseModel>(at('A'))},
                               {std::shared_ptr<TernDestination>()},
                               {destination(7), std::shared_ptr<TernAmenity>()}}) {
    EXPECT_EQ(reach('A', 3, elements), "none");
    EXPECT_EQ(errorText(), wrongKind);
    EXPECT_EQ(nearest_->error()->code, "TN006");
    nearest_->setError(std::nullopt);
  }
  EXPECT_EQ(search(std::shared_ptr<TernPathType>(), {0, 0}, 1), wrongKind);
}

TEST_F(TernNearestElementTest, anUnknownStartIsRefused) {
  EXPECT_EQ(search(destination(7), {0, 0}, 99), noFloor);
  nearest_->getNearestElementFrom(nullptr, 3, {destination(7)}, 1);
  EXPECT_EQ(errorText(), noFloor);
  at('A')->mapId = 99;
  nearest_->setError(std::nullopt);
  EXPECT_EQ(reach('A', 3, {destination(7)}), "none");
  EXPECT_EQ(errorText(), noFloor);
}

TEST_F(TernNearestElementTest, aStartWithoutALevelIsAnErrorOfTheOpenSearchOnly) {
  venue_->buildings->getFloorByMap(map(1))->level = Value();
  EXPECT_EQ(reach('A', 3, {destination(7)}), "none");
  EXPECT_FALSE(nearest_->error());
  EXPECT_EQ(search(destination(7), {0, 0}, 1), noFloor);
}

TEST_F(TernNearestElementTest, anUnknownTargetIsTriedByEveryConnector) {
  EXPECT_EQ(reach('A', 99, {destination(7)}), "none");
  EXPECT_EQ(errorText(), noConnector);
  EXPECT_EQ(nearest_->error()->code, "TN007");
  EXPECT_EQ(taken(), "");
}

TEST_F(TernNearestElementTest, resetForgetsTheVenueAndKeepsTheTrees) {
  EXPECT_EQ(search(amenity(4), {0, 0}, 3), "D by HE");
  nearest_->reset();
  EXPECT_TRUE(nearest_->isUpperFloorValid());
  EXPECT_EQ(nearest_->treesAmenity().at("2").count(), 1U);
  EXPECT_EQ(search(destination(7), {0, 0}, 1), noTree);
  EXPECT_EQ(nearest_->error()->code, "TN007");
}

TEST_F(TernNearestElementTest, holdsItsVenueWeakly) {
  const TernElement element = destination(7);
  const auto start = map(1);
  venue_.reset();
  EXPECT_EQ(nearest_->activeVenue(), nullptr);
  nearest_->searchNearestElement(element, {0, 0}, start, {});
  EXPECT_EQ(errorText(), noTree);
}

TEST_F(TernNearestElementTest, aMapAddedLaterHasNoTreeYet) {
  TernNearestElement other;
  const auto empty = std::make_shared<TernVenueData>();
  other.initializeKDTree(empty);
  empty->buildings = venue_->buildings.record();
  empty->maps = venue_->maps;
  other.searchNearestElement(destination(7), {0, 0}, map(1), {});
  EXPECT_EQ(other.error()->message, noTree);
}

TEST_F(TernNearestElementTest, aFailureStaysThroughASearchThatSucceeds) {
  search(destination(7), {0, 0}, 99);
  EXPECT_EQ(search(destination(7), {0, 0}, 1), "A");
  EXPECT_EQ(errorText(), noFloor);
}

struct OnlyAt : TernNearestElementDelegate {
  explicit OnlyAt(std::vector<std::int64_t> allowed) : ids(std::move(allowed)) {}
  bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>& waypoint) override {
    return std::ranges::count(ids, waypoint->id.integer()) > 0;
  }
  std::vector<std::int64_t> ids;
};

TEST_F(TernNearestElementTest, aDelegateThatRefusesEverythingEndsEverySearchWithNone) {
  nearest_->delegate = std::make_shared<OnlyAt>(std::vector<std::int64_t>{});
  EXPECT_EQ(search(destination(7), {0, 0}, 1), "element not found");
  EXPECT_EQ(search(amenity(4), {0, 0}, 1), "element not found");
  EXPECT_EQ(reach('A', 3, {destination(7)}), "none");
}

TEST_F(TernNearestElementTest, saysWhereTheLastSearchStartedAndWhatItLookedFor) {
  search(destination(7), {3, 4}, 1);
  ASSERT_TRUE(nearest_->userNode());
  EXPECT_EQ(nearest_->userNode()->x, 3);
  EXPECT_EQ(nearest_->userNode()->y, 4);
  EXPECT_EQ(nearest_->userNode()->z, 1);
  EXPECT_EQ(nearest_->userNode()->elements, (std::vector<TernElement>{destination(7)}));
  nearest_->getNearestElementFrom(at('A'), 2, {amenity(4), amenity(4)}, 1);
  EXPECT_EQ(nearest_->userNode()->elements.size(), 2U);
}

TEST_F(TernNearestElementTest, aDelegateRestrictsWhatMayBeFound) {
  nearest_->delegate = std::make_shared<OnlyAt>(std::vector<std::int64_t>{idOf('G')});
  EXPECT_EQ(search(destination(7), {0, 0}, 1), "G by BEEH");
}

TEST_F(TernNearestElementTest, anotherSharesTheTreesAndNothingElse) {
  nearest_->delegate = std::make_shared<OnlyAt>(std::vector<std::int64_t>{});
  EXPECT_EQ(search(destination(7), {0, 0}, 99), noFloor);
  const auto other = nearest_->another();
  EXPECT_EQ(&other->treesAmenity(), &nearest_->treesAmenity());
  EXPECT_EQ(other->activeVenue(), venue_);
  EXPECT_EQ(other->delegate, nullptr);
  EXPECT_FALSE(other->error() || other->userNode());
  const auto found = other->getNearestElementFrom(at('A'), 2, {amenity(4)}, 1);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->waypoint, at('D'));
  EXPECT_EQ(lettersOf(other->arrayOfPathTypeTaken()), "BE");
  EXPECT_EQ(taken(), "");
  EXPECT_EQ(errorText(), noFloor);
}

TEST_F(TernNearestElementTest, aFloorAddedLaterIsReachedButHasNothingOnIt) {
  Drawing cellar{.floors = {{.lines = {"A"}}}};
  Value building = drawBuildingDocument(cellar);
  Value& floor = building.find("floors")->find("items")->items()[0];
  floor.set("id", 50);
  floor.find("map")->set("id", 50);
  building.set("id", 5);
  addBuilding(*venue_, 5, std::move(building));
  ASSERT_NE(venue_->buildings->getFloorByMap(map(50)), nullptr);
  EXPECT_EQ(search(destination(7), {0, 0}, 50), noTree);
  EXPECT_EQ(reach('A', 50, {destination(7)}), "none");
}

// What one thread asks, and what it is told, in an order of its own.
std::vector<std::string> askAll(TernNearestElement& nearest, const TernActiveVenue& venue,
                                std::size_t first) {
  const auto waypoints = venue.maps->getAllWaypoints();
  const auto maps = venue.maps->getAll();
  std::vector<TernElement> elements;
  for (const auto& each : venue.destinations->getAll()) elements.emplace_back(each);
  for (const auto& each : venue.amenities->getAll()) elements.emplace_back(each);
  const std::size_t count = waypoints.size() * elements.size();
  std::vector<std::string> answers(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t question = (i + first) % count;
    const auto& from = waypoints[question % waypoints.size()];
    const auto& element = elements[question / waypoints.size()];
    std::string& answer = answers[question];
    const auto note = [&](const std::shared_ptr<TernWaypoint>& waypoint) {
      answer += waypoint != nullptr ? std::to_string(waypoint->id.integer()) + " " : "none ";
    };
    for (const auto& map : maps) {
      const auto found = nearest.getNearestElementFrom(from, map->id.integer(), {element}, 1);
      note(found ? found->waypoint : nullptr);
      if (found) answer += std::to_string(found->totalDistance) + " ";
      nearest.searchNearestElement(
          element, {from->coordinate(0).number(), from->coordinate(1).number()}, map,
          [&](const auto& waypoint, const auto&, const auto&) { note(waypoint); });
    }
  }
  return answers;
}

template <class SearcherOf>
void expectConcurrentAnswersAsSerialOnes(const std::shared_ptr<TernActiveVenue>& venue,
                                         TernNearestElement& nearest, SearcherOf searcherOf) {
  const auto expected = askAll(nearest, *venue, 0);
  constexpr std::size_t threads = 4;
  std::vector<std::vector<std::string>> answers(threads);
  std::vector<std::thread> asking;
  for (std::size_t i = 0; i < threads; ++i) {
    asking.emplace_back([&, i] {
      const auto searcher = searcherOf();
      for (int round = 0; round < 5; ++round) answers[i] = askAll(*searcher, *venue, i * 7);
    });
  }
  for (std::thread& thread : asking) thread.join();
  for (const auto& each : answers) EXPECT_EQ(each, expected);
}

TEST_F(TernNearestElementTest, severalObjectsOverTheSameTreesAnswerConcurrently) {
  expectConcurrentAnswersAsSerialOnes(venue_, *nearest_, [&] { return nearest_->another(); });
}

TEST_F(TernNearestElementTest, oneObjectAnswersConcurrently) {
  expectConcurrentAnswersAsSerialOnes(venue_, *nearest_, [&] { return nearest_; });
}

// The building's floors repeat the ids of those that are there, which the trees do not notice.
TEST_F(TernNearestElementTest, aBuildingMayComeConcurrently) {
  const auto expected = reach('A', 3, {destination(8)});
  const auto start = at('A');
  const TernElement wanted = destination(8);
  std::thread loading([&] {
    for (int i = 0; i < 50; ++i) {
      Value building = drawBuildingDocument(threeStoreys);
      building.set("id", 10 + i);
      const MutexLock lock(venue_->recordsMutex());
      addBuilding(*venue_, 10 + i, std::move(building));
    }
  });
  for (int i = 0; i < 200; ++i) {
    const auto found = nearest_->getNearestElementFrom(start, 3, {wanted}, 1);
    ASSERT_TRUE(found);
    EXPECT_EQ(lettersOf({found->waypoint}) + " by " + taken(), expected);
    nearest_->getNearestElementFrom(start, 77, {wanted}, 1);
    EXPECT_EQ(nearest_->error()->message, noConnector);
  }
  loading.join();
}

TEST_F(TernNearestElementTest, coordinatesThatAreNoNumbersEndInAnAnswer) {
  for (const double odd :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e308}) {
    const std::string found = search(amenity(4), {odd, -odd}, 1);
    EXPECT_TRUE(found == noConnector || found == "element not found" || found.starts_with("D"))
        << found;
  }
}

// Lifts that lead only back and forth between two floors, or to a floor of no level.
const Drawing rings{
    .floors = {{.lines = {"A B"}}, {.lines = {"C D"}}, {.lines = {"E F"}}, {.lines = {"G H"}}},
    .paths = {"B-D Lift", "D-B Lift", "F-H Lift", "H-F Lift"},
    .pathTypes = {{.name = "Lift"}},
    .destinations = {{.id = 7, .at = "G"}},
    .connectors = {{.id = 2, .at = "B D F H"}}};

struct TernNearestElementRings : TernNearestElementTest {
  TernNearestElementRings() : TernNearestElementTest(rings) {}
};

TEST_F(TernNearestElementRings, connectorsThatLeadNowhereEndInAnError) {
  EXPECT_EQ(search(destination(7), {0, 0}, 1), noConnector);
  EXPECT_EQ(reach('A', 4, {destination(7)}), "none");
  EXPECT_EQ(taken(), "") << "a failed try leaves nothing";
}

TEST_F(TernNearestElementRings, aTargetOfTheSameLevelIsNotSteppedToForEver) {
  venue_->buildings->getFloorByMap(map(4))->level = 0;
  EXPECT_EQ(reach('A', 4, {destination(7)}), "none");
  EXPECT_EQ(errorText(), noConnector);
}

TEST_F(TernNearestElementRings, levelsAtTheEndsOfTheIntegersAreLevels) {
  venue_->buildings->getFloorByMap(map(1))->level = std::numeric_limits<std::int64_t>::max();
  venue_->buildings->getFloorByMap(map(2))->level = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(search(destination(7), {0, 0}, 1), "element not found");
}

TEST(TernNearestElement, searchesOfDamagedVenuesEnd) {
  setLogSink([](std::string_view) {});
  const Value venue = drawVenueDocument(threeStoreys);
  const Value building = drawBuildingDocument(threeStoreys);
  const auto searchAll = [](Value venueValue, Value buildingValue) {
    const auto loaded = assembleVenue(std::move(venueValue), std::move(buildingValue));
    const auto nearest = TernNearestElement::init();
    nearest->initializeKDTree(loaded);
    if (loaded->maps == nullptr) return;
    TernNearestElement::Elements elements;
    if (loaded->destinations) {
      for (const auto& each : loaded->destinations->getAll()) elements.emplace_back(each);
    }
    int calls = 0;
    for (const auto& map : loaded->maps->getAll()) {
      for (const auto& element : elements) {
        nearest->searchNearestElement(element, {1, 2}, map, [&](auto...) { ++calls; });
      }
      for (const auto& from : loaded->maps->getAllWaypoints()) {
        nearest->getNearestElementFrom(from, map->id.integer(), elements, 1);
      }
    }
    EXPECT_EQ(calls, loaded->maps->getCount() * elements.size());
  };
  for (std::uint64_t seed = 0; seed < 150; ++seed) {
    Mutations mutations(seed);
    Value venueValue = venue;
    Value buildingValue = building;
    mutations.damage(seed % 2 == 0 ? venueValue : buildingValue, 3);
    searchAll(std::move(venueValue), std::move(buildingValue));
  }
  setLogSink({});
}

}  // namespace
}  // namespace tern::test
