// The transports of a library that is built without libcurl (TERN_WITH_CURL off).

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5 {
namespace {

// It has no thread: the completion runs before `send` returns.
class NoHttpTransport final : public HttpTransport {
 public:
  void send(HttpRequest /*request*/, Completion completion) override {
    completion({.error = "This build has no HTTP of its own: the application has to provide it"});
  }
};

}  // namespace

namespace detail {

HttpTransport& defaultHttpTransport() {
  static Immortal<NoHttpTransport> transport;
  return transport.value;
}

}  // namespace detail

std::shared_ptr<HttpTransport> makeHttpTransport(HttpSettings /*settings*/) {
  return std::make_shared<NoHttpTransport>();
}

}  // namespace tern
