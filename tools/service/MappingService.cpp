#include "tools/service/MappingService.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/service/RequestTarget.hpp"
#include "tools/service/ServedDocuments.hpp"
#include "tools/service/ServedTokens.hpp"

namespace tern::service {

namespace {

constexpr std::string_view tokenPath = "/QRVS/api/auth/token";
constexpr std::string_view answerPath = "/answer";

}  // namespace

class MappingService::Implementation {
 public:
  explicit Implementation(ServiceSettings settings)
      : settings_(std::move(settings)),
        documents_(settings_.folder),
        tokens_(settings_.tokenValidity),
        answers_(settings_.venues, settings_.answerLimits),
        server_([this](ReceivedRequest& request) { return answer(request); }, HttpLimits(),
                [this](const ReceivedRequest& head) { return receive(head); }) {}

  std::optional<std::string> start() {
    if (auto complaint = documents_.complaint()) return complaint;
    return server_.start(settings_.address, settings_.port);
  }

  HttpServer& server() { return server_; }
  const std::string& address() const { return settings_.address; }

 private:
  Reception receive(const ReceivedRequest& head) const {
    if (!isForAnswers(head)) return {};
    if (head.method != "POST") return {.refusal = errorAnswer(405, "Requests come by POST")};
    if (!isAllowed(head)) return {.refusal = noToken()};
    return {.mostBodyBytes = answers_.limits().bodyBytes};
  }

  std::optional<ServedAnswer> answer(ReceivedRequest& request) {
    if (settings_.intercept && settings_.intercept(request)) return std::nullopt;
    return answerTo(request);
  }

  ServedAnswer answerTo(ReceivedRequest& request) {
    if (request.method == "POST" && request.target == tokenPath) return answerToken(request.body);
    if (isForAnswers(request)) return answerLines(request);
    if (request.method != "GET") return errorAnswer(405, "The service answers GET requests");
    if (!isAllowed(request)) return noToken();
    return documents_.answer(request.target, request.header("If-Modified-Since"));
  }

  static bool isForAnswers(const ReceivedRequest& request) {
    return std::string_view(request.target).substr(0, request.target.find('?')) == answerPath;
  }

  ServedAnswer answerLines(ReceivedRequest& request) {
    const auto target = parseTarget(request.target);
    if (!target) return errorAnswer(400, "The path of the request is not understood");
    return answers_.answer(request, target->parameter("venue"));
  }

  static ServedAnswer noToken() {
    return errorAnswer(401, "The access token is missing or has ended");
  }

  ServedAnswer answerToken(std::string form) {
    std::ranges::replace(form, '+', ' ');
    const auto asked = parseTarget("/?" + form);
    if (!asked || asked->parameter("grant_type") != "client_credentials") {
      return errorAnswer(400, "unsupported_grant_type");
    }
    if (asked->parameter("client_id") != settings_.clientId ||
        asked->parameter("client_secret") != settings_.clientSecret) {
      return errorAnswer(401, "invalid_client");
    }
    const std::int64_t seconds = tokens_.validity().count();
    return {200, encodeJson(Value::map({{"access_token", tokens_.handOut()},
                                        {"token_type", "Bearer"},
                                        {"expires_in", seconds}}),
                            JsonLayout::compact)};
  }

  bool isAllowed(const ReceivedRequest& request) const {
    constexpr std::string_view scheme = "Bearer ";
    const std::string header = request.header("Authorization").value_or("");
    return header.starts_with(scheme) &&
           tokens_.isValid(std::string_view(header).substr(scheme.size()));
  }

  const ServiceSettings settings_;
  const ServedDocuments documents_;
  ServedTokens tokens_;
  AnswerService answers_;
  HttpServer server_;
};

MappingService::MappingService(ServiceSettings settings)
    : implementation_(std::make_unique<Implementation>(std::move(settings))) {}

MappingService::~MappingService() = default;

std::optional<std::string> MappingService::start() { return implementation_->start(); }

void MappingService::stop(std::chrono::milliseconds grace) {
  implementation_->server().stop(grace);
}

int MappingService::port() const { return implementation_->server().port(); }

std::string MappingService::url() const {
  const std::string& address = implementation_->address();
  const bool isIpv6 = address.find(':') != std::string::npos;
  return "http://" + (isIpv6 ? "[" + address + "]" : address) + ":" + std::to_string(port());
}

}  // namespace tern::service
