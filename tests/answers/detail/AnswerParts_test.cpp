#include "TernCoreKit/answers/detail/AnswerParts.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::detail {
namespace {

std::string json(const Value& value) { return encodeJson(value, JsonLayout::compact); }

TEST(AnswerParts, noRouteIsAnEmptyList) { EXPECT_EQ(json(routePart({})), "[]"); }

TEST(AnswerParts, segmentShowsFloatsInTheirShortestForm) {
  TernPathPerFloor segment;
  segment.mapId = 3;
  segment.cost = 0.1F;
  segment.pixelDistance = 16777216.0F;
  segment.mmDistance = std::numeric_limits<float>::infinity();
  segment.points = {TernASNode::initASNode(12, 1.5, 2, 0, 3, {}, {})};
  segment.mapPoints = {{1.5F, 1e-10F, 3}};
  EXPECT_EQ(json(routePart({segment})),
            R"([{"mapId":3,"mover":null,"cost":0.1,"pixelDistance":16777216,"mmDistance":null,)"
            R"("points":[12],"mapPoints":[[1.5,1e-10]]}])");
}

TEST(AnswerParts, moverIsTheIdOfThePathType) {
  TernPathPerFloor segment;
  segment.mover = TernPathType::initWithDictionary(Value::map({{"id", 2}}));
  EXPECT_EQ(routePart({segment}).items()[0]["mover"], Value(2));
}

TEST(AnswerParts, absentNumbersOfALinkAreZero) {
  EXPECT_EQ(json(neighborPart({})),
            R"({"id":0,"cost":0,"distance":0,"accessibility":0,"edge":0,"pathType":0})");
}

RC_GTEST_PROP(AnswerParts, costReadsBackAsTheSameFloat, (float cost)) {
  TernNeighbor neighbor;
  neighbor.cost = cost;
  const JsonResult read = decodeJson(json(neighborPart(neighbor)));
  RC_ASSERT(static_cast<float>(read.value["cost"].number()) == cost);
}

}  // namespace
}  // namespace tern::detail
