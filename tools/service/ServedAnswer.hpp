// What a service answers to a request.
//
// Threads: plain values. Fails: never.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tools/service/BodyStream.hpp"

namespace tern::service {

struct ServedAnswer {
  int status = 200;
  // JSON; empty for 304.
  std::string body = {};
  // Lines of JSON that come one by one, in the place of the body; null when there are none.
  std::shared_ptr<BodyStream> stream = nullptr;
};

// {"statusCode": status, "message": message}
ServedAnswer errorAnswer(int status, std::string_view message);

}  // namespace tern::service
