#include <gtest/gtest.h>

#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

std::string told(const TernVenueCollection& venues, bool json) {
  const auto list = std::get<AboutCustomer>(venuesCommand.about);
  return std::get<Answer>(list({.json = json}, venues)).text;
}

TEST(VenuesCommand, venuesAreListedInTheirOrder) {
  TernVenueCollection venues;
  venues.createBatch(Value::map(
      {{"items", Value::list({Value::map({{"id", 2}, {"externalId", "h"}, {"name", "Harbour"}}),
                              Value::map({{"id", 1}})})}}));
  EXPECT_EQ(told(venues, true), R"({"venues":[{"id":2,"externalId":"h","name":"Harbour"},)"
                                R"({"id":1,"externalId":"","name":""}]})"
                                "\n");
  EXPECT_EQ(told(venues, false), "2       Harbour (h)\n1       \n");
}

TEST(VenuesCommand, noVenueIsAnEmptyList) {
  EXPECT_EQ(told(TernVenueCollection(), true), "{\"venues\":[]}\n");
  EXPECT_EQ(told(TernVenueCollection(), false), "");
}

}  // namespace
}  // namespace tern::command
