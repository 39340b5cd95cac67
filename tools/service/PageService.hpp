// Serves a page to the browsers of this machine (PageSite.hpp), on 127.0.0.1 and nowhere else.
//
//   PageService page({.files = embeddedPage(), .venues = {1}, .documents = folder, ...});
//   if (const auto error = page.start(0)) ...
//   page.url();  // "http://127.0.0.1:39423/"
//
// Ownership: owns its threads; the destructor stops it. Threads: `start` and `stop` from one.
// Fails: by value.
#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <string>

#include "tools/service/HttpServer.hpp"
#include "tools/service/PageSite.hpp"

namespace tern::service {

class PageService {
 public:
  explicit PageService(PageSettings settings);

  // Returns when requests are answered, or why they will not be. A port of 0 is any that is free.
  std::optional<std::string> start(int port);
  // Gives what is under way that long to come to its end, and breaks off the rest.
  void stop(std::chrono::milliseconds grace = {});

  std::string url() const;

 private:
  PageSite site_;
  // 0 until it is known, when nobody can know it either.
  std::atomic<int> port_ = 0;
  HttpServer server_;
};

}  // namespace tern::service
