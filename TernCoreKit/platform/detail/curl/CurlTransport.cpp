#include "TernCoreKit/platform/detail/curl/CurlTransport.hpp"

#include <curl/curl.h>

#include "TernCoreKit/platform/detail/common/Immortal.hpp"
#include "TernCoreKit/platform/detail/curl/CurlWorker.hpp"

namespace tern::inline v5 {
namespace detail {

CurlTransport::CurlTransport(HttpSettings settings)
    : worker_(std::make_shared<CurlWorker>(std::move(settings))) {}

CurlTransport::~CurlTransport() { worker_->end(CurlWorker::Ending::answering); }

void CurlTransport::send(HttpRequest request, Completion completion) {
  worker_->send(std::move(request), std::move(completion));
}

void CurlTransport::dropAll() { worker_->end(CurlWorker::Ending::dropping); }

// Never destroyed: other static objects may send requests until the very end. Only its thread ends,
// and before what libcurl and its TLS library tidy up at exit, since it was made after them.
HttpTransport& defaultHttpTransport() {
  struct DropAtExit {
    CurlTransport& transport;
    ~DropAtExit() { transport.dropAll(); }
  };
  static Immortal<CurlTransport> transport(HttpSettings{});
  static const DropAtExit dropAtExit{transport.value};
  return transport.value;
}

}  // namespace detail

std::shared_ptr<HttpTransport> makeHttpTransport(HttpSettings settings) {
  return std::make_shared<detail::CurlTransport>(std::move(settings));
}

}  // namespace tern
