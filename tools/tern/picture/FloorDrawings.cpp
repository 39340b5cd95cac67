#include "tools/tern/picture/FloorDrawings.hpp"

#include "TernCoreKit/model/records/TernMap.hpp"
#include "tools/tern/picture/DrawingImage.hpp"

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

}  // namespace

const FloorDrawing& FloorDrawings::of(const TernMap* map) {
  const auto [known, isNew] = known_.try_emplace(map);
  if (isNew) known->second = read(map);
  return known->second;
}

FloorDrawing FloorDrawings::read(const TernMap* map) {
  if (map == nullptr) return {{}, {}, "The venue has no map of this floor."};
  const std::optional<Box> stated = statedFrame(*map);
  if (!map->svg.isText()) return {{}, stated, "This floor has no drawing."};
  const DrawingImage image = imageOf(map->svg.text(), stated);
  if (!image.problem.empty()) {
    return {{}, stated, "The floor's drawing is left out: " + image.problem + "."};
  }
  bytes_ += image.uri.size();
  if (bytes_ > mostBytes) {
    return {{}, image.frame, "The floor's drawing is left out: the picture is too large."};
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
  return {id, image.frame, {}};
}

}  // namespace tern::picture
