#pragma once

#include <memory>
#include <string>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

struct TernActiveVenue;
class TernMultiActiveVenues;

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
/// Threads: one request at a time on one venue, whichever object asks, since a request searches the
/// venue's graph and leaves its marks there. Requests to different venues may overlap; a request to
/// joined venues counts as one to each of them.
///
/// Fails: by its answer. A request that is not understood changes nothing and is answered with
/// {"error":{"code":"TN006","message":...,"description":...}}. Nothing is thrown or printed.
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
  Value answer(const Value& request);

  /// The same in JSON: text of any bytes in, one line without its line break out.
  std::string answerText(std::string request);

 private:
  // One of the two.
  std::shared_ptr<TernActiveVenue> venue_;
  std::shared_ptr<TernMultiActiveVenues> venues_;
};

}  // namespace tern::inline v5
