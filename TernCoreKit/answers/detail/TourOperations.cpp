// The order in which to visit several destinations, with the way to each; and the bare ordering of
// a matrix of lengths.
#include <utility>
#include <vector>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/answers/detail/TourRest.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

namespace {

TourStops knownDestinations(const TernActiveVenue& venue, const std::vector<std::int64_t>& ids) {
  TourStops known;
  for (const std::int64_t id : ids) {
    auto destination = venue.destinations ? venue.destinations->getById(id) : nullptr;
    if (destination != nullptr) known.push_back(std::move(destination));
  }
  return known;
}

Value tourPart(const Tour& tour) {
  Value legs = Value::list();
  Value destinations = Value::list();
  for (const TernRoute& leg : tour.legs) legs.append(routePart(leg));
  for (const auto& each : tour.destinations) destinations.append(each->id.integer());
  Value part = answerOf("legs", std::move(legs));
  part.set("destinations", std::move(destinations));
  return part;
}

}  // namespace

Value answerTour(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::vector<std::int64_t> wanted = fields.integers("destinations");
  const std::int64_t level = fields.level();
  if (fields.error()) return {};
  const TourStops known = knownDestinations(venue, wanted);
  const auto start = venue.globalASGrid()->getWPById(from);
  Tour tour;
  venue.wayfindToMultipleDestinations(known, start, level, [&](auto legs, auto destinations) {
    tour = {std::move(legs), std::move(destinations)};
  });
  if (start != nullptr) appendTheRest(venue, *start, known, level, tour);
  return tourPart(tour);
}

Value answerSolve(TernActiveVenue&, RequestFields& fields) {
  const TernTSP::Matrix matrix = fields.matrix("matrix", TernTSP::mostStops);
  if (fields.error()) return {};
  const auto [tour, cost] = TernTSP::solve(matrix);
  Value rows = Value::list();
  for (const std::size_t row : tour) rows.append(static_cast<std::int64_t>(row));
  Value answer = answerOf("tour", std::move(rows));
  answer.set("cost", cost);
  return answer;
}

}  // namespace tern::detail
