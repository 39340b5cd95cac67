// What a check has found in a venue, one place in the data each.
//
// Threads: plain values. Fails: never.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tern::check {

// In the order in which they are told.
enum class Kind : std::uint8_t {
  island,
  oneWayTrap,
  unreachable,
  floorWithoutMover,
  moverToNowhere,
  danglingId,
  repeatedId,
  zeroLength,
  longLink,
  throughWall,
  missingScale,
  missingLevel,
  missingName,
  repeatedName,
  placement,
  notStepFree,
};
inline constexpr std::size_t kindCount = 16;

struct Finding {
  Kind kind = Kind::island;
  // Of the records that it is about; the message says which kind of record.
  std::vector<std::int64_t> ids;
  // The map that it lies on, when it lies on one.
  std::optional<std::int64_t> map;
  // One line for a person, without a full stop.
  std::string message;
};

using Findings = std::vector<Finding>;

struct KindText {
  // As JSON names it.
  std::string_view name;
  // How several and one are called.
  std::string_view plural;
  std::string_view singular;
  // What to do about it.
  std::string_view advice;
};

const KindText& textOf(Kind kind);

// A venue may have places that nobody reaches without steps; all else keeps somebody from the way.
constexpr bool isFailure(Kind kind) { return kind != Kind::notStepFree; }

// "waypoints 4, 5, 6 and 9 more"; "waypoint 4".
std::string listedIds(std::string_view record, const std::vector<std::int64_t>& ids);

}  // namespace tern::check
