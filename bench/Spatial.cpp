// The k-d tree beside nanoflann, over the same points and queries.
#include <cstdio>
#include <limits>
#include <memory>
#include <nanoflann.hpp>
#include <random>
#include <vector>

#include "TernCoreKit/spatial/tree/KDTree.hpp"
#include "bench/Bench.hpp"

namespace tern::bench {

namespace {

using Points = std::vector<KDPoint>;

struct PointList {
  const Points& points;
  std::size_t kdtree_get_point_count() const { return points.size(); }
  double kdtree_get_pt(std::size_t i, std::size_t axis) const {
    return points[i].kdDimension(axis);
  }
  template <class Box>
  bool kdtree_get_bbox(Box&) const {
    return false;
  }
};

using Nanoflann =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, PointList>, PointList,
                                        2>;

// One point in a hundred.
bool isWanted(const KDPoint& point) { return static_cast<std::int64_t>(point.x * 1024) % 100 == 0; }

// The nearest point that a predicate accepts.
struct WantedNearest {
  using DistanceType = double;

  const Points& points;
  double best = std::numeric_limits<double>::max();

  bool addPoint(double distance, std::size_t index) {
    if (distance < best && isWanted(points[index])) best = distance;
    return true;
  }
  bool full() const { return true; }
  double worstDist() const { return best; }
};

// Coordinates of maps of up to a few thousand units, as documents have them.
Points randomPoints(std::size_t count, unsigned seed) {
  std::mt19937_64 random(seed);
  Points points(count);
  for (KDPoint& point : points) {
    point = {static_cast<double>(random() >> 42U) / 1024,
             static_cast<double>(random() >> 42U) / 1024};
  }
  return points;
}

std::size_t builtSize(const PointList& list) {
  const Nanoflann index(2, list);
  return index.size(index);
}

// Sums the squared distances, so that both sides can be seen to find the same.
template <class Query>
double sumOver(const Points& queries, Query query) {
  double sum = 0;
  for (const KDPoint& at : queries) sum += query(at);
  return sum;
}

struct Race {
  const char* what;
  std::function<double()> ours, theirs;
  double target;
};

void run(std::size_t count, const Race& race_) {
  if (race_.ours() != race_.theirs()) {
    std::printf("the answers differ\n");
    std::exit(1);
  }
  const auto seconds = race(
      {{"tern", [&] { keep(race_.ours()); }}, {"nanoflann", [&] { keep(race_.theirs()); }}}, 21);
  std::printf("%8zu points, %-9s %5.2f times as fast as nanoflann (target %.1f), %.3f ms\n", count,
              race_.what, ratioOf(seconds[1], seconds[0]), race_.target, median(seconds[0]) * 1e3);
}

void benchPoints(std::size_t count) {
  const Points points = randomPoints(count, 1);
  const Points queries = randomPoints(20000, 2);
  const Points fewQueries(queries.begin(), queries.begin() + 2000);
  const PointList list{points};
  const auto tree = KDTree<KDPoint>::init(points);
  const Nanoflann index(2, list);
  run(count, {"nearest",
              [&] {
                return sumOver(queries, [&](const KDPoint& at) {
                  return tree.nearest(at)->squaredDistance(at);
                });
              },
              [&] {
                return sumOver(queries, [&](const KDPoint& at) {
                  std::uint32_t found = 0;
                  double squared = 0;
                  index.knnSearch(&at.x, 1, &found, &squared);
                  return squared;
                });
              },
              1.3});
  run(count, {"wanted",
              [&] {
                return sumOver(fewQueries, [&](const KDPoint& at) {
                  const auto found = tree.nearest(at, isWanted);
                  return found ? found->squaredDistance(at) : 0;
                });
              },
              [&] {
                return sumOver(fewQueries, [&](const KDPoint& at) {
                  WantedNearest found{points};
                  index.findNeighbors(found, &at.x, nanoflann::SearchParams());
                  return found.best;
                });
              },
              1.1});
  run(count,
      {"building", [&] { return static_cast<double>(KDTree<KDPoint>::init(points).count()); },
       [&] { return static_cast<double>(builtSize(list)); }, 1.0});
}

}  // namespace

void benchSpatial() {
  for (const std::size_t count : {1000U, 10000U, 100000U}) benchPoints(count);
}

}  // namespace tern::bench
