#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Where somebody turns, seen in the direction of walking.
enum class TernDirection {
  left,
  right,
  slightLeft,
  slightRight,
  sharpLeft,
  sharpRight,
  around,
};

/// One thing to do on a route: something that a person is told at a place.
///
/// Ownership: plain values. Threads: plain values. Fails: never.
struct TERN_API TernStep {
  /// What is done at a step.
  enum class Kind {
    /// The beginning; always the first step.
    depart,
    /// Another direction is taken.
    turn,
    /// A lift, stairs, an escalator or whatever else is not simply walked.
    mover,
    /// Into another building, venue or floor, on foot.
    crossing,
    /// The end; always the last step.
    arrive,
  };
  /// A place that is seen at the step.
  struct Landmark {
    /// Id of a destination.
    std::int64_t id = 0;
    /// Whether it is the same destination.
    friend bool operator==(const Landmark&, const Landmark&) = default;
  };

  /// What is done.
  Kind kind = Kind::depart;
  /// Of a turn; of a mover, a crossing or the beginning when there is a turn right at it; at the
  /// end the side where the place lies, when that is known.
  std::optional<TernDirection> direction;
  /// Id of the map that the step is on.
  std::int64_t mapId = 0;
  /// Id of the waypoint where it is done: that of a mover is where it is entered.
  std::int64_t at = 0;
  /// Walk to the next step, in millimetres; 0 at the end.
  double mm = 0;
  /// Time to the next step.
  double seconds = 0;
  /// Id of the path type that is taken.
  std::optional<std::int64_t> mover;
  /// Id of the map that a mover or a crossing leads to, when it is another one.
  std::optional<std::int64_t> toMapId;
  /// What is seen at it: of a turn what tells it, at the beginning and the end the place itself.
  std::optional<Landmark> landmark;
  /// One sentence, or two, in the language that was asked for.
  std::string text;
};

}  // namespace tern
