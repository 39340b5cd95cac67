#include "tools/service/MappingService.hpp"

#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/service/HttpServer.hpp"
#include "tools/service/ServedDocuments.hpp"
#include "tools/service/ServedTokens.hpp"

namespace tern::service {

namespace {

constexpr std::string_view tokenPath = "/QRVS/api/auth/token";

}  // namespace

class MappingService::Implementation {
 public:
  explicit Implementation(ServiceSettings settings)
      : settings_(std::move(settings)),
        documents_(settings_.folder),
        tokens_(settings_.tokenValidity),
        server_([this](const auto& request, auto& response) { answer(request, response); },
                settings_.intercept) {}

  std::optional<std::string> start() {
    if (auto complaint = documents_.complaint()) return complaint;
    return server_.start(settings_.address, settings_.port);
  }

  HttpServer& server() { return server_; }
  const std::string& address() const { return settings_.address; }

 private:
  void answer(const httplib::Request& request, httplib::Response& response) {
    ServedAnswer answer = answerTo(request);
    response.status = answer.status;
    if (!answer.body.empty()) response.set_content(std::move(answer.body), "application/json");
  }

  ServedAnswer answerTo(const httplib::Request& request) {
    if (request.method == "POST" && request.path == tokenPath) return answerToken(request);
    if (request.method != "GET") return errorAnswer(405, "The service answers GET requests");
    if (!isAllowed(request)) return errorAnswer(401, "The access token is missing or has ended");
    constexpr const char* stamp = "If-Modified-Since";
    return documents_.answer(request.target, request.has_header(stamp)
                                                 ? std::optional(request.get_header_value(stamp))
                                                 : std::nullopt);
  }

  ServedAnswer answerToken(const httplib::Request& request) {
    if (request.get_param_value("grant_type") != "client_credentials") {
      return errorAnswer(400, "unsupported_grant_type");
    }
    if (request.get_param_value("client_id") != settings_.clientId ||
        request.get_param_value("client_secret") != settings_.clientSecret) {
      return errorAnswer(401, "invalid_client");
    }
    const std::int64_t seconds = tokens_.validity().count();
    return {200, encodeJson(Value::map({{"access_token", tokens_.handOut()},
                                        {"token_type", "Bearer"},
                                        {"expires_in", seconds}}),
                            JsonLayout::compact)};
  }

  bool isAllowed(const httplib::Request& request) const {
    constexpr std::string_view scheme = "Bearer ";
    const std::string header = request.get_header_value("Authorization");
    return header.starts_with(scheme) &&
           tokens_.isValid(std::string_view(header).substr(scheme.size()));
  }

  const ServiceSettings settings_;
  const ServedDocuments documents_;
  ServedTokens tokens_;
  HttpServer server_;
};

MappingService::MappingService(ServiceSettings settings)
    : implementation_(std::make_unique<Implementation>(std::move(settings))) {}

MappingService::~MappingService() = default;

std::optional<std::string> MappingService::start() { return implementation_->start(); }

void MappingService::stop() { implementation_->server().stop(); }

int MappingService::port() const { return implementation_->server().port(); }

std::string MappingService::url() const {
  const std::string& address = implementation_->address();
  const bool isIpv6 = address.find(':') != std::string::npos;
  return "http://" + (isIpv6 ? "[" + address + "]" : address) + ":" + std::to_string(port());
}

}  // namespace tern::service
