// The local service behind its socket: any bytes in, and nothing but an HTTP answer, or none, out.
#include <string>
#include <vector>

#include "fuzz/ReplyingServer.hpp"
#include "fuzz/ServedFolder.hpp"
#include "fuzz/Target.hpp"
#include "tools/service/MappingService.hpp"

namespace tern::fuzz {
namespace {

constexpr const char* secret = "unguessed";

struct Served {
  ServedFolder folder;
  service::MappingService service{{.folder = folder.path(), .clientSecret = secret}};
  Served() { require(!service.start(), "the service starts"); }
};

void run(const std::string& bytes) {
  static const Served served;
  // libFuzzer reads along what is compared, and so finds the secret.
  if (bytes.find(secret) != std::string::npos) return;
  const std::string answer = answerTo(served.service.port(), bytes);
  require(answer.empty() || answer.starts_with("HTTP/1."), "an answer is HTTP");
  require(answer.find(ServedFolder::hidden) == std::string::npos, "nothing outside is ever read");
  require(answer.find("access_token\":") == std::string::npos, "a token takes the secret");
  require(answer.find("\"calm\"") == std::string::npos, "a document takes a token");
}

std::vector<std::string> seeds() {
  const std::string head = " HTTP/1.1\r\nHost: a\r\nConnection: close\r\n";
  return {"GET /QRVS/api/customer/5/full?v=4.12" + head + "Authorization: Bearer x\r\n\r\n",
          "POST /QRVS/api/auth/token" + head +
              "Content-Length: 44\r\n\r\ngrant_type=client_credentials&client_id=local",
          "POST /QRVS/api/auth/token" + head +
              "Transfer-Encoding: chunked\r\n\r\n4\r\na=b&\r\n0\r\n\r\n",
          "HEAD /" + head + "\r\n",
          "PUT /a%20b" + head + "Content-Length: 3\r\n\r\nabc",
          "GET / HTTP/0.9\r\n\r\n",
          "\r\n\r\nGET",
          "GET /" + std::string(3000, 'a') + head + "\r\n"};
}

}  // namespace

extern const Target servedBytesTarget{
    .name = "served-bytes", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
