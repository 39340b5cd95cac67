// The order in which to visit several destinations, with the way to each; and the bare ordering of
// a matrix of lengths.
#include <utility>
#include <vector>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

Value answerTour(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::vector<std::int64_t> wanted = fields.integers("destinations");
  const std::int64_t level = fields.level();
  if (fields.error()) return {};
  std::vector<std::shared_ptr<TernDestination>> known;
  for (const std::int64_t id : wanted) {
    auto destination = venue.destinations ? venue.destinations->getById(id) : nullptr;
    if (destination != nullptr) known.push_back(std::move(destination));
  }
  Value legs = Value::list();
  Value destinations = Value::list();
  venue.wayfindToMultipleDestinations(known, venue.globalASGrid()->getWPById(from), level,
                                      [&](const auto& routes, const auto& order) {
                                        for (const TernRoute& route : routes)
                                          legs.append(routePart(route));
                                        for (const auto& destination : order)
                                          destinations.append(destination->id.integer());
                                      });
  Value answer = answerOf("legs", std::move(legs));
  answer.set("destinations", std::move(destinations));
  return answer;
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
