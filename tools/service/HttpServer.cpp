#include "tools/service/HttpServer.hpp"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <semaphore>
#include <system_error>
#include <utility>

#include "tools/service/HttpConnection.hpp"

namespace tern::service {

namespace {

constexpr std::size_t threads = 16;
constexpr std::ptrdiff_t mostWaiting = 256;
constexpr std::size_t mostBodyBytes = std::size_t{64} << 10U;

ReceivedRequest received(const httplib::Request& request) {
  ReceivedRequest copy{request.method, request.target, {}};
  for (const auto& [name, value] : request.headers) copy.headers.push_back({name, value});
  return copy;
}

// Without SO_REUSEPORT, so that a port in use is an error. An answer goes out in several writes,
// which must not wait for each other; connections inherit that.
void setSocketOptions(socket_t socket) {
  const int yes = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

}  // namespace

class HttpServer::Pool : public httplib::ThreadPool {
 public:
  explicit Pool(std::atomic<int>& waiting) : ThreadPool(threads), waiting_(waiting) {}

  void enqueue(std::function<void()> job) override {
    room_.acquire();
    ++waiting_;
    ThreadPool::enqueue([this, job = std::move(job)] {
      --waiting_;
      room_.release();
      job();
    });
  }

 private:
  std::atomic<int>& waiting_;
  std::counting_semaphore<mostWaiting> room_{mostWaiting};
};

HttpServer::HttpServer(Answer answer, Interceptor interceptor)
    : interceptor_(std::move(interceptor)) {
  new_task_queue = [this] { return new Pool(waiting_); };
  set_socket_options(setSocketOptions);
  set_keep_alive_max_count(1000);  // only what clients are told
  set_payload_max_length(mostBodyBytes);
  set_pre_routing_handler([answer](const httplib::Request& request, httplib::Response& response) {
    // The library reads a body only behind this.
    if (request.method == "POST") return HandlerResponse::Unhandled;
    answer(request, response);
    return HandlerResponse::Handled;
  });
  Post(".*", answer);
}

HttpServer::~HttpServer() { stop(); }

std::optional<std::string> HttpServer::start(const std::string& address, int port) {
  errno = 0;
  if (port == 0) {
    port_ = bind_to_any_port(address);
  } else {
    port_ = bind_to_port(address, port) ? port : -1;
  }
  if (port_ < 0) {
    port_ = 0;
    const std::string reason =
        errno == 0 ? "no such address" : std::generic_category().message(errno);
    return "cannot listen on port " + std::to_string(port) + " of " + address + ": " + reason;
  }
  ::listen(svr_sock_, SOMAXCONN);  // the library's own queue is short
  thread_ = std::thread([this] { listen_after_bind(); });
  while (!is_running()) std::this_thread::yield();
  return std::nullopt;
}

void HttpServer::stop() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
    for (const socket_t socket : connections_) ::shutdown(socket, SHUT_RDWR);
  }
  Server::stop();
  thread_.join();
}

bool HttpServer::enter(socket_t socket) {
  const std::lock_guard lock(mutex_);
  if (!isStopping_) connections_.insert(socket);
  return !isStopping_;
}

void HttpServer::leave(socket_t socket) {
  const std::lock_guard lock(mutex_);
  connections_.erase(socket);
}

bool HttpServer::process_and_close_socket(socket_t socket) {
  if (enter(socket)) {
    serve(socket);
    leave(socket);
  }
  ::shutdown(socket, SHUT_RDWR);
  ::close(socket);
  return true;
}

void HttpServer::serve(socket_t socket) {
  HttpConnection connection(socket);
  const auto intercept = [&](httplib::Request& request) {
    request.headers.erase("Accept-Encoding");  // compressing costs more than loopback saves
    if (!interceptor_) return;
    if (auto bytes = interceptor_(received(request))) connection.answerWith(std::move(*bytes));
  };
  bool isClosed = false;
  const auto isUnwanted = [this] { return waiting_ > 0; };
  while (!isClosed && !connection.isOver() && connection.awaitRequest(isUnwanted)) {
    if (!process_request(connection, false, isClosed, intercept)) return;
  }
}

}  // namespace tern::service
