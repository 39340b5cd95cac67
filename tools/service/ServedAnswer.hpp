// What a service answers to a request.
//
// Threads: plain values. Fails: never.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"
#include "tools/service/BodyStream.hpp"

namespace tern::service {

struct ServedAnswer {
  int status = 200;
  // Empty for 304.
  std::string body = {};
  // What comes piece by piece in the place of the body; null when nothing does.
  std::shared_ptr<BodyStream> stream = nullptr;
  // Of the body. DEFAULT: JSON, and of a stream lines of JSON.
  std::string type = {};
  // Others than those that say how long the body is and of which type.
  std::vector<HttpHeader> headers = {};
};

// {"statusCode": status, "message": message}
ServedAnswer errorAnswer(int status, std::string_view message);

}  // namespace tern::service
