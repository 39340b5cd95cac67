// A client of 127.0.0.1 that sends whatever the test wants over a plain socket, and hears what
// comes.
//
//   RawClient client(server.port());
//   ASSERT_TRUE(client.send("GET / HTTP/1.0\r\n\r\n"));
//   EXPECT_THAT(client.hear(), StartsWith("HTTP/1.1 200 "));
//
// Ownership: owns its socket. Threads: one. Fails: a port that nobody listens on fails the test.
#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tern::test {

class RawClient {
 public:
  explicit RawClient(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const sockaddr_in address = addressOf(port);
    EXPECT_EQ(::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~RawClient() { ::close(socket_); }

  // Whether anybody listens.
  static bool reaches(int port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = addressOf(port);
    const bool isConnected =
        ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return isConnected;
  }
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  // False when the server has closed the connection.
  bool send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }
  // How many times the bytes go out before the server closes the connection.
  int sendAgainAndAgain(std::string_view bytes, int most) {
    int sent = 0;
    while (sent < most && send(bytes)) ++sent;
    return sent;
  }
  // All that comes until the text has come.
  std::string hearUntil(std::string_view text) {
    std::string heard;
    char byte = 0;
    while (!heard.ends_with(text) && ::recv(socket_, &byte, 1, 0) == 1) heard += byte;
    EXPECT_TRUE(heard.ends_with(text)) << heard;
    return heard;
  }
  // All that comes until the connection ends.
  std::string hear() {
    std::string heard;
    char bytes[4096];
    for (ssize_t count = 0; (count = ::recv(socket_, bytes, sizeof bytes, 0)) > 0;) {
      heard.append(bytes, static_cast<std::size_t>(count));
    }
    return heard;
  }

 private:
  static sockaddr_in addressOf(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
  }

  const int socket_;
};

}  // namespace tern::test
