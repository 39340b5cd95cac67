// The checks, each in the source file that is named after what it looks at. Each looks at all of a
// venue by itself and tells of one or a few kinds of finding.
//
// Threads: free functions, as readers of the venue. Fails: never; what a document has of the wrong
// kind reads as if it were missing.
#pragma once

#include "tools/check/Finding.hpp"
#include "tools/check/Subject.hpp"

namespace tern::check {

// Islands.cpp: parts of the ways that nothing joins to the largest; one that is all that a floor
// without any mover has counts as that.
void checkIslands(const Subject& subject, Findings& findings);
// Traps.cpp: ways in that are no ways out.
void checkTraps(const Subject& subject, Findings& findings);
// Places.cpp: places that nobody, or nobody without steps, reaches.
void checkPlaces(const Subject& subject, Findings& findings);
// Movers.cpp: floors without any mover, and movers that lead nowhere.
void checkMovers(const Subject& subject, Findings& findings);
// DanglingIds.cpp: references to records that are not there.
void checkReferences(const Subject& subject, Findings& findings);
// RepeatedIds.cpp: records of one kind that share an id.
void checkRepeats(const Subject& subject, Findings& findings);
// LinkLengths.cpp: links of no length, and through more than a floor's width.
void checkLengths(const Subject& subject, Findings& findings);
// ThroughWalls.cpp: links that cross a wall of a drawing that says what its walls are.
void checkWalls(const Subject& subject, Findings& findings);
// MissingParts.cpp: scales, levels and names that are missing.
void checkParts(const Subject& subject, Findings& findings);
// RepeatedNames.cpp: destinations, or amenities, of one name on one floor.
void checkNames(const Subject& subject, Findings& findings);
// PlacementOnGlobe.cpp: corners on the globe that do not fit the maps.
void checkPlacement(const Subject& subject, Findings& findings);

}  // namespace tern::check
