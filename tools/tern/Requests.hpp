// Answers requests about one loaded venue: the one place in which a request becomes a call of the
// library and its result an answer.
//
// A request is a map with an "op"; an answer is a map that begins with the request's "id" when it
// has one. What the venue does not have is no error: the answer then says that there is nothing. A
// request that is not understood changes nothing and is answered with
// {"error": {"code", "message", "description"}}. Blocks stay in the graph until they are lifted.
//
// Ownership: shares the venue. Threads: one request at a time, as they search the venue's graph.
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
}  // namespace tern

namespace tern::command {

// The accessibility level of a request that names none.
inline constexpr std::int64_t everyonesLevel = 100;

class Requests {
 public:
  // REQUIRES: the venue's graph is built.
  explicit Requests(std::shared_ptr<TernActiveVenue> venue) : venue_(std::move(venue)) {}

  Value answer(const Value& request);
  // The same for a request as JSON text.
  Value answerText(std::string request);

 private:
  std::shared_ptr<TernActiveVenue> venue_;
};

}  // namespace tern::command
