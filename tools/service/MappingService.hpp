// A mapping service over a venue folder, for one customer and one pair of credentials:
//
//   POST /QRVS/api/auth/token           a token for the credentials, as a form
//   GET  /QRVS/api/customer/<id>/...    the documents (ServedDocuments.hpp), with a token
//   POST /answer                        answers about a venue (AnswerService.hpp), with a token
//
// Errors are answered as JSON with "statusCode" and "message": 401 for wrong credentials and for a
// token that is missing, wrong or has ended, 404 for what does not exist. What a client can make it
// keep is bounded, and what is no HTTP refused, before that (HttpServer.hpp).
//
//   MappingService service({.folder = "mall", .port = 8080});
//   if (const auto error = service.start()) ...
//
// Ownership: owns its threads; the destructor stops it. Threads: `start` and `stop` from one.
// Fails: by value. Plain HTTP: whoever can listen to the address's network reads along.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "tools/service/AnswerService.hpp"
#include "tools/service/HttpServer.hpp"

namespace tern::service {

struct ServiceSettings {
  std::string folder;
  std::string clientId = "local";
  std::string clientSecret = "local";
  std::string address = "127.0.0.1";
  // 0 for any that is free.
  int port = 0;
  std::chrono::seconds tokenValidity = std::chrono::hours(1);
  // What can be asked about.
  VenueList venues = {};
  AnswerLimits answerLimits = {};
  // Sees every request before it is answered, on a thread of the server. True when it has answered
  // by itself, over the socket; the connection is then closed.
  std::function<bool(const ReceivedRequest&)> intercept = {};
};

class MappingService {
 public:
  explicit MappingService(ServiceSettings settings);
  ~MappingService();
  MappingService(const MappingService&) = delete;
  MappingService& operator=(const MappingService&) = delete;

  // Returns when requests are answered, or why they will not be.
  std::optional<std::string> start();
  // Gives what is under way that long to come to its end, and breaks off the rest.
  void stop(std::chrono::milliseconds grace = {});

  // The port that it listens on; 0 before it has started.
  int port() const;
  // "http://127.0.0.1:8080"; with brackets for an IPv6 address.
  std::string url() const;

 private:
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace tern::service
