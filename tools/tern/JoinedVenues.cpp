#include "tools/tern/JoinedVenues.hpp"

#include <future>
#include <optional>
#include <utility>
#include <variant>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/Requests.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Routing.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

class Listener final : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { isLoaded_.set_value(); }
  void wait() { isLoaded_.get_future().wait(); }

 private:
  std::promise<void> isLoaded_;
};

std::string nameOf(const TernActiveVenue& venue) {
  const std::string name(venue.name.text());
  return name.empty() ? venueTitle(venue) : name;
}

// The segment on its map, behind so many map units of the same leg.
TernPathPerFloor onItsMap(const TernPathPerFloor& segment, const TernActiveVenue& venue,
                          float walkedPx) {
  TernPathPerFloor local = segment;
  local.mapPoints.clear();
  std::optional<TernCoordinate> last;
  for (const TernASNode& node : segment.points) {
    const TernCoordinate at =
        TernUtils::convertPoint({node.x(), node.y()}, "EPSG:4326", "tern:local", &venue);
    if (last) walkedPx += TernUtils::distanceBetweenPoint1(*last, at);
    last = at;
    local.mapPoints.push_back(TernPoint::initWithX(
        static_cast<float>(at.x), static_cast<float>(at.y), static_cast<float>(segment.mapId)));
  }
  local.pixelDistance = walkedPx;
  const TernMap* map = venue.maps->findById(segment.mapId);
  local.mmDistance = walkedPx * static_cast<float>(map->mmPerPixel.number());
  return local;
}

std::int64_t startOf(const VenueLeg& leg) { return leg.route.front().points.front().nodeId(); }
std::int64_t endOf(const VenueLeg& leg) { return leg.route.back().points.back().nodeId(); }

std::string textOf(const std::vector<VenueLeg>& legs) {
  std::string text;
  for (std::size_t i = 0; i < legs.size(); ++i) {
    if (i > 0) {
      text += "\nLeave " + nameOf(*legs[i - 1].venue) + " at waypoint " +
              std::to_string(endOf(legs[i - 1])) + " and enter " + nameOf(*legs[i].venue) +
              " at waypoint " + std::to_string(startOf(legs[i])) + "\n\n";
    }
    text += "In " + nameOf(*legs[i].venue) + "\n" + routeText(*legs[i].venue, legs[i].route);
  }
  return text;
}

picture::RoutePicture pictureOf(const std::vector<VenueLeg>& legs) {
  picture::RoutePicture drawn{*legs.front().venue, {}, picture::RouteSet::legs, {}};
  for (const VenueLeg& leg : legs) {
    const std::string name = nameOf(*leg.venue);
    drawn.venueName += drawn.venueName.empty() ? name : ", " + name;
    drawn.routes.push_back({name, placeName(*leg.venue, startOf(leg)),
                            placeName(*leg.venue, endOf(leg)), leg.route, leg.venue.get()});
  }
  return drawn;
}

}  // namespace

std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues) {
  const auto listener = std::make_shared<Listener>();
  auto joined = TernMultiActiveVenues::initWithActiveVenues(venues, listener);
  listener->wait();
  return joined;
}

Loaded<TernMultiActiveVenues> loadVenues(VenueSource& source,
                                         const std::vector<std::int64_t>& venueIds) {
  std::vector<std::shared_ptr<TernActiveVenue>> venues;
  for (const std::int64_t id : venueIds) {
    auto loaded = source.loadVenue(id, std::nullopt);
    if (auto* failure = std::get_if<Failure>(&loaded)) return std::move(*failure);
    venues.push_back(std::get<std::shared_ptr<TernActiveVenue>>(std::move(loaded)));
  }
  return joinVenues(venues);
}

TernRoute findRoute(const TernMultiActiveVenues& venues, std::int64_t from, std::int64_t to,
                    std::int64_t level) {
  const auto grid = venues.globalASGrid();
  return venues.wayfind(grid->getWPById(from), grid->getWPById(to), level);
}

std::vector<VenueLeg> legsOf(const TernMultiActiveVenues& venues, const TernRoute& route) {
  std::vector<VenueLeg> legs;
  for (const TernPathPerFloor& segment : route) {
    const auto venue = venues.getVenueByMapId(segment.mapId);
    if (venue == nullptr) continue;
    if (legs.empty() || legs.back().venue != venue) legs.push_back({venue, {}});
    TernRoute& leg = legs.back().route;
    leg.push_back(onItsMap(segment, *venue, leg.empty() ? 0 : leg.back().pixelDistance));
  }
  return legs;
}

Outcome answerJoinedRoute(const Arguments& call,
                          const std::shared_ptr<TernMultiActiveVenues>& venues) {
  const std::int64_t from = call.request["from"].integer();
  const std::int64_t to = call.request["to"].integer();
  const Value& level = call.request["accessibility"];
  const TernRoute route =
      findRoute(*venues, from, to, level.isAbsent() ? everyonesLevel : level.integer());
  const std::vector<VenueLeg> legs = legsOf(*venues, route);
  if (!legs.empty() && !call.picture.empty()) {
    if (auto failure = writePicture(call.picture, pictureOf(legs))) return *std::move(failure);
  }
  Answer answer{.text = {},
                .remark = unknownWaypoints(*venues->globalASGrid(), from, to, "these venues")};
  if (route.empty()) answer.status = ExitStatus::nothingFound;
  if (call.json) {
    answer.text = jsonLine(Requests(venues).answer(call.request));
  } else if (!legs.empty()) {
    answer.text = textOf(legs);
  } else if (answer.remark.empty()) {
    answer.text = "No route from waypoint " + std::to_string(from) + " to waypoint " +
                  std::to_string(to) + "\n";
  }
  return answer;
}

}  // namespace tern::command
