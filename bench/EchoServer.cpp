#include "bench/EchoServer.hpp"

#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace tern::bench {

namespace {

// The body of the whole request at the front of the bytes, which is taken off them.
std::optional<std::string> takeBody(std::string& bytes) {
  constexpr std::string_view name = "Content-Length: ";
  const std::size_t headEnd = bytes.find("\r\n\r\n");
  const std::size_t length = bytes.find(name);
  if (headEnd == bytes.npos || length == bytes.npos) return std::nullopt;
  const std::size_t size = std::strtoul(bytes.c_str() + length + name.size(), nullptr, 10);
  if (bytes.size() < headEnd + 4 + size) return std::nullopt;
  std::string body = bytes.substr(headEnd + 4, size);
  bytes.erase(0, headEnd + 4 + size);
  return body;
}

void watch(int poll, int descriptor) {
  epoll_event event{.events = EPOLLIN, .data = {.fd = descriptor}};
  ::epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event);
}

}  // namespace

EchoServer::EchoServer()
    : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)),
      poll_(::epoll_create1(EPOLL_CLOEXEC)),
      stop_(::eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, plain, size) != 0 || ::listen(listener_, 4096) != 0) std::abort();
  ::getsockname(listener_, plain, &size);
  port_ = ntohs(address.sin_port);
  watch(poll_, listener_);
  watch(poll_, stop_);
  thread_ = std::thread([this] { serve(); });
}

EchoServer::~EchoServer() {
  ::eventfd_write(stop_, 1);
  thread_.join();
  for (const auto& [socket, heard] : heard_) ::close(socket);
  for (const int descriptor : {listener_, poll_, stop_}) ::close(descriptor);
}

void EchoServer::serve() {
  std::array<epoll_event, 256> events{};
  for (;;) {
    const int count = ::epoll_wait(poll_, events.data(), events.size(), -1);
    for (int i = 0; i < count; ++i) {
      const int descriptor = events[static_cast<std::size_t>(i)].data.fd;
      if (descriptor == stop_) return;
      descriptor == listener_ ? accept() : answer(descriptor);
    }
  }
}

void EchoServer::accept() {
  const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  if (socket < 0) return;
  heard_[socket];
  watch(poll_, socket);
}

void EchoServer::answer(int socket) {
  std::array<char, 65'536> bytes{};
  const ssize_t count = ::recv(socket, bytes.data(), bytes.size(), 0);
  if (count <= 0) {
    heard_.erase(socket);
    ::close(socket);
    return;
  }
  std::string& heard = heard_[socket];
  heard.append(bytes.data(), static_cast<std::size_t>(count));
  while (const auto body = takeBody(heard)) {
    const std::string answer =
        "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body->size()) + "\r\n\r\n" + *body;
    ::send(socket, answer.data(), answer.size(), MSG_NOSIGNAL);
  }
}

}  // namespace tern::bench
