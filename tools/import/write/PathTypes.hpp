// The path types of an imported venue: what each kind of way costs, and who can go it.
//
// Path type 1 costs its length; each other type costs its weight for every link, however long. So
// what is long of another type is cut into pieces of a length that the weight is made for.
//
// Ownership: constants. Threads: free functions over constants. Fails: never.
#pragma once

#include <limits>
#include <span>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

inline constexpr int walkwayType = 1;

struct PathTypeRow {
  int id;
  const char* externalId;
  // 0 step-free, 20 lifts that are not or may not be, 60 escalators, 80 what nothing is known of,
  // 100 steps.
  int accessibility;
  // In metres of walking.
  double weightMetres;
  // A link that rises by a level costs 1 + 100 / (verticalWeight + 1) times the weight; with -1 it
  // costs what it costs on one level.
  int verticalWeight;
  // Metres a second.
  double speed;
  // How long a link on one floor is at most, about.
  double pieceMetres;
  Names names;
};

inline constexpr double inOnePiece = std::numeric_limits<double>::infinity();

// By id.
std::span<const PathTypeRow> pathTypeRows();
// REQUIRES: there is one of that id.
const PathTypeRow& pathTypeRow(int id);

// Of a link that stays on its floor or leads to another.
int pathTypeOf(const DraftLink& link, bool changesFloor);

}  // namespace tern::imports
