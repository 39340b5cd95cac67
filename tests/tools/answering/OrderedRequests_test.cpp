#include "tools/answering/OrderedRequests.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tern::answering {
namespace {

constexpr OrderedRequests::Bounds ample{};

OrderedRequests withThree(OrderedRequests::Bounds bounds = ample) {
  OrderedRequests requests(bounds);
  for (const char* const text : {"a", "b", "c"}) requests.add(text, false);
  return requests;
}

TEST(OrderedRequests, answersComeInTheOrderOfTheRequests) {
  OrderedRequests requests = withThree();
  const auto a = requests.begin();
  const auto b = requests.begin();
  const auto c = requests.begin();
  EXPECT_EQ(a.request + b.request + c.request, "abc");
  EXPECT_FALSE(requests.canBegin());
  EXPECT_FALSE(requests.end(c.number, "C"));
  EXPECT_EQ(requests.take(), "");
  EXPECT_TRUE(requests.end(a.number, "A"));
  EXPECT_EQ(requests.take(), "A\n");
  EXPECT_TRUE(requests.end(b.number, "B"));
  EXPECT_EQ(requests.take(), "B\nC\n");
  EXPECT_TRUE(requests.isEmpty());
}

TEST(OrderedRequests, oneThatIsAloneIsAnsweredBesideNoOther) {
  OrderedRequests requests(ample);
  requests.add("before", false);
  requests.add("alone", true);
  requests.add("behind", false);
  const auto before = requests.begin();
  EXPECT_FALSE(requests.canBegin());
  requests.end(before.number, "");
  ASSERT_TRUE(requests.canBegin());
  const auto alone = requests.begin();
  EXPECT_EQ(alone.request, "alone");
  EXPECT_FALSE(requests.canBegin());
  requests.end(alone.number, "");
  ASSERT_TRUE(requests.canBegin());
  EXPECT_EQ(requests.begin().request, "behind");
}

TEST(OrderedRequests, numberIsBounded) {
  OrderedRequests requests({.requests = 2, .bytes = 100});
  EXPECT_TRUE(requests.hasRoom());
  requests.add("a", false);
  EXPECT_TRUE(requests.hasRoom());
  requests.add("b", false);
  EXPECT_FALSE(requests.hasRoom());
  const auto a = requests.begin();
  requests.end(a.number, "A");
  EXPECT_FALSE(requests.hasRoom()) << "nobody has taken the answer";
  requests.take();
  EXPECT_TRUE(requests.hasRoom());
}

TEST(OrderedRequests, halfIsEmptyWhenHalfOfWhatMayWaitIsTaken) {
  OrderedRequests requests({.requests = 4, .bytes = 100});
  EXPECT_TRUE(requests.isHalfEmpty());
  for (const char* const text : {"a", "b", "c"}) requests.add(text, false);
  EXPECT_FALSE(requests.isHalfEmpty());
  requests.end(requests.begin().number, "A");
  EXPECT_FALSE(requests.isHalfEmpty()) << "nobody has taken the answer";
  requests.take();
  EXPECT_TRUE(requests.isHalfEmpty());
}

TEST(OrderedRequests, halfOfTheBytesMustBeTakenToo) {
  OrderedRequests requests({.requests = 9, .bytes = 10});
  requests.add(std::string(6, 'x'), false);
  EXPECT_FALSE(requests.isHalfEmpty());
  requests.end(requests.begin().number, std::string(6, 'X'));
  EXPECT_FALSE(requests.isHalfEmpty());
  requests.take();
  EXPECT_TRUE(requests.isHalfEmpty());
}

TEST(OrderedRequests, bytesThatWaitAreBounded) {
  OrderedRequests requests({.requests = 9, .bytes = 10});
  requests.add(std::string(1000, 'x'), false);
  EXPECT_FALSE(requests.hasRoom());
  requests.begin();
  EXPECT_TRUE(requests.hasRoom()) << "it is under way";
}

TEST(OrderedRequests, onlyTheFirstBeginsBesideManyBytesOfAnswers) {
  OrderedRequests requests = withThree({.requests = 9, .bytes = 10});
  const auto a = requests.begin();
  const auto b = requests.begin();
  requests.end(b.number, std::string(10, 'B'));
  EXPECT_FALSE(requests.canBegin());
  EXPECT_FALSE(requests.hasRoom());
  requests.end(a.number, std::string(10, 'A'));
  EXPECT_FALSE(requests.canBegin());
  EXPECT_EQ(requests.take().size(), 22U);
  EXPECT_TRUE(requests.canBegin());
  EXPECT_TRUE(requests.hasRoom());
}

TEST(OrderedRequests, whatIsDroppedIsForgotten) {
  OrderedRequests requests = withThree();
  const auto a = requests.begin();
  const auto b = requests.begin();
  requests.end(a.number, "A");
  requests.drop();
  EXPECT_FALSE(requests.end(b.number, "B"));
  EXPECT_FALSE(requests.canBegin());
  requests.add("d", false);
  EXPECT_FALSE(requests.canBegin());
  EXPECT_EQ(requests.take(), "");
  EXPECT_TRUE(requests.isEmpty());
}

}  // namespace
}  // namespace tern::answering
