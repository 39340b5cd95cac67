#include "TernCoreKit/service/detail/UncachedFetch.hpp"

#include <cstdint>
#include <utility>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/ServiceHost.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/service/detail/CachedFetch.hpp"
#include "TernCoreKit/service/detail/OutOfMemory.hpp"

namespace tern::inline v5::detail {

namespace {

using Finish = std::function<void(Value, std::optional<TernError>)>;
using KeptEnd = Kept<Finish>;

void endWithoutMemory(const auto& finish) { finish(Value(), outOfMemoryError()); }

void receive(std::optional<std::string> errorText, Value answer, const std::string& endpoint,
             const KeptEnd& finish) {
  auto error = errorText ? connectionError(std::move(errorText)) : errorOfAnswer(answer);
  if (!error) return finish(std::move(answer), std::nullopt);
  TernHub::failedServerPluginResponseForApi(endpoint, error);
  finish(Value(), std::move(error));
}

void send(const TernHub& hub, UncachedHost host, const std::string& endpoint, const Value& headers,
          const KeptEnd& finish) {
  auto end = [endpoint, finish](std::optional<std::string> errorText, std::int64_t, Value answer) {
    const auto take = [&] { receive(std::move(errorText), std::move(answer), endpoint, finish); };
    if (!attempt(take)) endWithoutMemory(finish);
  };
  if (host == UncachedHost::ofHub) return hub.client()->GET(endpoint, headers, std::move(end));
  TernHub::startServerPluginResponseForApi(endpoint);
  hub.client()->GETWithFullUrl(defaultServiceHost() + endpoint, headers, std::move(end));
}

}  // namespace

void fetchUncached(std::shared_ptr<TernHub> hub, UncachedHost host, std::string endpoint,
                   Finish finish) {
  const auto steps = [&](const KeptEnd& kept) {
    TernHub::startServerPluginResponseForApi(endpoint);
    const auto auth = hub->auth();
    if (auth == nullptr) return;
    auth->getAccessTokenInHeader(
        {}, [hub, host, endpoint, kept](std::optional<TernError> error, const Value& headers) {
          if (error) return kept(Value(), std::move(error));
          if (!attempt([&] { send(*hub, host, endpoint, headers, kept); })) endWithoutMemory(kept);
        });
  };
  attemptWith(std::move(finish), steps, [](const auto& ended) { endWithoutMemory(ended); });
}

}  // namespace tern::detail
