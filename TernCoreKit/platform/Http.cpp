#include "TernCoreKit/platform/Http.hpp"

#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"

namespace tern::inline v5 {

namespace detail {

// Made by the first call and never destroyed. Which one it is, is settled when the library is
// built: curl/CurlTransport.cpp or NoHttpTransport.cpp defines it, and `makeHttpTransport`.
HttpTransport& defaultHttpTransport();

}  // namespace detail

std::shared_ptr<HttpTransport> httpTransport() {
  if (auto transport = detail::current<HttpTransport>().get()) return transport;
  // It outlives everyone, so there is nothing to count.
  return {std::shared_ptr<void>(), &detail::defaultHttpTransport()};
}

void setHttpTransport(std::shared_ptr<HttpTransport> transport) {
  detail::current<HttpTransport>().set(std::move(transport));
}

}  // namespace tern
