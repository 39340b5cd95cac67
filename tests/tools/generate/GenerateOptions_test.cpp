#include "tools/generate/GenerateOptions.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::generate {
namespace {

using testing::Optional;
using testing::StartsWith;

TEST(GenerateOptions, defaultsAreValid) { EXPECT_EQ(validate(GenerateOptions{}), std::nullopt); }

TEST(GenerateOptions, everyFieldOutOfRangeIsNamed) {
  struct Row {
    const char* name;
    OptionRange range;
    void (*set)(GenerateOptions&, std::int64_t);
  };
  const Row rows[] = {
      {"--buildings: ", buildingRange, [](GenerateOptions& o, std::int64_t v) { o.buildings = v; }},
      {"--floors: ", floorRange, [](GenerateOptions& o, std::int64_t v) { o.floors = v; }},
      {"--shops: ", shopRange, [](GenerateOptions& o, std::int64_t v) { o.shops = v; }},
      {"--waypoints: ", waypointRange, [](GenerateOptions& o, std::int64_t v) { o.waypoints = v; }},
      {"--spacing: ", spacingRange, [](GenerateOptions& o, std::int64_t v) { o.spacing = v; }},
      {"--customer: ", idRange, [](GenerateOptions& o, std::int64_t v) { o.customer = v; }},
      {"--venue: ", idRange, [](GenerateOptions& o, std::int64_t v) { o.venue = v; }},
      {"--venues: ", venuesRange, [](GenerateOptions& o, std::int64_t v) { o.venues = v; }},
  };
  for (const Row& row : rows) {
    for (std::int64_t value : {row.range.least - 1, row.range.most + 1}) {
      GenerateOptions options;
      row.set(options, value);
      EXPECT_THAT(validate(options), Optional(StartsWith(row.name + std::to_string(value))));
    }
    for (std::int64_t value : {row.range.least, row.range.most}) {
      GenerateOptions options;
      row.set(options, value);
      EXPECT_EQ(validate(options), std::nullopt) << row.name << value;
    }
  }
}

TEST(GenerateOptions, errorTellsTheRange) {
  GenerateOptions options;
  options.floors = 0;
  EXPECT_THAT(validate(options), Optional(std::string("--floors: 0 is out of range, 1 to 40")));
}

}  // namespace
}  // namespace tern::generate
