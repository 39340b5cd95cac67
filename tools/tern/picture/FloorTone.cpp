#include "tools/tern/picture/FloorTone.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/Palette.hpp"

namespace tern::picture {

namespace {

constexpr double mutedOpacity = 0.75;
// The luma of a floor on a dark screen; one that is darker stays as it is.
constexpr double darkFloor = 0.15;
constexpr double lightest = 0.45;
constexpr double slopeStep = 1.05;
constexpr double steepest = 40;

Colour colourOf(std::string_view name) { return readPaint(name).value_or(Paint{}).colour; }

// What has to be told from the floor.
struct Wanted {
  Colour floor;
  std::optional<Colour> lines;
  std::optional<Colour> areas;

  template <class Change>
  bool isSeen(const Change& change) const {
    const Colour ground = change(floor);
    return (!lines || contrast(change(*lines), ground) >= wallContrast) &&
           (!areas || contrast(change(*areas), ground) >= areaContrast);
  }
};

// The gentlest tone that shows all, beginning at that slope; where the floor itself leaves too
// little room, it gives way.
Tone gentlest(const Wanted& wanted, double to, double slope) {
  const double from = luma(wanted.floor);
  Tone tone{slope, from, to};
  while (!wanted.isSeen(tone) && std::abs(tone.slope) < steepest) tone.slope *= slopeStep;
  const double away = luma(tone(wanted.lines.value_or(wanted.floor))) > to ? -0.02 : 0.02;
  for (int i = 0; i < 50 && !wanted.isSeen(tone); ++i) {
    tone.to = std::clamp(tone.to + away, 0.0, 1.0);
  }
  return tone;
}

std::string_view cardUnder(const Colour& floor) {
  const auto seen = [&](std::string_view card) { return contrast(colourOf(card), floor); };
  return seen(palette::paper) >= cardContrast || seen(palette::paper) >= seen(palette::deepPaper)
             ? palette::paper
             : palette::deepPaper;
}

}  // namespace

Colour Tone::operator()(const Colour& colour) const {
  const double shift = to + slope * (luma(colour) - from) - luma(colour);
  const auto part = [&](double value) { return std::clamp(value + shift, 0.0, 1.0); };
  return {part(colour.red), part(colour.green), part(colour.blue)};
}

std::string Tone::matrix() const {
  constexpr std::array weights{0.2126, 0.7152, 0.0722};
  std::string rows;
  for (std::size_t row = 0; row < weights.size(); ++row) {
    for (std::size_t column = 0; column < weights.size(); ++column) {
      rows += significant((row == column ? 1 : 0) + (slope - 1) * weights[column]) + " ";
    }
    rows += "0 " + significant(to - slope * from) + " ";
  }
  return rows + "0 0 0 1 0";
}

FloorTone toneOf(const DrawingMarks& marks) {
  const Colour paper = colourOf(palette::paper);
  const Wanted wanted{marks.floor.value_or(white), marks.lines,
                      marks.lines ? std::nullopt : marks.areas};
  const double floor = luma(wanted.floor);
  FloorTone tone;
  const auto muted = [&](const Colour& colour) { return mixed(paper, colour, mutedOpacity); };
  const auto asDrawn = [](const Colour& colour) { return colour; };
  if (wanted.isSeen(muted)) {
    tone.opacity = mutedOpacity;
  } else if (!wanted.isSeen(asDrawn)) {
    tone.light = gentlest(wanted, floor, 1);
  }
  tone.dark = floor > lightest ? gentlest(wanted, darkFloor, -0.8) : gentlest(wanted, floor, 1);
  const Colour shown = tone.light ? (*tone.light)(wanted.floor) : wanted.floor;
  tone.card = cardUnder(mixed(paper, shown, tone.opacity));
  return tone;
}

}  // namespace tern::picture
