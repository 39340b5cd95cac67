#include "tools/service/HttpServer.hpp"

#include <microhttpd.h>
#include <netdb.h>
#include <strings.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include "tools/service/Exhaustion.hpp"

namespace tern::service {

namespace {

// A request of which more may come. The library carries it from call to call.
struct Arrival {
  ReceivedRequest request;
  bool hasHead = false;
  std::size_t bodyBytes = 0;
};

// Null without memory: nothing may be thrown through the library, which calls this and what
// follows.
void* beginRequest(void* /*none*/, const char* target, MHD_Connection* /*connection*/) {
  std::unique_ptr<Arrival> arrival;
  const bool isBegun = hasEnough([&] {
    arrival = std::make_unique<Arrival>();
    arrival->request.target = target;
  });
  return isBegun ? arrival.release() : nullptr;
}

void endRequest(void* /*none*/, MHD_Connection* /*connection*/, void** arrival,
                MHD_RequestTerminationCode /*how*/) {
  const std::unique_ptr<Arrival> ended(static_cast<Arrival*>(std::exchange(*arrival, nullptr)));
}

MHD_Result addHeader(void* request, MHD_ValueKind /*kind*/, const char* name, const char* value) {
  auto& headers = static_cast<ReceivedRequest*>(request)->headers;
  const auto add = [&] { headers.push_back({name, value != nullptr ? value : ""}); };
  return hasEnough(add) ? MHD_YES : MHD_NO;
}

// False when not all of it could be kept.
bool takeHead(Arrival& arrival, MHD_Connection* connection, const char* method) {
  arrival.hasHead = true;
  arrival.request.method = method;
  arrival.request.socket =
      MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
  const int all = MHD_get_connection_values(connection, MHD_HEADER_KIND, nullptr, nullptr);
  MHD_get_connection_values(connection, MHD_HEADER_KIND, addHeader, &arrival.request);
  return std::ssize(arrival.request.headers) == all;
}

MHD_Result takeBody(Arrival& arrival, std::string_view bytes) {
  arrival.bodyBytes += bytes.size();
  if (arrival.bodyBytes <= HttpServer::mostBodyBytes) arrival.request.body += bytes;
  return arrival.bodyBytes <= HttpServer::mostReadBytes ? MHD_YES : MHD_NO;
}

MHD_Result send(MHD_Connection* connection, ServedAnswer answer) {
  MHD_Response* const response = MHD_create_response_from_buffer(
      answer.body.size(), answer.body.data(), MHD_RESPMEM_MUST_COPY);
  if (!answer.body.empty()) {
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, "application/json");
  }
  const auto status = static_cast<unsigned>(answer.status);
  const MHD_Result result = MHD_queue_response(connection, status, response);
  MHD_destroy_response(response);
  return result;
}

MHD_Result takePart(HttpServer::Answer& answer, MHD_Connection* connection, const char* method,
                    const char* bytes, std::size_t* size, Arrival& arrival) {
  if (!arrival.hasHead) {
    return takeHead(arrival, connection, method) ? MHD_YES : MHD_NO;
  }
  if (*size > 0) return takeBody(arrival, {bytes, std::exchange(*size, 0)});
  if (arrival.bodyBytes > HttpServer::mostBodyBytes) {
    return send(connection, errorAnswer(413, "The body is too long"));
  }
  auto answered = answer(arrival.request);
  return answered ? send(connection, *std::move(answered)) : MHD_NO;
}

// Called once when the head is there, then for each part of the body, then at the end. Without
// memory the connection is closed.
MHD_Result onPart(void* answer, MHD_Connection* connection, const char* /*path*/,
                  const char* method, const char* /*version*/, const char* bytes, std::size_t* size,
                  void** state) {
  MHD_Result result = MHD_NO;
  if (*state == nullptr) return result;
  hasEnough([&] {
    result = takePart(*static_cast<HttpServer::Answer*>(answer), connection, method, bytes, size,
                      *static_cast<Arrival*>(*state));
  });
  return result;
}

using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

Addresses resolved(const std::string& address, int port, std::string& reason) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  wanted.ai_flags = AI_PASSIVE;
  addrinfo* found = nullptr;
  const int error = ::getaddrinfo(address.c_str(), std::to_string(port).c_str(), &wanted, &found);
  if (error != 0) reason = ::gai_strerror(error);
  return {found, &::freeaddrinfo};
}

MHD_Daemon* listenAt(const addrinfo& address, HttpServer::Answer& answer,
                     std::chrono::seconds mostSilence) {
  const unsigned family = address.ai_family == AF_INET6 ? MHD_USE_DUAL_STACK : MHD_NO_FLAG;
  return MHD_start_daemon(MHD_USE_AUTO_INTERNAL_THREAD | family, 0, nullptr, nullptr, onPart,
                          &answer, MHD_OPTION_SOCK_ADDR, address.ai_addr,                   //
                          MHD_OPTION_URI_LOG_CALLBACK, beginRequest, nullptr,               //
                          MHD_OPTION_NOTIFY_COMPLETED, endRequest, nullptr,                 //
                          MHD_OPTION_CONNECTION_MEMORY_LIMIT, HttpServer::connectionBytes,  //
                          MHD_OPTION_CONNECTION_LIMIT, HttpServer::mostConnections,         //
                          MHD_OPTION_CONNECTION_TIMEOUT,
                          static_cast<unsigned>(mostSilence.count()),  //
                          MHD_OPTION_THREAD_POOL_SIZE, HttpServer::threads, MHD_OPTION_END);
}

}  // namespace

std::optional<std::string> ReceivedRequest::header(const std::string& name) const {
  const auto found = std::ranges::find_if(headers, [&](const HttpHeader& header) {
    return ::strcasecmp(header.name.c_str(), name.c_str()) == 0;
  });
  return found == headers.end() ? std::nullopt : std::optional(found->value);
}

HttpServer::HttpServer(Answer answer, std::chrono::seconds mostSilence)
    : answer_(std::move(answer)), mostSilence_(mostSilence) {}

std::optional<std::string> HttpServer::start(const std::string& address, int port) {
  std::string reason;
  const Addresses found = resolved(address, port, reason);
  for (const addrinfo* one = found.get(); one != nullptr && !daemon_; one = one->ai_next) {
    daemon_.reset(listenAt(*one, answer_, mostSilence_));
    reason = std::generic_category().message(errno);
  }
  if (!daemon_) {
    return "cannot listen on port " + std::to_string(port) + " of " + address + ": " + reason;
  }
  port_ = MHD_get_daemon_info(daemon_.get(), MHD_DAEMON_INFO_BIND_PORT)->port;
  return std::nullopt;
}

void HttpServer::Stop::operator()(MHD_Daemon* daemon) const { MHD_stop_daemon(daemon); }

}  // namespace tern::service
