#pragma once

#include <memory>
#include <string>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

struct TernActiveVenue;
class TernMultiActiveVenues;
namespace detail {
class KnownPlaces;
}

/// Answers requests: all that can be asked of a loaded venue, or of several that are joined, in
/// JSON, a form that every language speaks.
///
/// A request is a map with an "op", such as {"op":"route","from":12,"to":40}; an answer is a map
/// that begins with the request's "id" when it has one. What the venue does not have is no error:
/// the answer then says that there is nothing. Blocks stay in the venue's graph until they are
/// lifted.
///
/// Ownership: shares the venues.
///
/// Threads: any number of requests at a time, of one venue too. A block acts on the requests that
/// begin after it, and so do the blocks that an "alternatives" lifts.
///
/// Fails: by its answer. A request that is not understood changes nothing and is answered with
/// {"error":{"code":"TN006","message":...,"description":...}}, one for which there is no memory
/// with code "TN008" and the message "out of memory". Nothing is printed, and nothing thrown but
/// std::bad_alloc, where there is no memory for that answer either.
///
///     TernAnswers answers(venue);
///     answers.answerText(R"({"op":"route","from":12,"to":40})");  // {"route":[{"mapId":3,...
class TERN_API TernAnswers {
 public:
  /// Answers about one venue. REQUIRES: its graph and trees are built
  /// (`updateWayfindDataWithCompletion`); until then every request is answered with error TN007.
  explicit TernAnswers(std::shared_ptr<TernActiveVenue> venue);

  /// Answers about joined venues: routes are those of the joined graph, every other request names
  /// its "venue". REQUIRES: the joined graph and each venue's own are built; until then as above.
  explicit TernAnswers(std::shared_ptr<TernMultiActiveVenues> venues);

  /// The answer to one request.
  Value answer(const Value& request) const;

  /// The same in JSON: text of any bytes in, one line without its line break out.
  std::string answerText(std::string request) const;

 private:
  TERN_INTERNAL Value answerOf(const Value& request) const;

  // One of the two.
  std::shared_ptr<TernActiveVenue> venue_;
  std::shared_ptr<TernMultiActiveVenues> venues_;
  // Copies share it.
  std::shared_ptr<detail::KnownPlaces> places_;
};

}  // namespace tern
