#include "TernCoreKit/wayfinding/joined/detail/VenueGroups.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

namespace tern::test {
namespace {

using detail::groupVenues;
using detail::VenueExits;

// The pass as it is described, over plain lists that are scanned.
class LiteralGroups {
 public:
  struct Set {
    std::string venue;
    std::vector<std::string> reached;
  };

  explicit LiteralGroups(const std::vector<VenueExits>& venues) {
    for (const VenueExits& venue : venues) add(venue);
  }

  bool reaches(const std::string& venue, const std::string& other) {
    return has(setOf(venue).reached, other);
  }
  std::size_t size() const { return sets_.size(); }

 private:
  static bool has(const std::vector<std::string>& list, const std::string& id) {
    return std::ranges::find(list, id) != list.end();
  }
  static void put(std::vector<std::string>& list, const std::string& id) {
    if (!has(list, id)) list.push_back(id);
  }
  Set& setOf(const std::string& venue) { return *std::ranges::find(sets_, venue, &Set::venue); }
  std::vector<std::string> sortedKeys() const {
    std::vector<std::string> keys;
    for (const Set& set : sets_) keys.push_back(set.venue);
    std::ranges::sort(keys);
    return keys;
  }

  void add(const VenueExits& exits) {
    const std::string v = std::to_string(exits.venueId);
    std::erase_if(sets_, [&](const Set& set) { return set.venue == v; });
    sets_.push_back({v, {}});
    for (const std::int64_t id : exits.leadTo) put(setOf(v).reached, std::to_string(id));
    for (const std::string& k : sortedKeys()) {
      if (k == v) continue;
      std::vector<std::string> snapshot = setOf(v).reached;
      std::ranges::sort(snapshot);
      for (const std::string& x : snapshot) visit(v, k, x);
    }
  }

  void visit(const std::string& v, const std::string& k, const std::string& x) {
    std::vector<std::string>& s = setOf(v).reached;
    std::vector<std::string>& ks = setOf(k).reached;
    if (x != k && !has(ks, x)) {
      if (!has(ks, v)) return;
      put(ks, x);
      put(s, k);
      return;
    }
    for (const std::string& y : ks) {
      if (y != v) put(s, y);
    }
    if (x != k) put(s, k);
  }

  std::vector<Set> sets_;
};

TEST(VenueGroups, aChainReachesFromEndToEnd) {
  const auto table = groupVenues({{1, {2}}, {2, {1, 3}}, {3, {2}}});
  EXPECT_TRUE(table.at("1").contains("3"));
  EXPECT_TRUE(table.at("3").contains("1"));
}

TEST(VenueGroups, aVenueWithoutExitsReachesNothing) {
  const auto table = groupVenues({{1, {}}, {2, {}}});
  EXPECT_EQ(table.size(), 2U);
  EXPECT_TRUE(table.at("1").empty());
}

RC_GTEST_PROP(VenueGroups, groupsAsItsLiteralTwinDoes, ()) {
  constexpr std::int64_t ids = 12;
  std::vector<VenueExits> venues;
  for (int left = *rc::gen::inRange(0, 12); left > 0; --left) {
    venues.push_back(
        {*rc::gen::inRange<std::int64_t>(0, ids),
         *rc::gen::container<std::vector<std::int64_t>>(rc::gen::inRange<std::int64_t>(0, ids))});
    if (venues.back().leadTo.size() > 4) venues.back().leadTo.resize(4);
  }
  const auto table = groupVenues(venues);
  LiteralGroups twin(venues);
  RC_ASSERT(table.size() == twin.size());
  for (const auto& [venue, reached] : table) {
    for (std::int64_t id = 0; id < ids; ++id) {
      const std::string other = std::to_string(id);
      RC_ASSERT(reached.contains(other) == twin.reaches(venue, other));
    }
  }
}

}  // namespace
}  // namespace tern::test
