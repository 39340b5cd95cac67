#include "tools/generate/Icons.hpp"

namespace tern::generate {

namespace {

struct Picture {
  std::string_view tile;
  // White path data relative to the middle of the tile.
  std::string_view data;
};

// In the order of `Icon`.
constexpr Picture pictures[] = {
    {"#5e8c6a", "m-18 -5h18v-12l19 17l-19 17v-12h-18z"},
    {"#5f7d95",
     "m-12 -21a5 5 0 1 0 .01 0zm-7 13h14v15h-3v13h-8v-13h-3z"
     "m31 -13a5 5 0 1 0 .01 0zm-4 13h8l6 18h-5v10h-10v-10h-5z"},
    {"#5f7d95", "m0 -22a6 6 0 1 0 .01 0zm-8 16h12v22h5v6h-18v-6h5v-16h-4z"},
    {"#5f7d95", "m-23 -14h46v28h-46zm23 6a8 8 0 1 0 .01 0zm-17 5v6h5v-6zm29 0v6h5v-6z"},
    {"#5f7d95",
     "m-18 -6h17v-15a17 17 0 0 1 17 17h5v5h-6a15 15 0 0 1 -6 9h-20a15 15 0 0 1 -7 -11z"
     "m9 18a5 5 0 1 0 .01 0zm18 0a5 5 0 1 0 .01 0z"},
    {"#4f6478", "m-9 -18l11 15h-22zm0 36l-11 -15h22zm18 -36l11 15h-22zm0 36l-11 -15h22z"},
    {"#4f6478", "m-22 10h12l22 -22h12v8h-9l-22 22h-15z"},
    {"#4f6478", "m-22 20v-10h11v-10h11v-10h11v-10h11v40z"},
};

const Picture& pictureOf(Icon icon) { return pictures[static_cast<int>(icon)]; }

}  // namespace

Icon iconOf(Amenity amenity) { return static_cast<Icon>(amenity); }

void drawIcon(drawing::SvgText& svg, Icon icon, Point centre) {
  const int half = iconSizePx / 2;
  const Picture& picture = pictureOf(icon);
  svg.rect({centre.x - half, centre.y - half, centre.x + half, centre.y + half},
           "rx=\"12\" fill=\"" + std::string(picture.tile) + "\"");
  svg.shape(centre, picture.data, "fill=\"#fff\" fill-rule=\"evenodd\"");
}

std::string iconSvg(Icon icon) {
  drawing::SvgText svg(iconSizePx, iconSizePx);
  drawIcon(svg, icon, {iconSizePx / 2, iconSizePx / 2});
  return svg.finished();
}

}  // namespace tern::generate
