// The venues that the lines of *.txt beside this file are asked of, by name.
//
// Ownership: the answers hold their venue. Threads: one, since joining venues is for the process.
// Fails: a name that is not known throws std::invalid_argument.
#pragma once

#include <string_view>

#include "TernCoreKit/answers/TernAnswers.hpp"

namespace tern::test {

// "small": two floors of map units of 100 mm, a lift for everyone from B to F, stairs of level 2
// from D to G; J and H stand alone.
//
//   map 1      A  B  C  D        map 2      E  F  G     H
//
//              J
//
//   destinations  7 at D, 8 at A, 9 at G, 10 at H, 11 on a map that is not there, 12 at C and E
//   amenities     7 Toilets at F, 8 Bench at J
//   path types    1 walking, 2 Lift, 3 Stairs
//
// "detour": a way round C from A to E, and J alone.
//
//   A--B--C--D--E
//      |     |
//      F--G--H
//   J
//
// "plaza": the sample venue.
// "rows": venue 1 with 101-102-103 on map 10 and venue 2 with 201-202-203 on map 20; 103 and 201
// are exits into each other.
// "unbuilt": the small venue before its graph is built.
TernAnswers answersOf(std::string_view venue);

}  // namespace tern::test
