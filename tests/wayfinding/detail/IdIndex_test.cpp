#include "TernCoreKit/wayfinding/detail/IdIndex.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <set>

namespace tern::detail {
namespace {

constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

std::uint32_t scan(const std::vector<std::int64_t>& ids, std::int64_t id) {
  const auto found = std::find(ids.begin(), ids.end(), id);
  return found != ids.end() ? static_cast<std::uint32_t>(found - ids.begin()) : IdIndex::none;
}

void expectScans(const std::vector<std::int64_t>& ids, const std::vector<std::int64_t>& wanted) {
  const IdIndex index(ids);
  for (const std::int64_t id : wanted) RC_ASSERT(index.find(id) == scan(ids, id));
  for (const std::int64_t id : ids) RC_ASSERT(index.find(id) == scan(ids, id));
  RC_ASSERT(index.distinct() == std::set<std::int64_t>(ids.begin(), ids.end()).size());
}

TEST(IdIndex, emptyFindsNothing) {
  EXPECT_EQ(IdIndex().find(0), IdIndex::none);
  EXPECT_EQ(IdIndex(std::vector<std::int64_t>()).find(0), IdIndex::none);
  EXPECT_EQ(IdIndex().distinct(), 0U);
}

TEST(IdIndex, findsTheFirstOfRepeatedIds) {
  const IdIndex index(std::vector<std::int64_t>{7, 5, 7, 5, 6});
  EXPECT_EQ(index.find(7), 0U);
  EXPECT_EQ(index.find(5), 1U);
  EXPECT_EQ(index.find(6), 4U);
  EXPECT_EQ(index.find(4), IdIndex::none);
  EXPECT_EQ(index.find(8), IdIndex::none);
  EXPECT_EQ(index.distinct(), 3U);
}

TEST(IdIndex, spansAllOf64Bits) {
  const IdIndex index(std::vector<std::int64_t>{greatest, 0, least, -1});
  EXPECT_EQ(index.find(greatest), 0U);
  EXPECT_EQ(index.find(0), 1U);
  EXPECT_EQ(index.find(least), 2U);
  EXPECT_EQ(index.find(-1), 3U);
  EXPECT_EQ(index.find(1), IdIndex::none);
}

TEST(IdIndex, neighboursAtTheEndsOf64BitsAreNotTakenForEachOther) {
  const IdIndex high(std::vector<std::int64_t>{greatest, greatest - 1});
  EXPECT_EQ(high.find(greatest - 1), 1U);
  EXPECT_EQ(high.find(least), IdIndex::none);
  const IdIndex low(std::vector<std::int64_t>{least, least + 1});
  EXPECT_EQ(low.find(least + 1), 1U);
  EXPECT_EQ(low.find(greatest), IdIndex::none);
}

// The factor's inverse modulo 2^64, by Newton's method.
constexpr std::uint64_t inverseOf(std::uint64_t odd) {
  std::uint64_t inverse = odd;
  for (int i = 0; i < 6; ++i) inverse *= 2 - odd * inverse;
  return inverse;
}

constexpr std::uint64_t unshifted(std::uint64_t value, unsigned by) {
  return value ^ (value >> by) ^ (value >> 2 * by);
}

// An id that the index's hash turns into the given number.
std::int64_t idWithHash(std::uint64_t hash) {
  hash = unshifted(hash, 31) * inverseOf(0x94d049bb133111ebU);
  hash = unshifted(hash, 27) * inverseOf(0xbf58476d1ce4e5b9U);
  return static_cast<std::int64_t>(unshifted(hash, 30));
}

// A document can choose its ids so that all of them want the same slot; filling the index must not
// become quadratic by that.
TEST(IdIndex, idsMadeToCollideAreFoundAllTheSame) {
  constexpr std::uint64_t count = 300'000;
  std::vector<std::int64_t> ids;
  for (std::uint64_t i = 0; i < count; ++i) ids.push_back(idWithHash(i << 40U));
  ids.push_back(ids.front());
  const IdIndex index(ids);
  for (std::uint32_t i = 0; i < count; ++i) ASSERT_EQ(index.find(ids[i]), i);
  EXPECT_EQ(index.find(idWithHash(count << 40U)), IdIndex::none);
  EXPECT_EQ(index.find(idWithHash(1)), IdIndex::none);
  EXPECT_EQ(index.distinct(), count);
}

RC_GTEST_PROP(IdIndex, findsWhatAScanFindsAmongIdsThatLieTogether, ()) {
  const auto origin = *rc::gen::arbitrary<std::int32_t>();
  const auto near =
      rc::gen::map(rc::gen::inRange(0, 40), [&](int id) { return id + std::int64_t{origin}; });
  expectScans(*rc::gen::container<std::vector<std::int64_t>>(near),
              *rc::gen::container<std::vector<std::int64_t>>(near));
}

RC_GTEST_PROP(IdIndex, findsWhatAScanFindsAmongIdsFarApart, ()) {
  const auto far = rc::gen::oneOf(rc::gen::arbitrary<std::int64_t>(),
                                  rc::gen::element<std::int64_t>(0, greatest, least));
  expectScans(*rc::gen::container<std::vector<std::int64_t>>(far),
              *rc::gen::container<std::vector<std::int64_t>>(far));
}

}  // namespace
}  // namespace tern::detail
