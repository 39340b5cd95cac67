// Joined venues: a list of documents, each of a venue with its buildings, and routes over the graph
// of them all.
#include <algorithm>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "fuzz/SeedDocuments.hpp"
#include "fuzz/Target.hpp"
#include "fuzz/VenueChecks.hpp"

namespace tern::fuzz {
namespace {

constexpr std::size_t mostVenues = 6;
constexpr std::size_t fewWaypoints = 8;

void checkRoutes(const TernMultiActiveVenues& venues) {
  const auto grid = venues.globalASGrid();
  require(grid != nullptr && grid->isMultiVenueLoaded(), "the joined graph is built");
  RouteChecks checks(*grid);
  const auto& all = grid->waypoints();
  const std::size_t step = std::max<std::size_t>(all.size() / fewWaypoints, 1);
  for (std::size_t i = 0; i < all.size(); i += step) {
    for (std::size_t j = 0; j < all.size(); j += step) {
      const TernRoute route = venues.wayfind(all[i], all[j], 100);
      if (route.empty()) continue;  // venues that do not name each other are not searched
      checks.check(route, all[i]->id.integer(), all[j]->id.integer(), 100);
      for (const TernPathPerFloor& segment : route) {
        require(segment.mmDistance == 0, "joined routes have no millimetres");
      }
    }
  }
}

void run(const std::string& text) {
  const JsonResult documents = decodeJson(text);
  if (documents.error || documents.value.size() > mostVenues) return;
  TernMultiActiveVenues::Venues venues;
  for (const Value& one : documents.value.items()) venues.push_back(venueOf(one));
  const auto joined = TernMultiActiveVenues::initWithActiveVenues(venues);
  checkRoutes(*joined);
  if (!venues.empty()) joined->destroyActiveVenue({venues.front()});
  checkRoutes(*joined);
  joined->destroyAllActiveVenues();
  require(joined->activeVenues().empty() && joined->globalASGrid()->nodeCount() == 0,
          "venues that are taken out are gone");
}

std::vector<std::string> seeds() {
  const auto text = [](const Value& documents) {
    return encodeJson(documents, JsonLayout::compact);
  };
  return {text(Value::list({exitVenue(1, 2), exitVenue(2, 1)})),
          text(Value::list({exitVenue(1, 2), exitVenue(2, 3), exitVenue(3, 1)})),
          text(Value::list({exitVenue(1, 2), smallVenue()}))};
}

}  // namespace

extern const Target joinedTarget{.name = "joined", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
