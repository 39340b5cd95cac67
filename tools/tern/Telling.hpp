// How a question of the command ends: one answer, as JSON or told in words, and drawn.
//
// Ownership: borrows the venues of its picture. Threads: as readers of the venue. Fails: by value,
// when the picture cannot be written.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/GeoFeatures.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/RouteFile.hpp"

namespace tern::command {

// What an answer says to a person.
struct Telling {
  bool isFound = true;
  std::string text = {};
  // What the venue does not have of what was asked; may be empty.
  std::string remark = {};
  // Absent when there is nothing to draw.
  std::optional<Picture> picture = std::nullopt;
  // What --picture is to hold instead, of an answer that is no route.
  std::optional<GeoFeatures> features = std::nullopt;
};

// With --json the answer itself, else its words; with --picture its picture, too.
Outcome outcomeOf(const Arguments& call, const Value& answer, const Telling& told);

}  // namespace tern::command
