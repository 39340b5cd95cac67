// Fetches a document that is never cached: the destinations that venues share, and any other path.
//
// Ownership: keeps the hub until it has finished. Threads: those of the hub's completions.
// Fails: through `finish`, which is called once, or never when the hub has no token connector.
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

// Who is asked. Destinations come from the default service host, and their start is announced
// again when the request is sent.
enum class UncachedHost { ofHub, ofDestinations };

void fetchUncached(std::shared_ptr<TernHub> hub, UncachedHost host, std::string endpoint,
                   std::function<void(Value answer, std::optional<TernError>)> finish);

}  // namespace tern::detail
