#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/guidance/TernStep.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5 {

class TernASGrid;
struct TernVenueData;

/// Turns routes into steps that a person can follow: where to turn and by what one knows the place,
/// which lift or stairs to take and where to, how far and how long.
///
/// Turns are those of the line that is drawn, without its small wiggles; where ways part, also one
/// that is slight. No step is shorter than 3 m but the beginning, a mover and the end; what lies
/// closer together is one step. The walks of the steps add up to the route's.
///
/// Ownership: shares the venues and the graph.
///
/// Threads: any number at a time; while a route is told, its venues' records are locked.
///
/// Fails: by none, for want of memory; a route without a node has no steps.
///
///     TernGuidance guidance({venue}, venue->globalASGrid());
///     if (const auto steps = guidance.stepsOf(venue->wayfind(a, b, 100), "de")) {
///       for (const TernStep& step : *steps) show(step.text);
///     }
class TERN_API TernGuidance {
 public:
  /// About routes of that graph: a venue's own, or the joined one of several. REQUIRES: neither the
  /// graph nor any venue is null.
  TernGuidance(std::vector<std::shared_ptr<const TernVenueData>> venues,
               std::shared_ptr<TernASGrid> grid);

  /// The steps of a route, in a language: a tag such as "de" or "en-US", whose region decides on
  /// feet or metres; English for one that is not known.
  std::optional<std::vector<TernStep>> stepsOf(const TernRoute& route,
                                               std::string_view language = "en") const;

  /// "320 m, about 5 minutes" for all of them.
  static std::string sumOf(const std::vector<TernStep>& steps, std::string_view language = "en");
  /// "40 m", or feet where the region wants them.
  static std::string lengthText(double mm, std::string_view language = "en");
  /// The languages that there are: "en" and so on.
  static std::vector<std::string> languages();

 private:
  std::vector<std::shared_ptr<const TernVenueData>> venues_;
  std::shared_ptr<TernASGrid> grid_;
};

}  // namespace tern
