#include "tools/check/CheckPicture.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "tools/check/PictureKey.hpp"
#include "tools/check/PictureMarks.hpp"
#include "tools/tern/picture/FloorCanvas.hpp"
#include "tools/tern/picture/FloorDrawings.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/words/FloorName.hpp"

namespace tern::check {

namespace {

namespace palette = picture::palette;

using Lines = std::vector<std::vector<picture::Point>>;
using Nodes = std::vector<std::uint32_t>;

constexpr double joinedWidthPx = 1.5;
constexpr double islandWidthPx = 3.5;

// "2 islands, 1 one-way trap."
std::string summaryOf(const Findings& findings) {
  std::array<std::size_t, kindCount> counts{};
  for (const Finding& finding : findings) ++counts[static_cast<std::size_t>(finding.kind)];
  std::string text;
  for (std::size_t i = 0; i < kindCount; ++i) {
    if (counts[i] == 0) continue;
    const KindText& words = textOf(static_cast<Kind>(i));
    text += (text.empty() ? "" : ", ") + std::to_string(counts[i]) + " ";
    text += counts[i] == 1 ? words.singular : words.plural;
  }
  return text.empty() ? "Nothing found." : text + ".";
}

class FloorPainter {
 public:
  FloorPainter(const Subject& subject, const PictureMarks& marks,
               const picture::CanvasRequest& request)
      : subject_(subject), marks_(marks), canvas_(request) {}

  picture::PanelDrawing paint(const Nodes& nodes) {
    paintLinks(nodes);
    std::vector<picture::Point> dots;
    for (const std::uint32_t node : nodes) {
      dots.push_back(at(node));
      if (marks_.ranks[node] > 0) drawDot(canvas_.out(), dots.back(), marks_.ranks[node]);
    }
    canvas_.scaleBar(dots);
    paintMarks(nodes);
    return canvas_.finish();
  }

 private:
  picture::Point at(std::uint32_t node) const {
    const Point at = subject_.network.nodes()[node].at;
    return canvas_.toPicture({at.x, at.y});
  }

  // All of a colour at once, and islands above the mainland.
  void paintLinks(const Nodes& nodes) {
    std::array<Lines, lastRank + 1> lines;
    for (const auto& [from, to] : linksOf(nodes)) {
      lines[std::min(marks_.ranks[from], lastRank)].push_back({at(from), at(to)});
    }
    for (std::uint32_t rank = 0; rank <= lastRank; ++rank) {
      const double width = rank == 0 ? joinedWidthPx : islandWidthPx;
      canvas_.strokes(lines[rank], palette::casing, width + 2);
      canvas_.strokes(lines[rank], colourOf(rank), width);
    }
  }

  // Their ends, once for both ways.
  std::vector<std::pair<std::uint32_t, std::uint32_t>> linksOf(const Nodes& nodes) const {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> links;
    for (const std::uint32_t node : nodes) {
      for (const Link& link : subject_.network.linksOf(node)) {
        const bool isHere = std::ranges::binary_search(nodes, link.to);
        if (isHere) links.emplace_back(std::min(node, link.to), std::max(node, link.to));
      }
    }
    std::ranges::sort(links);
    links.erase(std::unique(links.begin(), links.end()), links.end());
    return links;
  }

  void paintMarks(const Nodes& nodes) {
    for (const auto& [from, to] : marks_.wrongLinks) {
      const bool isHere =
          std::ranges::binary_search(nodes, from) && std::ranges::binary_search(nodes, to);
      if (isHere) canvas_.dashes({at(from), at(to)}, palette::ink, 2);
    }
    for (const auto& [node, mark] : marks_.nodes) {
      if (std::ranges::binary_search(nodes, node)) drawMark(canvas_.out(), at(node), mark);
    }
  }

  const Subject& subject_;
  const PictureMarks& marks_;
  picture::FloorCanvas canvas_;
};

class Planner {
 public:
  Planner(const Subject& subject, const Findings& findings)
      : subject_(subject), marks_(marksOf(subject, findings)) {
    const std::vector<Node>& nodes = subject.network.nodes();
    for (std::uint32_t node = 0; node < nodes.size(); ++node) {
      if (isDrawn(nodes[node])) floors_[nodes[node].map].push_back(node);
    }
  }

  picture::PicturePlan plan(const Findings& findings) {
    picture::PicturePlan plan;
    plan.subject = "Check of " + std::string(subject_.venue.name.text());
    plan.summary = summaryOf(findings);
    PictureKey key = keyOf(subject_, marks_);
    plan.legend = std::move(key.drawing);
    plan.legendWords = std::move(key.words);
    picture::PlannedRoute whole;
    if (subject_.venue.maps != nullptr) {
      for (const TernMap& map : subject_.venue.maps->each()) {
        const auto nodes = floors_.find(map.id.integer());
        if (nodes != floors_.end()) whole.panels.push_back(panelOf(map, nodes->second));
      }
    }
    plan.routes.push_back(std::move(whole));
    plan.drawings = drawings_.takeMarkup();
    plan.darkRules = drawings_.darkRules();
    return plan;
  }

 private:
  static bool isDrawn(const Node& node) {
    return std::isfinite(node.at.x) && std::isfinite(node.at.y);
  }

  picture::PlannedPanel panelOf(const TernMap& map, const Nodes& nodes) {
    const std::int64_t id = map.id.integer();
    picture::CanvasRequest request{
        &map, &drawings_.of(&map), "f" + std::to_string(id) + "-", {}, nullptr};
    for (const std::uint32_t node : nodes) {
      const Point at = subject_.network.nodes()[node].at;
      request.points.push_back({at.x, at.y});
    }
    const std::string count = waypointsText(nodes.size());
    const words::FloorName name = words::floorName(subject_.venue, id);
    return {name,
            count,
            FloorPainter(subject_, marks_, request).paint(nodes),
            name.text() + ": " + count + ".",
            {}};
  }

  const Subject& subject_;
  const PictureMarks marks_;
  // For each map its nodes, ascending.
  std::map<std::int64_t, Nodes> floors_;
  picture::FloorDrawings drawings_;
};

}  // namespace

picture::PicturePlan planOf(const Subject& subject, const Findings& findings) {
  return Planner(subject, findings).plan(findings);
}

}  // namespace tern::check
