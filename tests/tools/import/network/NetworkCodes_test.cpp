#include "tools/import/network/NetworkCodes.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

NetworkRecord recordOf(const Value& properties) {
  static const Value noGeometry;
  return {"id", &properties, &noGeometry, {}};
}

LinkKind kindOf(const Value& routeType) {
  const Value properties = Value::map({{"route_type", routeType}});
  return linkKindOf(recordOf(properties));
}

TEST(NetworkCodes, routeTypesAreKindsOfWays) {
  EXPECT_EQ(kindOf("1"), LinkKind::walkway);
  EXPECT_EQ(kindOf("2"), LinkKind::movingWalkway);
  EXPECT_EQ(kindOf("3"), LinkKind::walkway);
  EXPECT_EQ(kindOf("4"), LinkKind::lift);
  EXPECT_EQ(kindOf("5"), LinkKind::escalator);
  EXPECT_EQ(kindOf("6"), LinkKind::stairs);
  EXPECT_EQ(kindOf("7"), LinkKind::ramp);
}

TEST(NetworkCodes, codesMayBeNumbers) { EXPECT_EQ(kindOf(6), LinkKind::stairs); }

TEST(NetworkCodes, whatIsNoCodeIsUnknown) {
  for (const Value& code : {Value("99"), Value(), Value(nullptr), Value("6 "), Value("x"),
                            Value(1e300), Value(Value::list({1}))}) {
    EXPECT_EQ(kindOf(code), LinkKind::unknown);
  }
}

TEST(NetworkCodes, directionsFollowTheLink) {
  const auto directionAt = [](const char* code) {
    const Value properties = Value::map({{"direction", code}});
    return directionOf(recordOf(properties));
  };
  EXPECT_EQ(directionAt("1"), Direction::both);
  EXPECT_EQ(directionAt("2"), Direction::forward);
  EXPECT_EQ(directionAt("3"), Direction::backward);
  EXPECT_EQ(directionAt("99"), Direction::both);
}

TEST(NetworkCodes, liftsForWheelchairsAreStepFree) {
  const auto statement = [](const char* code) {
    const Value properties = Value::map({{"elevator", code}});
    return liftStatementOf(recordOf(properties));
  };
  EXPECT_EQ(statement("1"), LiftStatement::nothing);
  EXPECT_EQ(statement("2"), LiftStatement::notStepFree);
  EXPECT_EQ(statement("3"), LiftStatement::stepFree);
  EXPECT_EQ(statement("4"), LiftStatement::notStepFree);
  EXPECT_EQ(statement("5"), LiftStatement::stepFree);
  EXPECT_EQ(statement("99"), LiftStatement::nothing);
}

TEST(NetworkCodes, stepsAndSlopesAreThoseThatAreStated) {
  const Value steps = Value::map({{"lev_diff", "2"}, {"vtcl_slope", "99"}});
  EXPECT_TRUE(hasSteps(recordOf(steps)));
  EXPECT_FALSE(isSteep(recordOf(steps)));
  const Value steep = Value::map({{"lev_diff", "99"}, {"vtcl_slope", "3"}});
  EXPECT_FALSE(hasSteps(recordOf(steep)));
  EXPECT_TRUE(isSteep(recordOf(steep)));
  const Value gentle = Value::map({{"vtcl_slope", "1"}});
  EXPECT_FALSE(isSteep(recordOf(gentle)));
}

TEST(NetworkCodes, detailsAreInWordsAndLeaveOutWhatIsUnknown) {
  const Value properties = Value::map({{"width", "3"}, {"vtcl_slope", "99"}, {"roof", "2"}});
  EXPECT_EQ(detailsOf(recordOf(properties)), Value::map({{"width", "2 to 3 m"}, {"roof", "yes"}}));
}

TEST(NetworkCodes, roomsThatAreNotPublicAreClosed) {
  const auto kind = [](const char* category, const char* restricted) {
    const Value properties = Value::map({{"category", category}, {"restricted", restricted}});
    return areaKindOf(recordOf(properties));
  };
  EXPECT_EQ(kind("B001", "2"), AreaKind::shop);
  EXPECT_EQ(kind("B001", "1"), AreaKind::closed);
  EXPECT_EQ(kind("B011", "2"), AreaKind::toilets);
  EXPECT_EQ(kind("B029", "2"), AreaKind::way);
  EXPECT_EQ(kind("B888", "2"), AreaKind::room);
}

TEST(NetworkCodes, genericNamesAreNoPlaces) {
  const PlaceRow* toilets = placeOfFacility("F001");
  EXPECT_TRUE(isGeneric("トイレ（男性用）", *toilets));
  EXPECT_TRUE(isGeneric("多機能トイレ(おむつ交換シートあり)", *toilets));
  EXPECT_TRUE(isGeneric("階段の範囲"));
  EXPECT_TRUE(isGeneric("消火器", *placeOfFacility("F046")));
  EXPECT_FALSE(isGeneric("第2エレベーター", *placeOfFacility("F012")));
  EXPECT_FALSE(isGeneric("U3", *placeOfFacility("F011")));
}

TEST(NetworkCodes, exitsThatAreNumbersAreCalledExits) {
  EXPECT_EQ(fullName("3A", *placeOfFacility("F108")), "出口3A");
  EXPECT_EQ(fullName("東口", *placeOfFacility("F108")), "東口");
  EXPECT_EQ(fullName("U3", *placeOfFacility("F011")), "U3");
}

TEST(NetworkCodes, openingsAreExitsGatesOrShops) {
  EXPECT_EQ(placeOfOpening("出口8")->id, "exit");
  EXPECT_EQ(placeOfOpening("JR連絡改札口")->id, "ticket-gate");
  EXPECT_EQ(placeOfOpening("北口 N1")->id, "entrance");
  EXPECT_EQ(placeOfOpening("コーヒー")->id, "shop");
}

TEST(NetworkCodes, everyPlaceHasANameInEveryLanguage) {
  for (const char* code :
       {"F001", "F005", "F011", "F012", "F013", "F014", "F017", "F027", "F028", "F030", "F033",
        "F037", "F046", "F047", "F048", "F049", "F108", "F214"}) {
    const PlaceRow* const row = placeOfFacility(code);
    ASSERT_NE(row, nullptr) << code;
    EXPECT_EQ(row->names.size(), 5U) << code;
  }
  EXPECT_EQ(placeOfFacility("F999"), nullptr);
  EXPECT_EQ(placeOfSpace(AreaKind::mover, "B021"), nullptr);
  EXPECT_EQ(placeOfSpace(AreaKind::closed, "B001"), nullptr);
}

}  // namespace
}  // namespace tern::imports
