#include "TernCoreKit/service/detail/UncachedFetch.hpp"

#include <cstdint>
#include <utility>

#include "TernCoreKit/service/ServiceHost.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/service/detail/CachedFetch.hpp"

namespace tern::inline v5::detail {

namespace {

using Finish = std::function<void(Value, std::optional<TernError>)>;

void send(const TernHub& hub, UncachedHost host, const std::string& endpoint, const Value& headers,
          Finish finish) {
  auto receive = [endpoint, finish = std::move(finish)](std::optional<std::string> errorText,
                                                        std::int64_t, Value answer) {
    auto error = errorText ? connectionError(std::move(errorText)) : errorOfAnswer(answer);
    if (!error) return finish(std::move(answer), std::nullopt);
    TernHub::failedServerPluginResponseForApi(endpoint, error);
    finish({}, std::move(error));
  };
  if (host == UncachedHost::ofHub) return hub.client()->GET(endpoint, headers, std::move(receive));
  TernHub::startServerPluginResponseForApi(endpoint);
  hub.client()->GETWithFullUrl(defaultServiceHost() + endpoint, headers, std::move(receive));
}

}  // namespace

void fetchUncached(std::shared_ptr<TernHub> hub, UncachedHost host, std::string endpoint,
                   Finish finish) {
  TernHub::startServerPluginResponseForApi(endpoint);
  const auto auth = hub->auth();
  if (auth == nullptr) return;
  auth->getAccessTokenInHeader(
      {}, [hub = std::move(hub), host, endpoint = std::move(endpoint), finish = std::move(finish)](
              std::optional<TernError> error, const Value& headers) {
        if (error) return finish({}, std::move(error));
        send(*hub, host, endpoint, headers, finish);
      });
}

}  // namespace tern::detail
