#include "tests/support/LoopbackServer.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

#include "tests/support/FailingAllocation.hpp"

namespace tern::test {
namespace {

// A test may leave its process none for a while; who asks then is answered afterwards.
bool isShortOfDescriptors(int error) { return error == EMFILE || error == ENFILE; }

// Grows the text by what comes next; false at the end of the connection.
bool receive(int socket, std::string& text) {
  char bytes[65536];
  const ssize_t count = recv(socket, bytes, sizeof bytes, 0);
  if (count > 0) text.append(bytes, static_cast<std::size_t>(count));
  return count > 0;
}

std::size_t bodyLength(std::string_view head) {
  constexpr std::string_view name = "\r\nContent-Length: ";
  const std::size_t place = head.find(name);
  return place == std::string_view::npos ? 0
                                         : std::strtoul(&head[place + name.size()], nullptr, 10);
}

// Takes the next request out of what came so far and what still comes.
std::optional<LoopbackServer::Request> nextRequest(int socket, std::string& came) {
  constexpr std::string_view headEnd = "\r\n\r\n";
  while (came.find(headEnd) == std::string::npos) {
    if (!receive(socket, came)) return std::nullopt;
  }
  LoopbackServer::Request request;
  request.head = came.substr(0, came.find(headEnd) + headEnd.size());
  came.erase(0, request.head.size());
  const std::size_t length = bodyLength(request.head);
  while (came.size() < length) {
    if (!receive(socket, came)) return std::nullopt;
  }
  request.body = came.substr(0, length);
  came.erase(0, length);
  return request;
}

// False when the other side is gone.
bool sendReply(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

std::string httpAnswer(std::string_view status, std::string_view body,
                       std::string_view headerLines) {
  std::string answer = "HTTP/1.1 ";
  answer.append(status).append("\r\n").append(headerLines);
  answer.append("Content-Length: ").append(std::to_string(body.size())).append("\r\n\r\n");
  return answer.append(body);
}

LoopbackServer::LoopbackServer(Handler handler) : handler_(std::move(handler)) {
  socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (bind(socket_, plain, size) != 0 || listen(socket_, 128) != 0 ||
      getsockname(socket_, plain, &size) != 0) {
    std::perror("no loopback network");
    std::abort();
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { accept(); });
}

LoopbackServer::~LoopbackServer() {
  shutdown(socket_, SHUT_RDWR);
  acceptor_.join();
  close(socket_);
  for (Connection& connection : connections_) {
    shutdown(connection.socket, SHUT_RDWR);
    connection.thread.join();
    close(connection.socket);
  }
}

std::string LoopbackServer::url() const { return "http://127.0.0.1:" + std::to_string(port_); }

std::vector<LoopbackServer::Request> LoopbackServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

std::size_t LoopbackServer::connections() const {
  const std::lock_guard lock(mutex_);
  return connections_.size();
}

void LoopbackServer::accept() {
  spareThisThread();
  for (;;) {
    const int socket = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0 && isShortOfDescriptors(errno)) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      continue;
    }
    if (socket < 0) return;
    const std::lock_guard lock(mutex_);
    connections_.push_back({socket, std::thread([this, socket] { serve(socket); })});
  }
}

void LoopbackServer::serve(int socket) {
  spareThisThread();
  std::string came;
  while (auto request = nextRequest(socket, came)) {
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(*request);
    }
    const Reply reply = handler_(*request);
    if (!sendReply(socket, reply.bytes) || reply.closes) break;
  }
  // The number of the socket stays taken until the end.
  shutdown(socket, SHUT_RDWR);
}

}  // namespace tern::test
