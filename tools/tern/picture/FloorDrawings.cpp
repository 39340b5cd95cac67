#include "tools/tern/picture/FloorDrawings.hpp"

#include "TernCoreKit/model/records/TernMap.hpp"
#include "tools/tern/picture/DrawingImage.hpp"
#include "tools/tern/picture/MapWindow.hpp"

namespace tern::picture {

namespace {

// With larger drawings together a phone gives up.
constexpr std::size_t mostBytes = 48U << 20U;
constexpr double mostUnits = 1e7;

std::optional<Box> statedFrame(const TernMap& map) {
  const double width = map.width.number();
  const double height = map.height.number();
  const bool isSize = width > 0 && width <= mostUnits && height > 0 && height <= mostUnits;
  return isSize ? std::optional(Box{0, 0, width, height}) : std::nullopt;
}

FloorDrawing withoutDrawing(const std::optional<Box>& frame, const std::string& note) {
  return {{}, frame, toneOf({}), {}, note};
}

}  // namespace

const FloorDrawing& FloorDrawings::of(const TernMap* map) {
  const auto [known, isNew] = known_.try_emplace(map);
  if (isNew) known->second = read(map);
  return known->second;
}

FloorDrawing FloorDrawings::read(const TernMap* map) {
  if (map == nullptr) return withoutDrawing({}, "The venue has no map of this floor.");
  const std::optional<Box> stated = statedFrame(*map);
  if (!map->svg.isText()) return withoutDrawing(stated, "This floor has no drawing.");
  const DrawingImage image = imageOf(map->svg.text(), stated);
  if (!image.problem.empty()) {
    return withoutDrawing(stated, "The floor's drawing is left out: " + image.problem + ".");
  }
  bytes_ += image.uri.size();
  if (bytes_ > mostBytes) {
    return withoutDrawing(image.frame,
                          "The floor's drawing is left out: the picture is too large.");
  }
  const std::string id = "drawing-" + std::to_string(known_.size());
  images_.leaf("image", {{"id", id},
                         {"x", significant(image.frame.left)},
                         {"y", significant(image.frame.top)},
                         {"width", significant(image.frame.width())},
                         {"height", significant(image.frame.height())},
                         {"preserveAspectRatio", "none"},
                         {"href", image.uri}});
  images_.line();
  FloorDrawing drawing{id, image.frame, {}, marksOf(map->svg.text(), image.frame), {}};
  drawing.tone = toneOf(drawing.marks);
  if (drawing.tone.light) writeFilter(id + "-light", *drawing.tone.light);
  writeFilter(id + "-dark", drawing.tone.dark);
  darkRules_ += "." + id + " { filter: url(#" + id + "-dark); opacity: 1; }\n";
  return drawing;
}

// It is as large as any map's window, however large the drawing is that lies behind it.
void FloorDrawings::writeFilter(const std::string& id, const Tone& tone) {
  images_.open("filter", {{"id", id},
                          {"filterUnits", "userSpaceOnUse"},
                          {"x", 0},
                          {"y", 0},
                          {"width", MapWindow::width},
                          {"height", MapWindow::mostHeight},
                          {"color-interpolation-filters", "sRGB"}});
  images_.leaf("feColorMatrix", {{"values", tone.matrix()}}).close().line();
}

}  // namespace tern::picture
