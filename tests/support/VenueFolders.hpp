// Venue folders for tests of the command.
//
// Threads: any. Fails: as TemporaryFolder.
#pragma once

#include "tests/support/DrawnVenue.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::test {

// Two floors, Ground Floor (map 1, 100 mm a map unit) and First Floor (map 2, scale unknown), with
// a bakery at A and an exit at D. The lift is for level 0 and more, the stairs for 2 and more. E
// stands alone.
//
//   A  B  C        D
//
//   E
Value twoFloorsVenueDocument();
Value twoFloorsBuildingDocument();

// The folder of that venue, named "drawn" and "v1" outside, as the only one of its customer.
void writeTwoFloors(const TemporaryFolder& folder);

}  // namespace tern::test
