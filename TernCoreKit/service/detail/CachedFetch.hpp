// Fetches the document of an endpoint over the disk cache of a hub: the one way in which customers,
// locales, venues, buildings and map templates are loaded. What differs between them is data.
//
// Ownership: keeps the hub until it has finished. Threads: those of the hub's completions.
// Fails: through `finish`, which is called once, or never when the hub has no token connector; once
// more, with an error, when it runs out of memory itself.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

class TernHub;

}  // namespace tern

namespace tern::inline v5::detail {

// What sets the loads of one kind of document apart.
struct LoadRules {
  // The start is announced before the cache is looked at, and when the request is sent.
  bool announcesStart;
  bool announcesRequest;
  bool announcesFailure;
  // What is wrong with a decoded answer of the service, which is not saved then.
  std::optional<TernError> (*errorOf)(const Value& answer);
};

extern const LoadRules customerRules;
extern const LoadRules venueRules;
extern const LoadRules buildingRules;
// Of locales and map templates.
extern const LoadRules quietRules;

enum class AnswerSource {
  service,
  // The cached answer, since reloading is off.
  cacheUnasked,
  // The cached answer, an empty map without one, since the service gave none.
  cacheInstead,
};

using FinishFetch = std::function<void(std::optional<TernError>, Value answer, AnswerSource)>;

void fetchCached(std::shared_ptr<TernHub> hub, const LoadRules& rules, std::string endpoint,
                 FinishFetch finish);

// The error of a venue's or building's answer, or of one that nobody caches: one that is no map, or
// one with a "message".
std::optional<TernError> errorOfAnswer(const Value& answer);

// An exchange that failed, with the text that says why.
TernError connectionError(std::optional<std::string> text);

}  // namespace tern::detail
