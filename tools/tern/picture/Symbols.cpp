#include "tools/tern/picture/Symbols.hpp"

#include <string>
#include <string_view>

#include "tools/tern/picture/Palette.hpp"

namespace tern::picture {

namespace {

// How far the pin's point goes in, so that it covers the round end of a line.
constexpr double pinDepthPx = 3;

std::string movedTo(Point at) { return "translate(" + decimal(at.x) + " " + decimal(at.y) + ")"; }

std::string_view arrowOf(Heading heading) {
  switch (heading) {
    case Heading::up:
      return "M0 5.5V-5M-4.5-.8 0-5.3 4.5-.8";
    case Heading::down:
      return "M0-5.5V5M-4.5 .8 0 5.3 4.5 .8";
    case Heading::across:
      return "M-5.5 0H5M.8-4.5 5.3 0 .8 4.5";
  }
  return {};
}

}  // namespace

void drawStart(Markup& out, Point at) {
  out.open("g", {{"transform", movedTo(at)}})
      .leaf("circle", {{"r", startRadiusPx}, {"fill", palette::casing}})
      .leaf("circle", {{"r", startRadiusPx - 3.5},
                       {"fill", palette::casing},
                       {"stroke", palette::start},
                       {"stroke-width", 4}})
      .close();
}

void drawAsked(Markup& out, Point at) {
  const std::string cross =
      "M-" + decimal(askedRadiusPx - 1) + " 0h5m6 0h5M0-" + decimal(askedRadiusPx - 1) + "v5m0 6v5";
  out.open("g", {{"transform", movedTo(at)}})
      .leaf("circle", {{"r", askedRadiusPx}, {"fill", palette::casing}})
      .leaf("circle", {{"r", askedRadiusPx - 3.5},
                       {"fill", "none"},
                       {"stroke", palette::ink},
                       {"stroke-width", 1.5}})
      .leaf("path", {{"d", cross}, {"stroke", palette::ink}, {"stroke-width", 1.5}})
      .leaf("circle", {{"r", 1.8}, {"fill", palette::ink}})
      .close();
}

void drawGoal(Markup& out, Point at) {
  out.open("g", {{"transform", movedTo({at.x, at.y + pinDepthPx})}})
      .leaf("path",
            {{"d", "M0 0C-2.5-6.5-9.5-10-9.5-17.5A9.5 9.5 0 0 1 9.5-17.5C9.5-10 2.5-6.5 0 0Z"},
             {"fill", palette::goal},
             {"stroke", palette::casing},
             {"stroke-width", 2},
             {"stroke-linejoin", "round"}})
      .leaf("circle", {{"cy", -17.5}, {"r", 3.6}, {"fill", palette::casing}})
      .close();
}

void drawArrival(Markup& out, Point at) {
  out.leaf("circle", {{"cx", at.x},
                      {"cy", at.y},
                      {"r", arrivalRadiusPx - 1.5},
                      {"fill", palette::casing},
                      {"stroke", palette::route},
                      {"stroke-width", 3}});
}

void drawChange(Markup& out, Point at, Heading heading) {
  out.open("g", {{"transform", movedTo(at)}})
      .leaf("circle", {{"r", changeRadiusPx - 1},
                       {"fill", palette::route},
                       {"stroke", palette::casing},
                       {"stroke-width", 2}})
      .leaf("path", {{"d", arrowOf(heading)},
                     {"fill", "none"},
                     {"stroke", palette::casing},
                     {"stroke-width", 2.2},
                     {"stroke-linecap", "round"},
                     {"stroke-linejoin", "round"}})
      .close();
}

}  // namespace tern::picture
