// How a mapping service is reached and what of it is kept.
//
// Threads: a plain value. Fails: never.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace tern::command {

struct HostOptions {
  // Scheme, host and perhaps a port, without a "/" at the end; empty when a folder is read instead.
  std::string host;
  std::int64_t customer = 0;
  std::string clientId;
  std::string clientSecret;
  // The documents folder of the disk cache; empty for one of the command's own.
  std::string cache;
  // Takes what is cached without asking the service.
  bool noReload = false;
  std::string locale = "en-US";
  bool geoJson = false;
  // The longest silence of a request.
  std::chrono::seconds timeout{30};
  // Certificates to trust in place of the system's; empty for those.
  std::string caFile;
  // Whether each request notification is shown.
  bool trace = false;
};

}  // namespace tern::command
