#include "tests/support/HttpCrowd.hpp"

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace tern::test {

namespace {

std::size_t numberIn(std::string_view text, int base) {
  std::size_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number, base);
  return number;
}

// What stands behind the name in the head, up to the end of its line.
std::string_view headerIn(std::string_view head, std::string_view name) {
  const std::size_t at = head.find(name);
  if (at == head.npos) return {};
  return head.substr(at + name.size(), head.find("\r\n", at) - at - name.size());
}

// The body of these chunks, and how many bytes they take; none while they are not all there.
std::optional<std::pair<std::string, std::size_t>> dechunked(std::string_view bytes) {
  std::string body;
  for (std::size_t at = 0;;) {
    const std::size_t end = bytes.find("\r\n", at);
    if (end == bytes.npos) return std::nullopt;
    const std::size_t size = numberIn(bytes.substr(at, end - at), 16);
    if (bytes.size() < end + 2 + size + 2) return std::nullopt;
    body += bytes.substr(end + 2, size);
    at = end + 2 + size + 2;
    if (size == 0) return std::pair(std::move(body), at);
  }
}

struct Client {
  int socket = -1;
  std::string toSend;
  std::string heard;
  std::vector<HeardAnswer> answers;
};

int connected(int port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    ::close(socket);
    return -1;
  }
  ::fcntl(socket, F_SETFL, O_NONBLOCK);
  return socket;
}

// Whether the client is still connected.
bool sendSome(Client& client) {
  const ssize_t count =
      ::send(client.socket, client.toSend.data(), client.toSend.size(), MSG_NOSIGNAL);
  if (count > 0) client.toSend.erase(0, static_cast<std::size_t>(count));
  return count >= 0 || errno == EAGAIN;
}

bool hearSome(Client& client) {
  std::array<char, 65'536> bytes{};
  const ssize_t count = ::recv(client.socket, bytes.data(), bytes.size(), 0);
  if (count > 0) client.heard.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0 || (count < 0 && errno == EAGAIN);
}

class Crowd {
 public:
  Crowd(std::size_t requestsEach,
        const std::function<std::string(std::size_t, std::size_t)>& requestOf)
      : requestsEach_(requestsEach), requestOf_(requestOf) {}
  ~Crowd() {
    for (std::size_t i = 0; i < clients_.size(); ++i) leave(i);
    ::close(poll_);
  }
  Crowd(const Crowd&) = delete;
  Crowd& operator=(const Crowd&) = delete;

  void connect(int port, std::size_t count) {
    clients_.resize(count);
    for (Client& client : clients_) client.socket = connected(port);
    for (std::size_t i = 0; i < count; ++i) {
      if (clients_[i].socket < 0) continue;
      ++talking_;
      epoll_event event{.events = EPOLLIN | EPOLLOUT | EPOLLET, .data = {.u64 = i}};
      ::epoll_ctl(poll_, EPOLL_CTL_ADD, clients_[i].socket, &event);
      askNext(i);
    }
  }

  std::vector<std::vector<HeardAnswer>> talk(int mostSilenceMs) {
    std::array<epoll_event, 256> events{};
    while (talking_ > 0) {
      const int count = ::epoll_wait(poll_, events.data(), events.size(), mostSilenceMs);
      if (count <= 0) break;
      for (int i = 0; i < count; ++i) goOn(events[static_cast<std::size_t>(i)].data.u64);
    }
    std::vector<std::vector<HeardAnswer>> answers;
    for (Client& client : clients_) answers.push_back(std::move(client.answers));
    return answers;
  }

 private:
  void askNext(std::size_t index) {
    Client& client = clients_[index];
    if (client.answers.size() == requestsEach_) return leave(index);
    client.toSend = requestOf_(index, client.answers.size());
    if (!sendSome(client)) leave(index);
  }

  void goOn(std::size_t index) {
    Client& client = clients_[index];
    if (client.socket < 0) return;
    if (!client.toSend.empty() && !sendSome(client)) return leave(index);
    // The system tells of new bytes once.
    while (client.socket >= 0) {
      const std::size_t before = client.heard.size();
      if (!hearSome(client)) return leave(index);
      if (client.heard.size() == before) return;
      while (auto answer = takeAnswer(client.heard)) {
        client.answers.push_back(*std::move(answer));
        askNext(index);
      }
    }
  }

  void leave(std::size_t index) {
    if (clients_[index].socket < 0) return;
    ::close(clients_[index].socket);
    clients_[index].socket = -1;
    --talking_;
  }

  const std::size_t requestsEach_;
  const std::function<std::string(std::size_t, std::size_t)>& requestOf_;
  const int poll_ = ::epoll_create1(EPOLL_CLOEXEC);
  std::vector<Client> clients_;
  std::size_t talking_ = 0;
};

}  // namespace

std::string postOf(std::string_view target, std::string_view body, std::string_view headerLines) {
  std::string request = "POST ";
  request.append(target).append(" HTTP/1.1\r\nHost: h\r\n").append(headerLines);
  request.append("Content-Length: ").append(std::to_string(body.size()));
  return request.append("\r\n\r\n").append(body);
}

std::optional<HeardAnswer> takeAnswer(std::string& bytes) {
  const std::size_t headEnd = bytes.find("\r\n\r\n");
  if (headEnd == bytes.npos) return std::nullopt;
  const std::string_view head = std::string_view(bytes).substr(0, headEnd + 2);
  const std::string_view rest = std::string_view(bytes).substr(headEnd + 4);
  HeardAnswer answer{.status = static_cast<int>(numberIn(head.substr(head.find(' ') + 1, 3), 10)),
                     .body = {}};
  std::size_t size = numberIn(headerIn(head, "Content-Length: "), 10);
  if (headerIn(head, "Transfer-Encoding: ") == "chunked") {
    auto whole = dechunked(rest);
    if (!whole) return std::nullopt;
    answer.body = std::move(whole->first);
    size = whole->second;
  } else {
    if (rest.size() < size) return std::nullopt;
    answer.body = rest.substr(0, size);
  }
  bytes.erase(0, headEnd + 4 + size);
  return answer;
}

std::vector<std::vector<HeardAnswer>> askAtOnce(
    int port, std::size_t clients, std::size_t requestsEach,
    const std::function<std::string(std::size_t client, std::size_t request)>& requestOf,
    int mostSilenceMs) {
  Crowd crowd(requestsEach, requestOf);
  crowd.connect(port, clients);
  return crowd.talk(mostSilenceMs);
}

}  // namespace tern::test
