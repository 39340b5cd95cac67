#include "tools/import/write/IdTable.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tern::imports {
namespace {

TEST(IdTable, idsLieBelowTwoToTheThirtyFirst) {
  IdTable ids;
  std::set<std::int64_t> seen;
  for (int i = 0; i < 20'000; ++i) {
    const std::int64_t id = ids.of("waypoint", "node " + std::to_string(i));
    EXPECT_GE(id, 1);
    EXPECT_LE(id, 0x7FFFFFFF);
    EXPECT_TRUE(seen.insert(id).second);
  }
}

TEST(IdTable, idDependsOnNothingButItsSource) {
  IdTable one;
  IdTable other;
  other.of("waypoint", "something before");
  other.of("path", "a");
  EXPECT_EQ(one.of("waypoint", "a"), other.of("waypoint", "a"));
  EXPECT_EQ(one.of("waypoint", "a"), one.of("waypoint", "a"));
}

TEST(IdTable, takenNumberIsGivenToNobodyElse) {
  IdTable fresh;
  const std::int64_t wanted = fresh.of("waypoint", "a");
  IdTable ids;
  ids.keep("waypoint", "earlier", wanted);
  EXPECT_NE(ids.of("waypoint", "a"), wanted);
  EXPECT_EQ(ids.of("waypoint", "earlier"), wanted);
  EXPECT_EQ(ids.of("path", "a"), wanted);
}

TEST(IdTable, documentBringsTheNumbersBack) {
  IdTable ids;
  ids.keep("waypoint", "a", 7);
  ids.of("waypoint", "a");
  ids.of("path", "b");
  const Value document = ids.takeDocument();
  EXPECT_EQ(document["waypoint"]["a"].integer(), 7);
  IdTable next;
  next.keep(document);
  EXPECT_EQ(next.of("waypoint", "a"), 7);
  EXPECT_EQ(next.of("path", "b"), document["path"]["b"].integer());
}

TEST(IdTable, documentHoldsWhatWasAskedForSinceTheLastOne) {
  IdTable ids;
  ids.keep("waypoint", "never asked for", 7);
  ids.of("waypoint", "first");
  EXPECT_EQ(ids.takeDocument()["waypoint"].size(), 1U);
  ids.of("waypoint", "second");
  const Value document = ids.takeDocument();
  EXPECT_EQ(document["waypoint"].size(), 1U);
  EXPECT_TRUE(document["waypoint"]["second"].isInteger());
}

TEST(IdTable, whatIsNoNumberOfOursIsNotKept) {
  IdTable ids;
  ids.keep("waypoint", "a", 0);
  ids.keep("waypoint", "b", 0x80000000);
  ids.keep("waypoint", "c", 5);
  ids.keep("waypoint", "d", 5);
  EXPECT_NE(ids.of("waypoint", "a"), 0);
  EXPECT_NE(ids.of("waypoint", "b"), 0x80000000);
  EXPECT_NE(ids.of("waypoint", "d"), 5);
  IdTable other;
  other.keep(Value::list({1, 2}));
  other.keep(Value::map({{"waypoint", 3}}));
  EXPECT_EQ(other.takeDocument().size(), 0U);
}

}  // namespace
}  // namespace tern::imports
