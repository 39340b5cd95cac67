#include "tools/service/HttpServer.hpp"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

namespace tern::service {

namespace {

constexpr int threads = 32;
// How long a client may not take an answer, and one that has been refused is listened to, so that
// it sees the answer.
constexpr std::chrono::milliseconds sendTime{5'000};
constexpr std::chrono::milliseconds drainTime{1'000};
constexpr std::chrono::milliseconds step{50};

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

// Without SO_REUSEPORT, so that a port in use is an error. Connections inherit the options.
int listeningSocket(const addrinfo& address) {
  const int socket = ::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  const int yes = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
  if (::bind(socket, address.ai_addr, address.ai_addrlen) == 0 &&
      ::listen(socket, SOMAXCONN) == 0) {
    return socket;
  }
  const int error = errno;
  if (socket >= 0) ::close(socket);
  errno = error;
  return -1;
}

int portOf(int socket) {
  sockaddr_in6 address{};  // both families have the port in one place
  socklen_t size = sizeof address;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin6_port);
}

}  // namespace

HttpServer::HttpServer(Answer answer, Milliseconds requestTime)
    : answer_(std::move(answer)), requestTime_(requestTime) {}

HttpServer::~HttpServer() { stop(); }

std::optional<std::string> HttpServer::start(const std::string& address, int port) {
  std::string reason;
  const Addresses found = resolved(address, port, reason);
  for (const addrinfo* one = found.get(); one != nullptr && listener_ < 0; one = one->ai_next) {
    listener_ = listeningSocket(*one);
    reason = std::generic_category().message(errno);
  }
  if (listener_ < 0) {
    return "cannot listen on port " + std::to_string(port) + " of " + address + ": " + reason;
  }
  port_ = portOf(listener_);
  stopper_ = ::eventfd(0, EFD_CLOEXEC);
  freeThreads_ = threads;
  for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { work(); });
  return std::nullopt;
}

void HttpServer::stop() {
  if (threads_.empty()) return;
  isStopping_ = true;
  ::eventfd_write(stopper_, 1);
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
  ::close(listener_);
  ::close(stopper_);
}

void HttpServer::work() {
  while (!isStopping_) {
    if (!awaits(listener_, POLLIN, Milliseconds(-1))) continue;
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socket < 0) {
      if (errno != EAGAIN) std::this_thread::sleep_for(step);
      continue;  // another thread was faster, or there are too many open files
    }
    --freeThreads_;
    serve(socket);
    ::close(socket);
    ++freeThreads_;
  }
}

void HttpServer::serve(int socket) {
  const auto request = receiveRequest(socket);
  if (const auto* received = std::get_if<ReceivedRequest>(&request)) {
    return send(socket, answer_(*received));
  }
  const int status = std::get<int>(request);
  if (status == 0) return;
  send(socket, httpBytes(errorAnswer(status, "The request is not one that the service takes")));
  drain(socket);
}

std::variant<ReceivedRequest, int> HttpServer::receiveRequest(int socket) const {
  constexpr std::string_view headEnd = "\r\n\r\n";
  const auto deadline = Clock::now() + requestTime_;
  std::string received;
  std::size_t headSize = std::string::npos;
  while ((headSize = received.find(headEnd)) == std::string::npos &&
         received.size() <= mostHeadBytes) {
    if (!receive(socket, received, deadline)) return 0;
  }
  if (headSize > mostHeadBytes) return 431;
  auto request = parseHead(std::string_view(received).substr(0, headSize));
  if (!request) return 400;
  const BodySize size = bodySize(*request, mostBodyBytes);
  if (const auto* refusal = std::get_if<int>(&size)) return *refusal;
  request->body = received.substr(headSize + headEnd.size());
  while (request->body.size() < std::get<std::size_t>(size)) {
    if (!receive(socket, request->body, deadline)) return 0;
  }
  request->body.resize(std::get<std::size_t>(size));
  return *std::move(request);
}

bool HttpServer::receive(int socket, std::string& received, Clock::time_point deadline) const {
  do {
    if (isStopping_ || Clock::now() >= deadline || (received.empty() && isPressed())) return false;
  } while (!awaits(socket, POLLIN, step));
  std::array<char, 4096> bytes;
  const ssize_t count = ::recv(socket, bytes.data(), bytes.size(), 0);
  if (count > 0) received.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0;
}

// Whether somebody waits for a thread and none is free.
bool HttpServer::isPressed() const {
  return freeThreads_ == 0 && awaits(listener_, POLLIN, Milliseconds(0));
}

void HttpServer::send(int socket, std::string_view bytes) const {
  while (!bytes.empty() && awaits(socket, POLLOUT, sendTime)) {
    const ssize_t count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno != EAGAIN) return;
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
}

// A connection that is closed with bytes unread takes its answer with it.
void HttpServer::drain(int socket) const {
  ::shutdown(socket, SHUT_WR);
  const auto deadline = Clock::now() + drainTime;
  constexpr int mostReads = 256;
  std::string unread;
  for (int i = 0; i < mostReads && receive(socket, unread, deadline); ++i) unread.clear();
}

// False when the server stops, too.
bool HttpServer::awaits(int socket, short event, Milliseconds time) const {
  std::array<pollfd, 2> waits{{{socket, event, 0}, {stopper_, POLLIN, 0}}};
  const int ready = ::poll(waits.data(), waits.size(), static_cast<int>(time.count()));
  return ready > 0 && waits[1].revents == 0;
}

std::string httpBytes(const ServedAnswer& answer) {
  std::string bytes = "HTTP/1.1 " + std::to_string(answer.status) + " \r\nConnection: close\r\n";
  if (!answer.body.empty()) {
    bytes += "Content-Type: application/json\r\nContent-Length: ";
    bytes += std::to_string(answer.body.size()) + "\r\n";
  }
  return (bytes += "\r\n") += answer.body;
}

}  // namespace tern::service
