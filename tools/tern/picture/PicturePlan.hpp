// What a picture of routes shows from top to bottom, before it becomes an SVG or a page.
//
// Ownership: a plain value; the venue is borrowed while it is made.
// Threads: free functions.
// Fails: never; what would make the picture too large to look at is left out, and the plan says so.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/tern/picture/FloorPanel.hpp"
#include "tools/tern/picture/Itinerary.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::picture {

struct PlannedPanel {
  FloorName name;
  std::string length;
  PanelDrawing drawing;
  std::string words;
  std::optional<FloorChange> departure;
};

struct PlannedRoute {
  std::string title;
  std::string start;
  std::string goal;
  // "268 m, 3 floors", or that there is no route.
  std::string summary;
  std::vector<PlannedPanel> panels;
};

struct PicturePlan {
  // What the picture is of, such as "Route".
  std::string subject = "Route";
  std::string venueName;
  // The ends of the whole.
  std::string start;
  std::string goal;
  std::string summary;
  // What colours and signs mean, where that needs saying, and the same in words.
  std::optional<PanelDrawing> legend;
  std::string legendWords;
  std::vector<PlannedRoute> routes;
  // SVG elements that the panels refer to, and the rules of CSS by which they turn dark.
  std::string drawings;
  std::string darkRules;

  // "Route from Juniper Bakery to North exit"
  std::string title() const;
  // Everything that the picture shows, in words.
  std::string words() const;
};

PicturePlan planOf(const RoutePicture& picture);

// The plan as a file of either kind.
std::string svgOf(const PicturePlan& plan);
std::string htmlOf(const PicturePlan& plan);

}  // namespace tern::picture
