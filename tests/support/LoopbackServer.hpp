// A server on 127.0.0.1 that answers each HTTP request with the bytes that the test gives it,
// however wrong they are.
//
//   LoopbackServer server([](const LoopbackServer::Request& request) {
//     return LoopbackServer::Reply{httpAnswer("200 OK", "{}")};
//   });
//   exchange(*transport, {.url = server.url() + "/a"});
//   server.requests()[0].head;  // "GET /a HTTP/1.1\r\nHost: ...
//
// Ownership: owns its threads; its destructor breaks every connection off.
// Threads: any; the function is called on the thread of the connection.
// Fails: a machine without a loopback network ends the program.
#pragma once

#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tern::test {

// A whole answer: "HTTP/1.1 ", the status line, the given header lines (each with its line break),
// the length and the body.
std::string httpAnswer(std::string_view status, std::string_view body,
                       std::string_view headerLines = "");

class LoopbackServer {
 public:
  struct Request {
    // The request line and the headers, with the empty line behind them.
    std::string head;
    std::string body;
  };
  struct Reply {
    // Empty for a server that stays silent.
    std::string bytes;
    // Whether the connection ends behind them.
    bool closes = false;
  };
  using Handler = std::function<Reply(const Request&)>;

  explicit LoopbackServer(Handler handler);
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  // "http://127.0.0.1:" and the port.
  std::string url() const;
  std::vector<Request> requests() const;
  std::size_t connections() const;

 private:
  struct Connection {
    int socket;
    std::thread thread;
  };

  void accept();
  void serve(int socket);

  const Handler handler_;
  int socket_ = -1;
  int port_ = 0;
  mutable std::mutex mutex_;
  // Guarded by mutex_.
  std::vector<Request> requests_;
  std::list<Connection> connections_;

  std::thread acceptor_;
};

}  // namespace tern::test
