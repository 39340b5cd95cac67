#include "TernCoreKit/spatial/tree/KDTree.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/LiteralTree.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern {

// For what the test framework prints.
static void PrintTo(const KDPoint& point, std::ostream* out) {
  *out << "(" << point.x << ", " << point.y << ")";
}

namespace test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

using Tree = KDTree<KDPoint>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// A point of D whole coordinates and a number that tells equal ones apart for the predicates.
template <std::size_t D>
struct GridPoint {
  static constexpr std::size_t dimensions = D;
  // So that a tree is asked either way.
  static constexpr bool equalPointsCoincide = D % 2 == 0;
  std::array<int, D> at{};
  int mark = 0;
  double step = 1;

  double kdDimension(std::size_t axis) const { return at[axis] * step; }
  double squaredDistance(const GridPoint& to) const {
    double sum = 0;
    for (std::size_t axis = 0; axis < D; ++axis) {
      sum +=
          (to.kdDimension(axis) - kdDimension(axis)) * (to.kdDimension(axis) - kdDimension(axis));
    }
    return sum;
  }
  friend bool operator==(const GridPoint& a, const GridPoint& b) { return a.at == b.at; }
  bool isSameAs(const GridPoint& other) const { return at == other.at && mark == other.mark; }
};

template <std::size_t D>
GridPoint<D> drawnPoint(int mark) {
  GridPoint<D> point;
  // So narrow that many points coincide or lie on a line.
  for (int& coordinate : point.at) coordinate = *rc::gen::inRange(0, *rc::gen::element(1, 3, 20));
  point.mark = mark;
  return point;
}

template <std::size_t D>
std::vector<GridPoint<D>> drawnPoints() {
  std::vector<GridPoint<D>> points(*rc::gen::inRange<std::size_t>(0, 120));
  for (std::size_t i = 0; i < points.size(); ++i) points[i] = drawnPoint<D>(static_cast<int>(i));
  return points;
}

template <class E>
void expectSame(const std::vector<E>& ours, const std::vector<E>& theirs) {
  RC_ASSERT(ours.size() == theirs.size());
  for (std::size_t i = 0; i < ours.size(); ++i) RC_ASSERT(ours[i].isSameAs(theirs[i]));
}

template <class E>
void expectSame(const std::optional<E>& ours, const std::optional<E>& theirs) {
  RC_ASSERT(ours.has_value() == theirs.has_value());
  if (ours) RC_ASSERT(ours->isSameAs(*theirs));
}

template <class E>
void expectSameShape(const KDTree<E>& tree, const LiteralTree<E>& literal) {
  std::vector<std::pair<E, std::size_t>> nodes;
  LiteralTree<E>::list(literal.root.get(), nodes);
  const std::vector<E> ours = tree.elements();
  RC_ASSERT(ours.size() == nodes.size());
  for (std::size_t i = 0; i < ours.size(); ++i) RC_ASSERT(ours[i].isSameAs(nodes[i].first));
}

template <class Dimension>
struct KDTreeOfDimension : testing::Test {};
using Dimensions =
    testing::Types<std::integral_constant<std::size_t, 1>, std::integral_constant<std::size_t, 2>,
                   std::integral_constant<std::size_t, 3>, std::integral_constant<std::size_t, 4>>;
TYPED_TEST_SUITE(KDTreeOfDimension, Dimensions);

TYPED_TEST(KDTreeOfDimension, hasTheShapeOfThePlainConstruction) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    auto points = drawnPoints<D>();
    // Down to such that all coordinates, or some of them, count as equal.
    const double step = *rc::gen::element(1.0, 1e-16, 4e-17, 1e-17);
    for (auto& point : points) point.step = step;
    const std::size_t depth = *rc::gen::inRange<std::size_t>(0, 9);
    expectSameShape(KDTree<GridPoint<D>>::init(points, depth),
                    LiteralTree<GridPoint<D>>(points, depth));
  }));
}

TYPED_TEST(KDTreeOfDimension, findsTheNearestThatThePlainSearchFinds) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    const auto points = drawnPoints<D>();
    const auto query = drawnPoint<D>(-1);
    const double bound = *rc::gen::element(0.0, 1.0, 9.0, infinity);
    const int wanted = *rc::gen::inRange(1, 5);
    const auto accept = [=](const GridPoint<D>& point) { return point.mark % wanted == 0; };
    expectSame(KDTree<GridPoint<D>>::init(points).nearest(query, bound, accept),
               LiteralTree<GridPoint<D>>(points).nearest(query, bound, accept));
  }));
}

TYPED_TEST(KDTreeOfDimension, findsNoneNearerByAFullScan) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    const auto points = drawnPoints<D>();
    const auto query = drawnPoint<D>(-1);
    double least = infinity;
    for (const auto& point : points) least = std::min(least, point.squaredDistance(query));
    const auto found = KDTree<GridPoint<D>>::init(points).nearest(query);
    RC_ASSERT(found.has_value() == !points.empty());
    if (found) RC_ASSERT(found->squaredDistance(query) == least);
  }));
}

TYPED_TEST(KDTreeOfDimension, findsTheNearestFewThatThePlainSearchFinds) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    const auto points = drawnPoints<D>();
    const auto query = drawnPoint<D>(-1);
    const auto k = *rc::gen::inRange<std::size_t>(1, 150);
    const int wanted = *rc::gen::inRange(1, 5);
    const auto accept = [=](const GridPoint<D>& point) { return point.mark % wanted == 0; };
    const auto found =
        KDTree<GridPoint<D>>::init(points).nearestK(static_cast<std::ptrdiff_t>(k), query, accept);
    expectSame(found, LiteralTree<GridPoint<D>>(points).nearestK(k, query, accept));
    std::vector<double> distances;
    for (const auto& point : points) {
      if (accept(point)) distances.push_back(point.squaredDistance(query));
    }
    std::ranges::sort(distances);
    distances.resize(std::min(k, distances.size()));
    RC_ASSERT(found.size() == distances.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
      RC_ASSERT(found[i].squaredDistance(query) == distances[i]);
    }
  }));
}

TYPED_TEST(KDTreeOfDimension, findsAllWithinARadiusByAFullScan) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    const auto points = drawnPoints<D>();
    const auto query = drawnPoint<D>(-1);
    const int radius = *rc::gen::inRange(-1, 8);
    std::vector<int> expected;
    for (const auto& point : points) {
      if (radius >= 0 && point.squaredDistance(query) <= radius * radius) {
        expected.push_back(point.mark);
      }
    }
    std::vector<int> found;
    for (const auto& point : KDTree<GridPoint<D>>::init(points).allPoints(radius, query)) {
      found.push_back(point.mark);
    }
    std::ranges::sort(found);
    RC_ASSERT(found == expected);
  }));
}

TYPED_TEST(KDTreeOfDimension, findsInABoxWhatThePlainSearchFinds) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    const auto points = drawnPoints<D>();
    const auto a = drawnPoint<D>(0);
    const auto b = drawnPoint<D>(0);
    std::vector<std::pair<double, double>> box;
    for (std::size_t axis = 0; axis < D; ++axis) {
      box.emplace_back(std::min(a.at[axis], b.at[axis]), std::max(a.at[axis], b.at[axis]));
    }
    const auto tree = KDTree<GridPoint<D>>::init(points);
    std::vector<GridPoint<D>> expected;
    LiteralTree<GridPoint<D>>::elementsIn(LiteralTree<GridPoint<D>>(points).root.get(), box,
                                          expected);
    expectSame(tree.elementsIn(box), expected);
    // Past the edges nothing is left out.
    for (auto& [lower, upper] : box) upper += 0.5;
    const auto isInside = [&](const GridPoint<D>& point) {
      for (std::size_t axis = 0; axis < D; ++axis) {
        if (point.at[axis] < box[axis].first || point.at[axis] > box[axis].second) return false;
      }
      return true;
    };
    RC_ASSERT(tree.elementsIn(box).size() ==
              static_cast<std::size_t>(std::ranges::count_if(points, isInside)));
  }));
}

TYPED_TEST(KDTreeOfDimension, insertingAndRemovingKeepTheQueriesRight) {
  constexpr std::size_t D = TypeParam::value;
  EXPECT_TRUE(rc::check([] {
    auto points = drawnPoints<D>();
    auto tree = KDTree<GridPoint<D>>::init(points);
    for (int i = 0; i < 10; ++i) {
      const auto point = drawnPoint<D>(1000 + i);
      if (*rc::gen::arbitrary<bool>()) {
        tree = tree.inserting(point, 0);
        points.push_back(point);
      } else {
        tree = tree.removing(point, 1);
        std::erase(points, point);
      }
      const auto query = drawnPoint<D>(-1);
      const auto found = tree.nearest(query);
      double least = infinity;
      for (const auto& each : points) least = std::min(least, each.squaredDistance(query));
      RC_ASSERT(tree.count() == points.size());
      RC_ASSERT(found.has_value() == !points.empty());
      if (found) RC_ASSERT(found->squaredDistance(query) == least);
      RC_ASSERT(tree.contains(query) == (std::ranges::find(points, query) != points.end()));
    }
  }));
}

TEST(KDTree, isEmptyWithoutValues) {
  const Tree tree = Tree::init({});
  EXPECT_TRUE(tree.isEmpty());
  EXPECT_EQ(tree.count(), 0U);
  EXPECT_EQ(tree.depth(), 0U);
  EXPECT_EQ(tree.nearest({0, 0}), std::nullopt);
  EXPECT_THAT(tree.nearestK(3, {0, 0}), IsEmpty());
  EXPECT_THAT(tree.elementsIn({{0, 1}, {0, 1}}), IsEmpty());
  EXPECT_EQ(tree, Tree());
}

TEST(KDTree, equalCoordinatesStandInTheRightSubtree) {
  const Tree tree = Tree::init({{1, 1}, {1, 2}, {1, 3}}, 0);
  EXPECT_EQ(tree.value(), (KDPoint{1, 1}));
  EXPECT_EQ(tree.dimension(), 0U);
  EXPECT_TRUE(tree.left().isEmpty());
  EXPECT_THAT(tree.right().elements(), UnorderedElementsAre(KDPoint{1, 2}, KDPoint{1, 3}));
  EXPECT_EQ(tree.right().dimension(), 1U);
}

TEST(KDTree, coordinatesWithinTheMachinesEpsilonCountAsEqual) {
  const Tree tree = Tree::init({{-1, 0}, {1e-17, 0}, {2e-17, 0}, {3e-17, 0}});
  EXPECT_EQ(tree.value(), (KDPoint{1e-17, 0}));
  EXPECT_EQ(tree.left().elements(), (std::vector<KDPoint>{{-1, 0}}));
}

TEST(KDTree, theBoundIsComparedWithSquaredDistances) {
  const Tree tree = Tree::init({{3, 0}});
  EXPECT_EQ(tree.nearest({0, 0}, 4), std::nullopt);
  EXPECT_EQ(tree.nearest({0, 0}, 9), std::nullopt);
  EXPECT_EQ(tree.nearest({0, 0}, 10), (KDPoint{3, 0}));
}

TEST(KDTree, aPointOfTheTreeIsItsOwnNearestWhateverThePredicateSays) {
  const Tree tree = Tree::init({{1, 1}, {2, 2}, {3, 3}, {4, 4}});
  for (const KDPoint& point : tree.elements()) {
    EXPECT_EQ(tree.nearest(point, [](const KDPoint&) { return false; }), point);
  }
}

TEST(KDTree, theRadiusIsInclusive) {
  const Tree tree = Tree::init({{1, 0}, {0, 1}, {1, 1}});
  EXPECT_THAT(tree.allPoints(1, {0, 0}), UnorderedElementsAre(KDPoint{1, 0}, KDPoint{0, 1}));
}

TEST(KDTree, nearestKWithoutPlacesGivesNothing) {
  const Tree tree = Tree::init({{1, 0}, {0, 1}});
  EXPECT_THAT(tree.nearestK(0, {0, 0}), IsEmpty());
  EXPECT_THAT(tree.nearestK(-5, {0, 0}), IsEmpty());
  EXPECT_EQ(tree.nearestK(std::numeric_limits<std::ptrdiff_t>::max(), {0, 0}).size(), 2U);
}

TEST(KDTree, insertingGoesRightOfEqualCoordinatesAndLeavesTheOldTree) {
  const Tree one = Tree().inserting({1, 1}, 1);
  EXPECT_EQ(one.dimension(), 1U);
  const Tree two = one.inserting({5, 1}, 0);
  EXPECT_EQ(two.right().value(), (KDPoint{5, 1}));
  EXPECT_EQ(two.right().dimension(), 0U);
  EXPECT_EQ(two.inserting({0, 0}, 0).left().value(), (KDPoint{0, 0}));
  EXPECT_EQ(one.count(), 1U);
}

TEST(KDTree, removesEveryEqualValue) {
  const Tree tree = Tree::init({{1, 1}, {2, 2}, {1, 1}});
  EXPECT_EQ(tree.removing({1, 1}, 0).elements(), (std::vector<KDPoint>{{2, 2}}));
  EXPECT_EQ(tree.removing({9, 9}, 0), tree);
}

TEST(KDTree, mapsAndFilters) {
  const Tree tree = Tree::init({{1, 1}, {2, 2}, {3, 3}});
  EXPECT_THAT(tree.filter([](const KDPoint& p) { return p.x > 1; }).elements(),
              UnorderedElementsAre(KDPoint{2, 2}, KDPoint{3, 3}));
  const auto flipped = tree.map([](const KDPoint& p) { return KDPoint{-p.x, p.y}; });
  EXPECT_EQ(flipped.nearest({-3, 3}), (KDPoint{-3, 3}));
}

TEST(KDTree, describesItself) {
  const Tree tree = Tree::init({{1, 2}});
  EXPECT_EQ(tree.description(), "KDTree of 1 points, depth 1");
  EXPECT_THAT(tree.debugDescription(), HasSubstr("\naxis 0: (1, 2)"));
}

TEST(KDTree, manyEqualPointsAreBuiltAndSearchedInTime) {
  std::vector<KDPoint> points(200000);
  // Most coincide, the others lie past them on one axis, on the other or on both.
  for (std::size_t i = 0; i < points.size(); i += 10) {
    const auto far = static_cast<double>(i + 1);
    points[i] = i % 3 == 0 ? KDPoint{far, 0} : i % 3 == 1 ? KDPoint{0, far} : KDPoint{far, far};
  }
  const Tree tree = Tree::init(points);
  EXPECT_EQ(tree.count(), points.size());
  EXPECT_GT(tree.depth(), 100000U);
  EXPECT_EQ(tree.nearest({-1, -1}), (KDPoint{0, 0}));
  EXPECT_EQ(tree.nearest({199981, 1}), (KDPoint{199981, 0}));
}

TEST(KDTree, pointsOnTwoEdgesAreBuiltInTime) {
  std::vector<KDPoint> points;
  for (int i = 0; i < 100000; ++i)
    points.push_back(i % 2 == 0 ? KDPoint{0, 1.0 * i} : KDPoint{1.0 * i, 0});
  const Tree tree = Tree::init(points);
  EXPECT_LT(tree.depth(), 100U);
  EXPECT_TRUE(tree.contains({0, 99998}));
}

// Counts how often a coordinate is read: what takes quadratic time does so quadratically often.
struct CountedPoint {
  static constexpr std::size_t dimensions = 2;
  static inline std::size_t reads = 0;
  double x = 0;
  double y = 0;

  double kdDimension(std::size_t axis) const {
    ++reads;
    return axis == 0 ? x : y;
  }
  double squaredDistance(const CountedPoint& to) const {
    return (x - to.x) * (x - to.x) + (y - to.y) * (y - to.y);
  }
  friend bool operator==(const CountedPoint&, const CountedPoint&) = default;
};

TEST(KDTree, pointsThatDifferByLessThanTheMachinesEpsilonAreBuiltInTime) {
  constexpr std::size_t count = 20000;
  constexpr double tiny = 1e-21;
  const std::function<CountedPoint(double)> lines[] = {
      [](double i) {
        return CountedPoint{i * tiny, -i * tiny};
      },
      [](double i) {
        return CountedPoint{i * tiny, i};
      },
      // Each split leaves one or two on its left.
      [](double i) {
        return CountedPoint{i < count / 2.0 ? i * tiny : 2.2e-16 + i * tiny, i * tiny};
      },
      [](double i) {
        return CountedPoint{i * i * 1e-25, (count - i) * (count - i) * 1e-25};
      }};
  for (const auto& line : lines) {
    std::vector<CountedPoint> points;
    for (std::size_t i = 0; i < count; ++i) points.push_back(line(static_cast<double>(i)));
    CountedPoint::reads = 0;
    const auto tree = KDTree<CountedPoint>::init(points);
    EXPECT_EQ(tree.count(), count);
    EXPECT_LT(CountedPoint::reads, 200 * count);
  }
}

// Equal when they stand for the same thing, wherever they lie.
struct NamedPoint {
  static constexpr std::size_t dimensions = 2;
  double x = 0;
  double y = 0;
  int name = 0;

  double kdDimension(std::size_t axis) const { return axis == 0 ? x : y; }
  double squaredDistance(const NamedPoint& to) const {
    return (x - to.x) * (x - to.x) + (y - to.y) * (y - to.y);
  }
  friend bool operator==(const NamedPoint& a, const NamedPoint& b) { return a.name == b.name; }
  bool isSameAs(const NamedPoint& other) const {
    return x == other.x && y == other.y && name == other.name;
  }
};

RC_GTEST_PROP(KDTree, aValueThatEqualsThePointIsTheAnswerWhereverItLies, ()) {
  std::vector<NamedPoint> points(*rc::gen::inRange<std::size_t>(0, 60));
  const auto draw = [] {
    return NamedPoint{1.0 * *rc::gen::inRange(0, 40), 1.0 * *rc::gen::inRange(0, 40),
                      *rc::gen::inRange(0, 30)};
  };
  for (NamedPoint& point : points) point = draw();
  const NamedPoint query = draw();
  const auto accept = [limit = *rc::gen::inRange(0, 30)](const NamedPoint& p) {
    return p.name > limit;
  };
  const auto tree = KDTree<NamedPoint>::init(points);
  expectSame(tree.nearest(query, accept),
             LiteralTree<NamedPoint>(points).nearest(query, infinity, accept));
  RC_ASSERT(tree.contains(query) == (std::ranges::find(points, query) != points.end()));
}

TEST(KDTree, endlessCoordinatesAndSuchThatAreNoNumbersDoNoHarm) {
  const std::vector<double> odd{0, 1, -infinity, infinity, notANumber, 1e308, -0.0};
  std::vector<KDPoint> points;
  for (const double x : odd) {
    for (const double y : odd) points.push_back({x, y});
  }
  const Tree tree = Tree::init(points);
  for (const KDPoint& query : points) {
    const auto found = tree.nearest(query);
    double least = infinity;
    for (const KDPoint& point : points) {
      const double squared = point.squaredDistance(query);
      if (squared < least) least = squared;
    }
    if (least < infinity) {
      ASSERT_TRUE(found);
      EXPECT_EQ(found->squaredDistance(query), least);
    }
    EXPECT_EQ(tree.contains(query), std::ranges::find(points, query) != points.end());
    EXPECT_LE(tree.nearestK(100, query).size(), points.size());
    EXPECT_LE(tree.allPoints(2, query).size(), points.size());
    EXPECT_LE(tree.elementsIn({{query.x, 1}, {query.y, 1}}).size(), points.size());
  }
  EXPECT_EQ(tree.nearest({notANumber, 0}), std::nullopt);
}

class SavedKDTree : public testing::Test {
 protected:
  SavedKDTree() { setFileSystem(makeFileSystem(folder_.path().string())); }
  ~SavedKDTree() override { setFileSystem(nullptr); }

 private:
  TemporaryFolder folder_;
};

RC_GTEST_FIXTURE_PROP(SavedKDTree, comesBackAsItWas, ()) {
  std::vector<KDPoint> points;
  for (const auto& point : drawnPoints<2>())
    points.push_back({point.at[0] / 3.0, point.at[1] / 7.0});
  const Tree tree = Tree::init(points).inserting({-infinity, 0.1}, 0);
  RC_ASSERT(!tree.save("trees/one.json"));
  const auto loaded = Tree::initContentsOf("trees/one.json");
  RC_ASSERT(!loaded.error);
  RC_ASSERT(loaded.tree == tree);
  RC_ASSERT(loaded.tree.depth() == tree.depth());
}

TEST_F(SavedKDTree, anyChangeOfTheFileIsAnErrorOrMeansTheSame) {
  const Tree tree = Tree::init({{1, 2}, {3, 4}, {5, 6}, {1, 9}});
  ASSERT_FALSE(tree.save("tree.json"));
  const std::string text = *fileSystem()->readFile("tree.json");
  for (std::size_t i = 0; i < text.size(); ++i) {
    for (const char byte : {'0', '7', ',', ']', '"', ' ', '\xff'}) {
      std::string damaged = text;
      damaged[i] = byte;
      ASSERT_FALSE(fileSystem()->createFile("damaged.json", damaged));
      const auto loaded = Tree::initContentsOf("damaged.json");
      EXPECT_EQ(loaded.tree, loaded.error ? Tree() : tree) << damaged;
    }
    ASSERT_FALSE(fileSystem()->createFile("damaged.json", text.substr(0, i)));
    EXPECT_TRUE(Tree::initContentsOf("damaged.json").error) << "cut off at " << i;
  }
}

TEST_F(SavedKDTree, aMissingFileIsAnError) {
  const auto loaded = Tree::initContentsOf("nowhere.json");
  ASSERT_TRUE(loaded.error);
  EXPECT_EQ(loaded.error->code, "TN007");
  EXPECT_EQ(loaded.error->message, "k-d tree cannot be read: no such file");
}

TEST_F(SavedKDTree, aPlaceOutsideTheFolderIsAnErrorOfSaving) {
  const auto error = Tree::init({{1, 2}}).save("../tree.json");
  ASSERT_TRUE(error);
  EXPECT_THAT(error->message, HasSubstr("k-d tree cannot be saved: "));
}

TEST(KDTree, sealedNodesThatMakeNoTreeAreRefused) {
  constexpr std::int64_t beyond32Bits = std::int64_t{1} << 32U;
  const Value point = Value::list({1, 2});
  const auto errorOf = [&](std::initializer_list<Value> nodes) {
    const auto loaded = Tree::decode(KDTreeArchive::seal(Value::list(nodes), 2));
    return loaded.error ? loaded.error->message : "";
  };
  EXPECT_EQ(errorOf({Value::list({0, 1, point})}), "");
  for (const Value& node : {Value::list({0, 2, point}), Value::list({0, 0, point})}) {
    EXPECT_THAT(errorOf({node}), HasSubstr("nodes that make no tree"));
  }
  for (const Value& node :
       {Value(7), Value::list({0, 1}), Value::list({2, 1, point}), Value::list({-1, 1, point}),
        Value::list({0, 1, "here"}), Value::list({0, -1, point}), Value::list({0.5, 1, point}),
        Value::list({0, 1.5, point}), Value::list({0, beyond32Bits + 1, point}),
        Value::list({beyond32Bits, 1, point})}) {
    EXPECT_THAT(errorOf({node}), HasSubstr("a bad node"));
  }
}

}  // namespace
}  // namespace test
}  // namespace tern
