#include "TernCoreKit/wayfinding/detail/Index.hpp"

#include <gtest/gtest.h>

#include <type_traits>

namespace tern::detail {
namespace {

// Whether a vector that is found by the one can be asked with the other.
template <class Own, class Other>
constexpr bool canBeAskedWith = requires(const Indexed<Own, int>& list, Other index) {
  list[index];
};

template <class... All>
struct Kinds {
  // Whether none of the others can be used in the place of the one.
  template <class Own>
  static constexpr bool keepsOut = ((std::is_same_v<Own, All> ||
                                     (!std::is_convertible_v<All, Own> &&
                                      !canBeAskedWith<Own, All>)) &&
                                    ...);
  static constexpr bool keepApart =
      (keepsOut<All> && ...) && (!std::is_convertible_v<std::uint32_t, All> && ...) &&
      (!std::is_convertible_v<All, std::uint32_t> && ...) && (canBeAskedWith<All, All> && ...);
};

static_assert(Kinds<Position, WaypointIndex, KnownIndex, PathIndex, EdgeIndex, LinkIndex, TypeRank,
                    RuleIndex, MapIndex, PathEnd>::keepApart);
static_assert(sizeof(Position) == sizeof(std::uint32_t));

TEST(Index, findsWhatWasPutThere) {
  Indexed<Position, int> list = {5, 6};
  list.push_back(7);
  EXPECT_EQ(list[Position{2}], 7);
  EXPECT_EQ(list.endIndex(), Position{3});
}

TEST(Index, runsFromTheFirstToTheEnd) {
  const Indexed<LinkIndex, int> list = {1, 2, 3};
  int sum = 0;
  for (LinkIndex i{0}; i < list.endIndex(); ++i) sum += list[i];
  EXPECT_EQ(sum, 6);
}

}  // namespace
}  // namespace tern::detail
