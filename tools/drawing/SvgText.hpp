// Builds the text of an SVG drawing, shape by shape, in whole pixels.
//
// Threads: one caller at a time.
#pragma once

#include <string>
#include <string_view>

#include "tools/drawing/Geometry.hpp"

namespace tern::drawing {

using PixelPoint = PointOf<int>;
using PixelBox = BoxOf<int>;

class SvgText {
 public:
  // Opens the document; its viewBox is "0 0 width height".
  SvgText(int width, int height);

  // `style` is further attributes, e.g. `fill="#fff" rx="4"`.
  void rect(const PixelBox& box, std::string_view style = {});
  void circle(PixelPoint centre, int radius, std::string_view style = {});
  // `data` is path data relative to the point.
  void shape(PixelPoint at, std::string_view data, std::string_view style = {});
  void text(PixelPoint at, int size, std::string_view words, std::string_view style = {});

  void openGroup(std::string_view style);
  void closeGroup();

  // Closes the document and gives it away.
  std::string finished();

 private:
  std::string out_;
};

}  // namespace tern::drawing
