#include "tools/service/HttpServer.hpp"

#include <microhttpd.h>
#include <netdb.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <iterator>
#include <set>
#include <utility>

#include "TernCoreKit/platform/Mutex.hpp"
#include "tools/service/Exhaustion.hpp"

namespace tern::service {

// Wakes the connection of a request whose answer waits for more of itself.
class HttpServer::Waker {
 public:
  explicit Waker(MHD_Connection* connection) : connection_(connection) {}

  void wake() {
    const MutexLock lock(mutex_);
    resume();
  }
  // The answer is broken off when it would wait.
  void breakOff() {
    const MutexLock lock(mutex_);
    isBrokenOff_ = true;
    resume();
  }

  // As the library asks for a piece of the body.
  ssize_t read(BodyStream& stream, char* to, std::size_t most) {
    const MutexLock lock(mutex_);
    const BodyStream::Piece piece = stream.read(to, most);
    if (piece.bytes > 0) return static_cast<ssize_t>(piece.bytes);
    if (piece.isEnd) return MHD_CONTENT_READER_END_OF_STREAM;
    if (isBrokenOff_) return MHD_CONTENT_READER_END_WITH_ERROR;
    // Before the lock is given away, so that no call to wake it comes too early.
    MHD_suspend_connection(connection_);
    isSuspended_ = true;
    return 0;
  }

 private:
  void resume() TERN_REQUIRES(mutex_) {
    if (std::exchange(isSuspended_, false)) MHD_resume_connection(connection_);
  }

  Mutex mutex_;
  MHD_Connection* const connection_;
  bool isSuspended_ TERN_GUARDED_BY(mutex_) = false;
  bool isBrokenOff_ TERN_GUARDED_BY(mutex_) = false;
};

// A request of which more may come, and what is kept until it is answered. The library carries it
// from call to call.
struct HttpServer::Arrival {
  ReceivedRequest request;
  std::shared_ptr<Waker> waker;
  bool hasHead = false;
  Reception reception;
  std::size_t bodyBytes = 0;
  std::size_t keptBytes = 0;
  // There was no room for its body.
  bool isShed = false;
};

// The requests that are under way.
class HttpServer::Traffic {
 public:
  Traffic(Answer answer, Receive receive, std::size_t mostKeptBytes)
      : answer_(std::move(answer)), receive_(std::move(receive)), mostKeptBytes_(mostKeptBytes) {}

  void begin(Arrival& arrival) {
    const MutexLock lock(mutex_);
    if (isBrokenOff_) arrival.waker->breakOff();
    underWay_.insert(arrival.waker);
  }

  void end(const Arrival& arrival) {
    keptBytes_ -= arrival.keptBytes;
    const MutexLock lock(mutex_);
    underWay_.erase(arrival.waker);
    if (underWay_.empty()) isIdle_.notify_all();
  }

  Reception receive(const ReceivedRequest& head) const {
    return receive_ ? receive_(head) : Reception();
  }
  std::optional<ServedAnswer> answer(ReceivedRequest& request) const { return answer_(request); }

  // Whether there is room for that many more bytes of the body; they then are counted.
  bool keep(Arrival& arrival, std::size_t bytes) {
    if (keptBytes_ + bytes > mostKeptBytes_) return false;
    keptBytes_ += bytes;
    arrival.keptBytes += bytes;
    return true;
  }

  bool isEnding() {
    const MutexLock lock(mutex_);
    return isEnding_;
  }
  // Returns when nothing is under way that waits for more of itself.
  void finish(std::chrono::milliseconds grace) {
    const auto end = std::chrono::steady_clock::now() + grace;
    MutexLock lock(mutex_);
    isEnding_ = true;
    while (!underWay_.empty() && isIdle_.wait_until(lock, end) == std::cv_status::no_timeout) {
    }
    isBrokenOff_ = true;
    for (const auto& waker : underWay_) waker->breakOff();
  }

 private:
  const Answer answer_;
  const Receive receive_;
  const std::size_t mostKeptBytes_;
  std::atomic<std::size_t> keptBytes_ = 0;

  Mutex mutex_;
  std::condition_variable_any isIdle_;
  std::set<std::shared_ptr<Waker>> underWay_ TERN_GUARDED_BY(mutex_);
  bool isEnding_ TERN_GUARDED_BY(mutex_) = false;
  bool isBrokenOff_ TERN_GUARDED_BY(mutex_) = false;
};

namespace {

using Waker = HttpServer::Waker;
using Arrival = HttpServer::Arrival;
using Traffic = HttpServer::Traffic;

// Null without memory: nothing may be thrown through the library, which calls this and what
// follows.
void* beginRequest(void* traffic, const char* target, MHD_Connection* connection) {
  std::unique_ptr<Arrival> arrival;
  const bool isBegun = hasEnough([&] {
    arrival = std::make_unique<Arrival>();
    arrival->request.target = target;
    arrival->waker = std::make_shared<Waker>(connection);
    arrival->request.wake = [waker = arrival->waker] { waker->wake(); };
    static_cast<Traffic*>(traffic)->begin(*arrival);
  });
  return isBegun ? arrival.release() : nullptr;
}

void endRequest(void* traffic, MHD_Connection* /*connection*/, void** state,
                MHD_RequestTerminationCode /*how*/) {
  const std::unique_ptr<Arrival> ended(static_cast<Arrival*>(std::exchange(*state, nullptr)));
  if (ended != nullptr) static_cast<Traffic*>(traffic)->end(*ended);
}

MHD_Result addHeader(void* request, MHD_ValueKind /*kind*/, const char* name, const char* value) {
  auto& headers = static_cast<ReceivedRequest*>(request)->headers;
  const auto add = [&] { headers.push_back({name, value != nullptr ? value : ""}); };
  return hasEnough(add) ? MHD_YES : MHD_NO;
}

// False when not all of it could be kept.
bool takeHead(Traffic& traffic, Arrival& arrival, MHD_Connection* connection, const char* method) {
  arrival.hasHead = true;
  arrival.request.method = method;
  arrival.request.socket =
      MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
  const int all = MHD_get_connection_values(connection, MHD_HEADER_KIND, nullptr, nullptr);
  MHD_get_connection_values(connection, MHD_HEADER_KIND, addHeader, &arrival.request);
  if (std::ssize(arrival.request.headers) != all) return false;
  arrival.reception = traffic.receive(arrival.request);
  return true;
}

MHD_Result takeBody(Traffic& traffic, Arrival& arrival, std::string_view bytes) {
  arrival.bodyBytes += bytes.size();
  if (!arrival.reception.refusal && arrival.bodyBytes <= arrival.reception.mostBodyBytes) {
    arrival.isShed = arrival.isShed || !traffic.keep(arrival, bytes.size());
    if (!arrival.isShed) arrival.request.body += bytes;
  }
  return arrival.bodyBytes <= HttpServer::mostReadBytes ? MHD_YES : MHD_NO;
}

// What the library reads a body from.
struct Reader {
  std::shared_ptr<BodyStream> stream;
  std::shared_ptr<Waker> waker;
};

ssize_t readBody(void* reader, std::uint64_t /*position*/, char* to, std::size_t most) {
  ssize_t bytes = MHD_CONTENT_READER_END_WITH_ERROR;
  const auto& from = *static_cast<Reader*>(reader);
  hasEnough([&] { bytes = from.waker->read(*from.stream, to, most); });
  return bytes;
}

void endReading(void* reader) { const std::unique_ptr<Reader> ended(static_cast<Reader*>(reader)); }

MHD_Response* responseOf(ServedAnswer& answer, const Arrival& arrival) {
  if (answer.stream == nullptr) {
    return MHD_create_response_from_buffer(answer.body.size(), answer.body.data(),
                                           MHD_RESPMEM_MUST_COPY);
  }
  constexpr std::size_t pieceBytes = std::size_t{16} << 10U;
  auto reader = std::make_unique<Reader>(Reader{std::move(answer.stream), arrival.waker});
  MHD_Response* const response = MHD_create_response_from_callback(
      MHD_SIZE_UNKNOWN, pieceBytes, readBody, reader.get(), endReading);
  if (response != nullptr) static_cast<void>(reader.release());
  return response;
}

// Empty when there is no body.
std::string typeOf(const ServedAnswer& answer) {
  if (!answer.type.empty()) return answer.type;
  if (answer.stream != nullptr) return "application/x-ndjson";
  return answer.body.empty() ? "" : "application/json";
}

MHD_Result send(Traffic& traffic, MHD_Connection* connection, const Arrival& arrival,
                ServedAnswer answer) {
  const std::string type = typeOf(answer);
  MHD_Response* const response = responseOf(answer, arrival);
  if (response == nullptr) return MHD_NO;
  if (!type.empty()) MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, type.c_str());
  for (const HttpHeader& header : answer.headers) {
    MHD_add_response_header(response, header.name.c_str(), header.value.c_str());
  }
  if (answer.status == 503) MHD_add_response_header(response, MHD_HTTP_HEADER_RETRY_AFTER, "1");
  if (traffic.isEnding()) {
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONNECTION, "close");
  }
  const auto status = static_cast<unsigned>(answer.status);
  const MHD_Result result = MHD_queue_response(connection, status, response);
  MHD_destroy_response(response);
  return result;
}

// The answer to what has come to its end; none closes the connection.
std::optional<ServedAnswer> answerOf(const Traffic& traffic, Arrival& arrival) {
  if (arrival.reception.refusal) return std::move(arrival.reception.refusal);
  if (arrival.bodyBytes > arrival.reception.mostBodyBytes) {
    return errorAnswer(413, "The body is longer than " +
                                std::to_string(arrival.reception.mostBodyBytes) + " bytes");
  }
  if (arrival.isShed) return errorAnswer(503, "Too much is asked at once; try again");
  return traffic.answer(arrival.request);
}

MHD_Result takePart(Traffic& traffic, MHD_Connection* connection, const char* method,
                    const char* bytes, std::size_t* size, Arrival& arrival) {
  if (!arrival.hasHead) {
    return takeHead(traffic, arrival, connection, method) ? MHD_YES : MHD_NO;
  }
  if (*size > 0) return takeBody(traffic, arrival, {bytes, std::exchange(*size, 0)});
  auto answer = answerOf(traffic, arrival);
  return answer ? send(traffic, connection, arrival, *std::move(answer)) : MHD_NO;
}

// Called once when the head is there, then for each part of the body, then at the end. Without
// memory the connection is closed.
MHD_Result onPart(void* traffic, MHD_Connection* connection, const char* /*path*/,
                  const char* method, const char* /*version*/, const char* bytes, std::size_t* size,
                  void** state) {
  MHD_Result result = MHD_NO;
  if (*state == nullptr) return result;
  hasEnough([&] {
    result = takePart(*static_cast<Traffic*>(traffic), connection, method, bytes, size,
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

MHD_Daemon* listenAt(const addrinfo& address, Traffic& traffic, std::chrono::seconds mostSilence) {
  const unsigned family = address.ai_family == AF_INET6 ? MHD_USE_DUAL_STACK : MHD_NO_FLAG;
  return MHD_start_daemon(MHD_USE_AUTO_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME | family, 0,
                          nullptr, nullptr, onPart, &traffic,                               //
                          MHD_OPTION_SOCK_ADDR, address.ai_addr,                            //
                          MHD_OPTION_LISTEN_BACKLOG_SIZE, HttpServer::mostConnections,      //
                          MHD_OPTION_URI_LOG_CALLBACK, beginRequest, &traffic,              //
                          MHD_OPTION_NOTIFY_COMPLETED, endRequest, &traffic,                //
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

HttpServer::HttpServer(Answer answer, HttpLimits limits, Receive receive)
    : limits_(limits),
      traffic_(std::make_unique<Traffic>(std::move(answer), std::move(receive), limits.keptBytes)) {
}

HttpServer::~HttpServer() { stop(); }

std::optional<std::string> HttpServer::start(const std::string& address, int port) {
  std::string reason;
  const Addresses found = resolved(address, port, reason);
  for (const addrinfo* one = found.get(); one != nullptr && daemon_ == nullptr;
       one = one->ai_next) {
    daemon_ = listenAt(*one, *traffic_, limits_.silence);
    reason = std::generic_category().message(errno);
  }
  if (daemon_ == nullptr) {
    return "cannot listen on port " + std::to_string(port) + " of " + address + ": " + reason;
  }
  port_ = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT)->port;
  return std::nullopt;
}

void HttpServer::stop(std::chrono::milliseconds grace) {
  if (daemon_ == nullptr) return;
  const MHD_socket listener = MHD_quiesce_daemon(daemon_);
  // The library still has it; who connects from here on is refused.
  ::shutdown(listener, SHUT_RDWR);
  traffic_->finish(grace);
  MHD_stop_daemon(std::exchange(daemon_, nullptr));
  if (listener != MHD_INVALID_SOCKET) ::close(listener);
}

}  // namespace tern::service
