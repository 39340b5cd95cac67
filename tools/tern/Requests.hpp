// Answers requests about one loaded venue, or about several that are joined: the one place in which
// a request becomes a call of the library and its result an answer.
//
// A request is a map with an "op"; an answer is a map that begins with the request's "id" when it
// has one. What the venue does not have is no error: the answer then says that there is nothing. A
// request that is not understood changes nothing and is answered with
// {"error": {"code", "message", "description"}}. Blocks stay in the graph until they are lifted.
//
// Ownership: shares the venues. Threads: one request at a time, as they search a graph.
// Fails: never.
//
//   Requests requests(venue);
//   requests.answer(Value::map({{"op", "route"}, {"from", 12}, {"to", 40}}));
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "TernCoreKit/platform/Value.hpp"

namespace tern {
struct TernActiveVenue;
class TernMultiActiveVenues;
}  // namespace tern

namespace tern::command {

// The accessibility level of a request that names none.
inline constexpr std::int64_t everyonesLevel = 100;

class Requests {
 public:
  // REQUIRES: the venue's graph and trees are built.
  explicit Requests(std::shared_ptr<TernActiveVenue> venue) : venue_(std::move(venue)) {}

  // Routes are those of the joined graph; every other request names its "venue".
  // REQUIRES: that graph and each venue's own are built.
  explicit Requests(std::shared_ptr<TernMultiActiveVenues> venues) : venues_(std::move(venues)) {}

  Value answer(const Value& request);
  // The same for a request as JSON text.
  Value answerText(std::string request);

 private:
  // One of the two.
  std::shared_ptr<TernActiveVenue> venue_;
  std::shared_ptr<TernMultiActiveVenues> venues_;
};

}  // namespace tern::command
