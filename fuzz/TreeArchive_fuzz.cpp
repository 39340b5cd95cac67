// Saved k-d trees: an archive as it comes, and its nodes under a checksum that is right, so that
// damage inside is seen too. What is read answers as a scan over its points does.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/spatial/tree/KDTree.hpp"
#include "fuzz/Target.hpp"

namespace tern::fuzz {
namespace {

using Tree = KDTree<KDPoint>;

const std::vector<KDPoint> questions = {{0, 0}, {3, 4}, {-1e9, 2.5}, {1e308, -1e308}};

void checkAgainstScan(const Tree& tree, const std::vector<KDPoint>& points) {
  for (const KDPoint& question : questions) {
    double least = std::numeric_limits<double>::infinity();
    std::size_t within = 0;
    for (const KDPoint& point : points) {
      const double distance = point.squaredDistance(question);
      if (distance < least) least = distance;
      if (std::abs(point.x - question.x) <= 5 && std::abs(point.y - question.y) <= 5 &&
          distance <= 25) {
        ++within;
      }
    }
    const auto nearest = tree.nearest(question);
    require(!std::isfinite(least) || (nearest && nearest->squaredDistance(question) == least),
            "nothing is nearer than the nearest");
    require(tree.allPoints(5, question).size() == within, "all points within are found");
    require(tree.nearestK(3, question).size() <= 3, "no more are given than wanted");
  }
}

void checkDecoded(const Value& archive) {
  const auto loaded = Tree::decode(archive);
  if (loaded.error) {
    require(loaded.tree.isEmpty(), "with an error the tree is empty");
    require(!loaded.error->errorDescription.empty(), "an error says what is wrong");
    return;
  }
  const std::vector<KDPoint> points = loaded.tree.elements();
  require(points.size() == loaded.tree.count(), "a tree has as many values as it counts");
  require(loaded.tree.depth() <= points.size(), "a tree is no deeper than it is large");
  const auto again = Tree::decode(loaded.tree.encode());
  const bool hasNoNaN = std::ranges::none_of(
      points, [](const KDPoint& p) { return std::isnan(p.x) || std::isnan(p.y); });
  require(!again.error && again.tree.count() == points.size(), "a tree reads back");
  require(!hasNoNaN || again.tree == loaded.tree, "and is the same");
  for (const KDPoint& question : questions) {
    static_cast<void>(loaded.tree.nearest(question));
    require(loaded.tree.nearestK(2, question).size() <= 2, "no more are given than wanted");
  }
  if (points.size() < 2'000) checkAgainstScan(Tree::init(points), points);
}

void run(const std::string& text) {
  const JsonResult archive = decodeJson(text);
  if (archive.error) return;
  checkDecoded(archive.value);
  checkDecoded(KDTreeArchive::seal(archive.value["nodes"], 2));
}

std::vector<std::string> seeds() {
  std::vector<std::string> texts;
  std::vector<KDPoint> points;
  for (int i = 0; i < 24; ++i) {
    points.push_back({i * 37 % 11 * 1.5, i * 53 % 13 - 4.0});
    if (i % 6 != 1) continue;
    texts.push_back(encodeJson(Tree::init(points).encode(), JsonLayout::compact));
  }
  texts.push_back(encodeJson(Tree::init({{INFINITY, 1}, {-INFINITY, NAN}, {0, 0}}).encode(),
                             JsonLayout::compact));
  return texts;
}

}  // namespace

extern const Target treeArchiveTarget{
    .name = "tree-archive", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
