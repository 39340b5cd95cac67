// What the places of a station are called, as a passenger would ask for them.
//
// Feeds often call every platform like its station. Then its description tells it from the others
// by what stands behind that name, else where the trains go, else its code: "Platform 3".
//
// Threads: free functions. Fails: never: a place without a name has none.
#pragma once

#include "tools/import/draft/Draft.hpp"
#include "tools/import/gtfs/GtfsFeed.hpp"

namespace tern::imports {

// Those that a stop of each kind belongs to, ticket gates and lifts.
DraftCategory platformCategory();
DraftCategory boardingAreaCategory();
DraftCategory entranceCategory();
DraftCategory gateCategory();
DraftCategory liftCategory();

// Of a platform, an entrance or a boarding area. `isShared` is whether another place of its kind in
// the station has the same name.
Names placeNames(const GtfsFeed& feed, const GtfsStop& station, const GtfsStop& stop,
                 bool isShared);

}  // namespace tern::imports
