// Many HTTP clients at once on 127.0.0.1, each on a connection of its own, on one thread.
//
//   const auto heard = askAtOnce(port, 200, 5, [](std::size_t client, std::size_t request) {
//     return postOf("/answer", "{\"op\":\"center\",\"id\":" + ...);
//   });
//   heard[7][2];  // what the eighth client got for its third request
//
// Threads: any. Fails: what a client never got is absent in its answers; a client that is refused a
// connection, or cut off, gets nothing more.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tern::test {

struct HeardAnswer {
  int status = 0;
  std::string body;
};

// A whole request, head and body. Header lines come each with its line break.
std::string postOf(std::string_view target, std::string_view body,
                   std::string_view headerLines = {});

// The whole answer at the front of the bytes, taken off them; none while it is not all there.
std::optional<HeardAnswer> takeAnswer(std::string& bytes);

// All clients connect, then each sends its requests one after the other, the next when the one
// before is answered. Ends when all are answered, or nobody hears anything for that many
// milliseconds.
std::vector<std::vector<HeardAnswer>> askAtOnce(
    int port, std::size_t clients, std::size_t requestsEach,
    const std::function<std::string(std::size_t client, std::size_t request)>& requestOf,
    int mostSilenceMs = 30'000);

}  // namespace tern::test
