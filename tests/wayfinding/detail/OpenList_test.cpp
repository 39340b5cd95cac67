#include "TernCoreKit/wayfinding/detail/OpenList.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace tern::detail {
namespace {

using testing::ElementsAre;

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float smallest = std::numeric_limits<float>::denorm_min();

// The heap as a textbook has it: positions by scores that are looked up when they are compared.
class TextbookHeap {
 public:
  explicit TextbookHeap(std::vector<float>& scores) : scores_(scores) {}

  void insert(Position position) {
    heap_.push_back(position);
    for (std::size_t at = heap_.size() - 1; at > 0; at = (at - 1) / 2) {
      if (!isGreater((at - 1) / 2, at)) return;
      std::swap(heap_[(at - 1) / 2], heap_[at]);
    }
  }
  Position removeFirst() {
    const Position first = heap_.front();
    heap_.front() = heap_.back();
    heap_.pop_back();
    for (std::size_t at = 0, child = 1; child < heap_.size(); child = 2 * at + 1) {
      if (child + 1 < heap_.size() && isGreater(child, child + 1)) ++child;
      if (!isGreater(at, child)) break;
      std::swap(heap_[at], heap_[child]);
      at = child;
    }
    return first;
  }
  const std::vector<Position>& positions() const { return heap_; }

 private:
  bool isGreater(std::size_t a, std::size_t b) const {
    const float first = scores_[numberOf(heap_[a])];
    const float second = scores_[numberOf(heap_[b])];
    return first != second && !(first < second);
  }

  std::vector<float>& scores_;
  std::vector<Position> heap_;
};

template <class Order>
std::vector<std::uint32_t> inOrder(const std::vector<float>& scores) {
  SearchState state(scores.size());
  OpenList<Order> list(state);
  for (std::uint32_t i = 0; i < scores.size(); ++i) list.insert(Position{i}, scores[i]);
  std::vector<std::uint32_t> order;
  for (; !list.isEmpty(); list.removeFirst()) order.push_back(numberOf(list.first()));
  return order;
}

// Inserts, removes and rewrites at random, and compares the whole heap after each step.
template <class Order>
void expectTextbook(const rc::Gen<float>& anyScore) {
  constexpr std::size_t count = 24;
  SearchState state(count);
  std::vector<float> scores(count, 0.0F);
  std::vector<bool> isOpen(count, false);
  TextbookHeap textbook(scores);
  OpenList<Order> list(state);
  const auto steps = *rc::gen::container<std::vector<std::pair<std::uint32_t, float>>>(
      rc::gen::pair(rc::gen::inRange<std::uint32_t>(0, count + 12), anyScore));
  for (const auto& [number, score] : steps) {
    const Position position{number};
    if (number >= count) {
      if (list.isEmpty()) continue;
      const Position first = list.first();
      list.removeFirst();
      RC_ASSERT(textbook.removeFirst() == first);
      isOpen[numberOf(first)] = false;
    } else {
      scores[number] = score;
      if (isOpen[number]) {
        list.rewriteScore(state.nodes[position], score);
      } else {
        list.insert(position, score);
        textbook.insert(position);
      }
      isOpen[number] = true;
    }
    state.openCount = list.size();
    std::vector<Position> ours;
    for (const OpenEntry& entry : state.openEntries()) ours.push_back(entry.position());
    RC_ASSERT(ours == textbook.positions());
  }
}

rc::Gen<float> halves(int from, int to) {
  return rc::gen::map(rc::gen::inRange(from, to),
                      [](int n) { return static_cast<float>(n) * 0.5F; });
}

rc::Gen<float> plainScores() {
  return rc::gen::oneOf(rc::gen::element(0.0F, smallest, 1.0F, 1e38F, infinite), halves(0, 9));
}

rc::Gen<float> anyScores() {
  return rc::gen::oneOf(plainScores(), halves(-9, 0),
                        rc::gen::element(-0.0F, -smallest, -infinite, notANumber));
}

TEST(OpenList, givesTheLeastScoreFirst) {
  EXPECT_THAT(inOrder<PlainOrder>({3, 1, 2, 0, 0.5F}), ElementsAre(3, 4, 1, 2, 0));
  EXPECT_THAT(inOrder<AnyOrder>({3, 1, 2, -5, 0}), ElementsAre(3, 4, 1, 2, 0));
}

TEST(OpenList, leftChildMovesUpOnATie) {
  EXPECT_THAT(inOrder<PlainOrder>({0, 1, 1, 2}), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(inOrder<AnyOrder>({0, 1, 1, 2}), ElementsAre(0, 1, 2, 3));
}

TEST(OpenList, lastEntryStaysAtTheRootOnATie) {
  EXPECT_THAT(inOrder<PlainOrder>({0, 1, 1, 1}), ElementsAre(0, 3, 2, 1));
  EXPECT_THAT(inOrder<AnyOrder>({0, 1, 1, 1}), ElementsAre(0, 3, 2, 1));
}

TEST(OpenList, scoreThatDropsStaysWhereItIs) {
  SearchState state(3);
  OpenList<PlainOrder> list(state);
  list.insert(Position{0}, 1);
  list.insert(Position{1}, 5);
  list.insert(Position{2}, 6);
  list.rewriteScore(state.nodes[Position{2}], 0);
  EXPECT_EQ(list.first(), Position{0}) << "the lower score lies below the root and is not moved up";
  list.removeFirst();
  EXPECT_EQ(list.first(), Position{2});
}

TEST(OpenList, hasRoomForEveryNodeAndIsEmptyForTheNextSearch) {
  SearchState state(1000);
  OpenList<PlainOrder> list(state);
  for (std::uint32_t i = 0; i < 1000; ++i) list.insert(Position{i}, static_cast<float>(i % 7));
  EXPECT_EQ(list.size(), 1000U);
  EXPECT_TRUE(OpenList<PlainOrder>(state).isEmpty());
}

TEST(OpenList, plainOrderIsTheOrderOfTheFloats) {
  const std::vector<float> ascending = {0, smallest, 1.000001F, 2, 1e38F, infinite};
  for (std::size_t a = 0; a < ascending.size(); ++a) {
    for (std::size_t b = 0; b < ascending.size(); ++b) {
      EXPECT_EQ(
          PlainOrder::isGreater(PlainOrder::keyOf(ascending[a]), PlainOrder::keyOf(ascending[b])),
          a > b);
    }
  }
}

TEST(OpenList, zeroesOfBothSignsAreEqual) {
  EXPECT_FALSE(AnyOrder::isGreater(0.0F, -0.0F));
  EXPECT_FALSE(AnyOrder::isGreater(-0.0F, 0.0F));
}

TEST(OpenList, whatIsNotANumberIsGreaterOnBothSides) {
  EXPECT_TRUE(AnyOrder::isGreater(notANumber, 1));
  EXPECT_TRUE(AnyOrder::isGreater(1, notANumber));
  EXPECT_TRUE(AnyOrder::isGreater(notANumber, notANumber));
}

RC_GTEST_PROP(OpenList, plainOrderIsATextbookHeap, ()) {
  expectTextbook<PlainOrder>(plainScores());
}

RC_GTEST_PROP(OpenList, anyOrderIsATextbookHeap, ()) { expectTextbook<AnyOrder>(anyScores()); }

}  // namespace
}  // namespace tern::detail
