// A floor's drawing, which comes as text from a service, as an image inside a picture of ours.
//
// Whatever shows the picture draws an image apart from all that is around it: no script in it runs,
// nothing that it names is loaded, and it reaches nothing outside of itself. So a drawing need not
// be understood to be shown. It goes into a data URI, whose letters end no attribute and no
// element, and may hold there what it likes; one that is not well-formed shows nothing.
//
// Only its first tag is read and written anew. The size and the placing that it states there give
// way to ours, so that a map unit is as long and lies where the route expects it, and the names of
// SVG and XLink are added, which a drawing that once stood in a page may lack.
//
// Ownership: a plain value that owns its contents.
// Threads: free functions.
// Fails: `problem` says why there is nothing to show.
//
//   const DrawingImage image = imageOf(map.svg.text(), std::nullopt);
//   if (image.problem.empty()) markup.leaf("image", {{"href", image.uri}});
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

// Readers of XML refuse a value of more than ten million bytes, and with it the whole picture.
inline constexpr std::size_t mostDrawingBytes = 7U << 20U;

struct [[nodiscard]] DrawingImage {
  std::string uri;
  // What the image fills, in map units.
  Box frame;
  // Empty when the drawing can be shown.
  std::string problem;
};

// The frame is the drawing's viewBox, else its size, else `stated`.
DrawingImage imageOf(std::string_view svg, const std::optional<Box>& stated);

}  // namespace tern::picture
