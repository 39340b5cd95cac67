#include "fuzz/ReplyingServer.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "fuzz/Target.hpp"

namespace tern::fuzz {

namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

void sendAll(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

// What comes until the text has come, or the other side is gone.
std::string receiveUntil(int socket, std::string_view text) {
  std::string came;
  char bytes[65536];
  while (text.empty() || came.find(text) == std::string::npos) {
    const ssize_t count = recv(socket, bytes, sizeof bytes, 0);
    if (count <= 0) break;
    came.append(bytes, static_cast<std::size_t>(count));
  }
  return came;
}

// A whole request. What is left unread when a connection is closed takes the answer with it.
void receiveRequest(int socket) {
  constexpr std::string_view headEnd = "\r\n\r\n";
  constexpr std::string_view length = "Content-Length: ";
  const std::string came = receiveUntil(socket, headEnd);
  const std::size_t place = came.find(length);
  if (place == came.npos) return;
  std::size_t missing = std::strtoul(&came[place + length.size()], nullptr, 10);
  missing -= std::min(missing, came.size() - (came.find(headEnd) + headEnd.size()));
  char byte = 0;
  while (missing > 0 && recv(socket, &byte, 1, 0) == 1) --missing;
}

}  // namespace

ReplyingServer::ReplyingServer() {
  socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  require(bind(socket_, plain, size) == 0 && listen(socket_, 16) == 0 &&
              getsockname(socket_, plain, &size) == 0,
          "there is a loopback network");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

ReplyingServer::~ReplyingServer() {
  shutdown(socket_, SHUT_RDWR);
  thread_.join();
  close(socket_);
}

void ReplyingServer::answerWith(std::string bytes) {
  const std::lock_guard lock(mutex_);
  bytes_ = std::move(bytes);
}

void ReplyingServer::serve() {
  for (;;) {
    const int connection = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) return;
    receiveRequest(connection);
    std::string bytes;
    {
      const std::lock_guard lock(mutex_);
      bytes = bytes_;
    }
    sendAll(connection, bytes);
    close(connection);
  }
}

std::string answerTo(int port, std::string_view bytes) {
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = loopback(port);
  require(connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
          "the server listens");
  // Some ten times as long as an answer takes; a server that waits for more is waited for no
  // longer, or most of the time would go by with what is no whole request.
  const timeval wait{.tv_sec = 0, .tv_usec = 20'000};
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
  sendAll(connection, bytes);
  shutdown(connection, SHUT_WR);
  std::string answer = receiveUntil(connection, {});
  close(connection);
  return answer;
}

}  // namespace tern::fuzz
