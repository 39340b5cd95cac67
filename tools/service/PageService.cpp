#include "tools/service/PageService.hpp"

#include <utility>

namespace tern::service {

PageService::PageService(PageSettings settings)
    : site_(std::move(settings)),
      server_([this](ReceivedRequest& request) { return site_.answer(request, port_); },
              HttpLimits(),
              [this](const ReceivedRequest& head) { return site_.receive(head, port_); }) {}

std::optional<std::string> PageService::start(int port) {
  auto error = server_.start("127.0.0.1", port);
  port_ = server_.port();
  return error;
}

void PageService::stop(std::chrono::milliseconds grace) { server_.stop(grace); }

std::string PageService::url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }

}  // namespace tern::service
