#include "tools/service/PageSite.hpp"

#include <strings.h>

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::service {

namespace {

// Workers and WebAssembly are the page's own; pictures it may make itself. Whoever holds a link to
// it cannot reach into its window, and it sends nobody where it was.
constexpr std::array<std::pair<const char*, const char*>, 5> policy{{
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; "
     "img-src 'self' blob: data:; connect-src 'self'; worker-src 'self'; manifest-src 'self'; "
     "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
}};

constexpr int httpPort = 80;

bool isNamedHost(const HttpHeader& header) {
  return ::strcasecmp(header.name.c_str(), "Host") == 0;
}

// Whether the request was sent to this machine by a name that nobody else can give it.
bool namesThisMachine(const ReceivedRequest& request, int port) {
  // Before it listens, nobody knows where it is.
  if (port == 0 || std::ranges::count_if(request.headers, isNamedHost) != 1) return false;
  const std::string host = request.header("Host").value_or("");
  const std::string behind = ":" + std::to_string(port);
  for (const std::string name : {"127.0.0.1", "localhost"}) {
    if (::strcasecmp(host.c_str(), (name + behind).c_str()) == 0) return true;
    if (port == httpPort && ::strcasecmp(host.c_str(), name.c_str()) == 0) return true;
  }
  return false;
}

bool onlyReads(const ReceivedRequest& request) {
  return request.method == "GET" || request.method == "HEAD";
}

ServedAnswer nothingAt(std::string_view path) {
  return errorAnswer(404, "There is nothing at " + std::string(path));
}

std::string joined(std::span<const std::string> names) {
  std::string path;
  for (const std::string& name : names) path.append(path.empty() ? "" : "/").append(name);
  return path;
}

bool isNotFound(const TernError& error) {
  return error.code == TernError::defaultErrorCodeForErrorType(TernErrorTypeObjectNotFound);
}

// What others must not keep: it may have come for a secret.
ServedAnswer notKept(ServedAnswer answer) {
  answer.headers.push_back({"Cache-Control", "no-store"});
  return answer;
}

}  // namespace

PageSite::PageSite(PageSettings settings) : settings_(std::move(settings)) {
  for (const std::int64_t venue : settings_.venues) {
    findings_.push_back(
        std::make_unique<SlowText>([this, venue] { return settings_.findings(venue); }));
  }
}

Reception PageSite::receive(const ReceivedRequest& head, int port) {
  if (onlyReads(head)) return {};
  return {.refusal = answer(head, port)};
}

ServedAnswer PageSite::answer(const ReceivedRequest& request, int port) {
  ServedAnswer answer = answerAsked(request, port);
  for (const auto& [name, value] : policy) answer.headers.push_back({name, value});
  return answer;
}

ServedAnswer PageSite::answerAsked(const ReceivedRequest& request, int port) {
  if (!namesThisMachine(request, port)) {
    return errorAnswer(403, "Only 127.0.0.1 and localhost are answered for");
  }
  if (!onlyReads(request)) {
    ServedAnswer refusal = errorAnswer(405, "GET and HEAD requests are answered");
    refusal.headers = {{"Allow", "GET, HEAD"}};
    return refusal;
  }
  const auto target = parseTarget(request.target);
  if (!target) return errorAnswer(404, "There is nothing there");
  return answerTarget(request, *target);
}

ServedAnswer PageSite::answerTarget(const ReceivedRequest& request, const RequestTarget& target) {
  const bool isFolder = target.path.ends_with('/');
  if (isFolder && !target.names.empty()) return nothingAt(target.path);
  if (target.path == "/config.json") return notKept(answerConfig());
  if (target.path == "/data/findings.json") return notKept(answerFindings(request, target));
  const bool isOfData = !isFolder && target.names.front() == "data";
  return isOfData ? notKept(answerDocument(target)) : answerFile(request, target);
}

ServedAnswer PageSite::answerFile(const ReceivedRequest& request,
                                  const RequestTarget& target) const {
  const std::string name = target.names.empty() ? "index.html" : joined(target.names);
  const auto file = std::ranges::find(settings_.files, name, &PageFile::name);
  return file != settings_.files.end() ? answerOf(*file, request) : nothingAt(target.path);
}

ServedAnswer PageSite::answerConfig() const {
  Value venues = Value::list();
  for (const std::int64_t id : settings_.venues) venues.append(id);
  const Value config = Value::map(
      {{"data", "data/"}, {"findings", "data/findings.json"}, {"venues", std::move(venues)}});
  return {.body = encodeJson(config, JsonLayout::compact)};
}

bool PageSite::isDocument(std::span<const std::string> names) const {
  if (names.empty() || names.back() != "full.json") return false;
  if (names.size() == 1) return true;
  if (names[0] != "venue" || !placeOf(names[1])) return false;
  return names.size() == 3 || (names.size() == 5 && names[2] == "building");
}

ServedAnswer PageSite::answerDocument(const RequestTarget& target) const {
  const auto names = std::span(target.names).subspan(1);
  if (!isDocument(names)) return nothingAt(target.path);
  auto text = settings_.documents.read(joined(names));
  if (const auto* error = std::get_if<TernError>(&text)) {
    return isNotFound(*error) ? nothingAt(target.path)
                              : errorAnswer(500, "The document cannot be read");
  }
  return {.body = std::get<std::string>(std::move(text)), .type = "application/json"};
}

ServedAnswer PageSite::answerFindings(const ReceivedRequest& request, const RequestTarget& target) {
  const auto place = placeOf(target.parameter("venue"));
  if (!place) return errorAnswer(404, "Name one of the venues: findings.json?venue=ID");
  return {.stream = findings_[*place]->stream(request.wake), .type = "application/json"};
}

std::optional<std::size_t> PageSite::placeOf(std::string_view venue) const {
  const auto& venues = settings_.venues;
  if (venue.empty()) return venues.size() == 1 ? std::optional<std::size_t>(0) : std::nullopt;
  const auto found =
      std::ranges::find_if(venues, [&](std::int64_t id) { return std::to_string(id) == venue; });
  if (found == venues.end()) return std::nullopt;
  return static_cast<std::size_t>(found - venues.begin());
}

}  // namespace tern::service
