// How light a floor's drawing is shown, so that its walls are seen and the route over it is seen
// better. A drawing that is fine is muted a little or left as it is; one that is too pale is given
// contrast; on a dark screen light turns to dark, and colours keep what makes them colours.
//
// Threads: plain values and free functions. Fails: never; of a drawing that says nothing of its
// colours a white floor is supposed.
//
//   const FloorTone tone = toneOf(marks);
//   if (tone.light) filter.leaf("feColorMatrix", {{"values", tone.light->matrix()}});
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/tern/picture/Colour.hpp"
#include "tools/tern/picture/DrawingMarks.hpp"

namespace tern::picture {

// The least contrast of walls on their floor, of areas on it, and of the floor on the card below.
inline constexpr double wallContrast = 3;
inline constexpr double areaContrast = 1.2;
inline constexpr double cardContrast = 1.1;

// What becomes of each colour: its luma, away from that of the floor, is multiplied by the slope;
// what is left of the colour without it stays.
struct Tone {
  double slope = 1;
  double from = 0;
  double to = 0;

  Colour operator()(const Colour& colour) const;
  // As an feColorMatrix takes it.
  std::string matrix() const;
};

struct FloorTone {
  double opacity = 1;
  // Absent where the drawing's colours stay as they are.
  std::optional<Tone> light;
  Tone dark;
  // The card that the drawing lies on.
  std::string_view card;
};

FloorTone toneOf(const DrawingMarks& marks);

}  // namespace tern::picture
