// The map of one floor in a picture: the card with the floor's drawing on it, what is drawn over it
// and the labels, which find their places beside one another.
//
// What comes first lies below what comes later. All lengths are in pixels of the picture.
//
// Ownership: borrows the map and the drawing.
// Threads: one caller at a time.
// Fails: never.
//
//   FloorCanvas canvas({map, &drawing, "r1f1-", points});
//   canvas.stroke(canvas.inPicture(points), palette::route, 6);
//   canvas.label(at, 12, "Juniper Bakery", FloorCanvas::Weight::strong);
//   const PanelDrawing panel = canvas.finish();
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "tools/tern/picture/DrawnNames.hpp"
#include "tools/tern/picture/FloorDrawings.hpp"
#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/LabelPlacer.hpp"
#include "tools/tern/picture/MapWindow.hpp"
#include "tools/tern/picture/Markup.hpp"

namespace tern::picture {

struct PanelDrawing {
  // SVG elements between (0, 0) and the size, in pixels of the picture. They refer to the drawing.
  std::string markup;
  Size size;
  // What the reader of the picture should know; empty when there is nothing.
  std::string note;
};

struct CanvasRequest {
  // Null when the venue has no such map.
  const TernMap* map = nullptr;
  const FloorDrawing* drawing = nullptr;
  // Of every id in the panel: letters, digits and -.
  std::string idPrefix;
  // What must be seen, in map units.
  std::vector<Point> points;
  // What is drawn faintly beneath, where the floor itself has next to nothing; may be null.
  const FloorDrawing* ghost = nullptr;
};

// The part of the floor that a canvas shows. REQUIRES: a drawing.
MapWindow windowOf(const CanvasRequest& request);

class FloorCanvas {
 public:
  enum class Weight { normal, strong };

  // REQUIRES: a drawing.
  explicit FloorCanvas(const CanvasRequest& request);

  // The line in pixels, without points that lie on one another.
  std::vector<Point> inPicture(const std::vector<Point>& points) const;

  void stroke(const std::vector<Point>& line, std::string_view colour, double width);
  void strokes(const std::vector<std::vector<Point>>& lines, std::string_view colour, double width);
  // A line of short strokes.
  void dashes(const std::vector<Point>& line, std::string_view colour, double width);
  // A bar that says how long so many metres are, away from the points where that can be had;
  // nothing for a map without a scale.
  void scaleBar(const std::vector<Point>& points);
  // A label at least `clearance` from its point, or over what the drawing says of that name near
  // it; a name that is too long is cut.
  void label(Point at, double clearance, std::string_view text, Weight weight);
  // A name on the first of the points where all of it has room, or nowhere. One that the drawing
  // itself says in letters that can be read is left to it; over smaller ones it is written.
  void name(const std::vector<Point>& places, std::string_view text, Weight weight);

  // For what is drawn besides; labels keep off what the placer is told.
  Markup& out() { return out_; }
  LabelPlacer& placer() { return placer_; }
  Size size() const { return window_.size(); }
  Point toPicture(Point map) const { return window_.toPicture(map); }

  PanelDrawing finish();

 private:
  void begin(const CanvasRequest& request);
  void drawFloor(const FloorDrawing& floor);
  void avoidWhatIsDrawn();
  // Where the drawing says the name near one of the points and nothing else would be hidden.
  std::optional<Box> overDrawn(const std::vector<Point>& places, std::string_view name, Size size);
  void drawPlate(const Box& box);
  void drawName(const Box& box, const std::vector<std::string>& lines, Weight weight);
  void drawBar(const Box& box, double length, const std::string& label);
  void drawBorder();

  const TernMap* map_;
  const FloorDrawing& floor_;
  MapWindow window_;
  DrawnNames drawn_;
  LabelPlacer placer_;
  Markup out_;
};

}  // namespace tern::picture
