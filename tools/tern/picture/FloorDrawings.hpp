// The drawings of the floors that a picture shows, each held once however many panels show it.
//
// Ownership: borrows the maps until the markup is taken.
// Threads: one caller at a time.
// Fails: never; a drawing that cannot be shown is left out, and its note says so.
//
//   FloorDrawings drawings;
//   const FloorDrawing& drawing = drawings.of(map);
//   panel.leaf("use", {{"href", "#" + drawing.id}});
//   picture.open("defs").raw(drawings.takeMarkup()).close();
//   style.raw(drawings.darkRules());
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "tools/tern/picture/DrawingMarks.hpp"
#include "tools/tern/picture/FloorTone.hpp"
#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/Markup.hpp"

namespace tern::picture {

struct FloorDrawing {
  // Of the element that draws it in map units; empty when there is none.
  std::string id;
  // What the floor fills, in map units.
  std::optional<Box> frame;
  FloorTone tone;
  DrawingMarks marks;
  // What the reader of the picture should know; empty when there is nothing.
  std::string note;
};

class FloorDrawings {
 public:
  // The map's drawing, or why there is none; it lives as long as this object. `map` may be null.
  const FloorDrawing& of(const TernMap* map);

  // The elements that the ids name: "drawing-1" is the drawing, "drawing-1-light" and
  // "drawing-1-dark" are the filters that it is shown through, the first where its colours change.
  std::string takeMarkup() { return images_.take(); }

  // Rules of CSS by which what is of the class of a drawing's id is shown on a dark screen.
  const std::string& darkRules() const { return darkRules_; }

 private:
  FloorDrawing read(const TernMap* map);
  void writeFilter(const std::string& id, const Tone& tone);

  std::map<const TernMap*, FloorDrawing> known_;
  Markup images_;
  std::string darkRules_;
  std::size_t bytes_ = 0;
};

}  // namespace tern::picture
