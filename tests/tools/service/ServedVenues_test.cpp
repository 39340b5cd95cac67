#include "tools/service/ServedVenues.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/support/ActiveVenue.hpp"

namespace tern::service {
namespace {

using testing::HasSubstr;

SharedAnswers drawn() {
  return std::make_shared<TernAnswers>(
      test::loadDrawnVenue({.floors = {{.lines = {"A  B"}}}, .paths = {"A-B"}}));
}

SharedAnswers found(ServedVenues& venues, std::string_view id) {
  const auto result = venues.find(id);
  return std::holds_alternative<SharedAnswers>(result) ? std::get<SharedAnswers>(result) : nullptr;
}

void expectRefusal(ServedVenues& venues, std::string_view id, int status, const std::string& text) {
  const auto result = venues.find(id);
  ASSERT_TRUE(std::holds_alternative<ServedAnswer>(result)) << id;
  EXPECT_EQ(std::get<ServedAnswer>(result).status, status) << id;
  EXPECT_THAT(std::get<ServedAnswer>(result).body, HasSubstr(text));
}

TEST(ServedVenues, venueIsLoadedOnce) {
  std::vector<std::int64_t> loaded;
  ServedVenues venues({{7, 8}, [&](std::int64_t id) {
                         loaded.push_back(id);
                         return drawn();
                       }});
  const SharedAnswers first = found(venues, "7");
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(found(venues, "7"), first);
  EXPECT_NE(found(venues, "8"), first);
  EXPECT_EQ(loaded, (std::vector<std::int64_t>{7, 8}));
}

TEST(ServedVenues, onlyVenueNeedsNoName) {
  ServedVenues venues({{7}, [](std::int64_t) { return drawn(); }});
  EXPECT_NE(found(venues, ""), nullptr);
  EXPECT_EQ(found(venues, ""), found(venues, "7"));
}

TEST(ServedVenues, anotherMayBeMeantWhereNoneIsNamed) {
  const SharedAnswers joined = drawn();
  ServedVenues venues({{7, 8}, [](std::int64_t) { return drawn(); }, joined});
  EXPECT_EQ(found(venues, ""), joined);
  EXPECT_NE(found(venues, "7"), joined);
  expectRefusal(venues, "7,8", 404, "there are 7, 8");
}

TEST(ServedVenues, whatIsNoVenueIsToldWithThoseThatThereAre) {
  ServedVenues venues({{7, 8}, [](std::int64_t) { return drawn(); }});
  expectRefusal(venues, "", 400, "Name one of the venues 7, 8: /answer?venue=ID");
  for (const char* const id : {"9", "x", "7,8", "07", " 7", "-7"}) {
    expectRefusal(venues, id, 404, "There is no venue " + std::string(id) + "; there are 7, 8");
  }
  ServedVenues none({});
  expectRefusal(none, "", 404, "There is no venue\"");
  expectRefusal(none, "7", 404, "There is no venue 7\"");
}

TEST(ServedVenues, venueThatCannotBeLoadedIsTriedAgain) {
  bool canLoad = false;
  ServedVenues venues({{7}, [&](std::int64_t) { return canLoad ? drawn() : nullptr; }});
  expectRefusal(venues, "7", 500, "Venue 7 cannot be loaded");
  canLoad = true;
  EXPECT_NE(found(venues, "7"), nullptr);
}

TEST(ConcurrentServedVenues, manyAtOnceLoadAVenueOnce) {
  std::atomic<int> loads = 0;
  ServedVenues venues({{7}, [&](std::int64_t) {
                         ++loads;
                         return drawn();
                       }});
  std::vector<std::thread> clients;
  for (int i = 0; i < 8; ++i) {
    clients.emplace_back([&] { EXPECT_NE(found(venues, "7"), nullptr); });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(loads, 1);
}

}  // namespace
}  // namespace tern::service
