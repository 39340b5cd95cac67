#include "TernCoreKit/service/HTTPClient.hpp"

#include <utility>

#include "TernCoreKit/service/TernCoreUtils.hpp"

namespace tern::inline v5 {
namespace {

constexpr std::int64_t notModified = 304;
constexpr std::int64_t noRequestBody = 405;
constexpr std::int64_t badParameters = 409;
constexpr std::int64_t noAnswer = 444;
constexpr std::int64_t serverError = 500;

constexpr std::string_view unescapedMarks = "-._~";
// What may stand in a query, and so everywhere in a URL.
constexpr std::string_view queryMarks = "!$&'()*+,-./:;=?@_~";

bool isLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Escapes each byte but ASCII letters, digits and the given marks.
std::string percentEncoded(std::string_view text, std::string_view marks) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size());
  for (const char c : text) {
    if (isLetterOrDigit(c) || marks.find(c) != std::string_view::npos) {
      encoded += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      encoded += {'%', digits[byte >> 4U], digits[byte & 15U]};
    }
  }
  return encoded;
}

HttpRequest requestTo(std::string_view url, std::string_view method) {
  return {.url = percentEncoded(url, queryMarks), .method = std::string(method)};
}

void addHeaders(HttpRequest& request, const Value& headers) {
  for (const Value::Entry& header : headers.entries()) {
    request.headers.push_back({std::string(header.key.text()), header.value.printed()});
  }
}

std::string formOf(const Value& parameters) {
  std::string form;
  for (const Value::Entry& parameter : parameters.entries()) {
    if (!form.empty()) form += '&';
    form += parameter.key.text();
    form += '=';
    form += HTTPClient::URLEncodeStringFromString(parameter.value.printed());
  }
  return form;
}

std::string serverErrorText(const Value& answer) {
  const Value& text = answer["statusDesc"];
  return text.isText() ? std::string(text.text()) : "Internal Server Error";
}

void finishDecoded(std::optional<std::string> error, std::int64_t status, Value answer,
                   const HTTPClient::Completion& completion) {
  if (error.has_value()) {
    completion(std::move(error), status, {});
  } else if (status == serverError) {
    completion(serverErrorText(answer), status, {});
  } else {
    completion(std::nullopt, status, std::move(answer));
  }
}

void finish(HttpResponse response, std::string_view url, const HTTPClient::Completion& completion) {
  const std::int64_t status = response.status != 0 ? response.status : noAnswer;
  if (status == notModified) {
    completion(std::nullopt, status, {});
  } else if (response.body.has_value() && !response.body->empty()) {
    TernCoreUtils::parseJSONWithData(
        std::move(*response.body), [&](std::optional<std::string> error, Value answer) {
          finishDecoded(std::move(error), status, std::move(answer), completion);
        });
  } else {
    const std::string text = "An error occured during " + std::string(url) + " request";
    completion(response.error.value_or(text), status, {});
  }
}

}  // namespace

HTTPClient::HTTPClient(std::string hostURL) : hostURL_(std::move(hostURL)) {}

std::shared_ptr<HTTPClient> HTTPClient::initWithHostURL(std::string hostURL) {
  return std::shared_ptr<HTTPClient>(new HTTPClient(std::move(hostURL)));
}

void HTTPClient::GET(std::string_view path, const Value& headers, Completion completion) const {
  HttpRequest request = requestTo(hostURL_ + std::string(path), "GET");
  addHeaders(request, headers);
  sessionCallerWithUrl(path, std::move(request), std::move(completion));
}

void HTTPClient::GETWithFullUrl(std::string_view url, const Value& headers,
                                Completion completion) const {
  HttpRequest request = requestTo(url, "GET");
  addHeaders(request, headers);
  sessionCallerWithUrl(url, std::move(request), std::move(completion));
}

void HTTPClient::POST(std::string_view path, const Value& parameters, const Value& headers,
                      Completion completion) const {
  HttpRequest request = requestTo(hostURL_ + std::string(path), "POST");
  if (headers["Content-Type"].text() == "application/x-www-form-urlencoded") {
    createUrlencodedRequestWithParams(parameters, headers, path, std::move(request),
                                      std::move(completion));
  } else {
    sendJson(path, std::move(request), parameters, headers, std::move(completion));
  }
}

void HTTPClient::PUT(std::string_view path, const Value& parameters, const Value& headers,
                     Completion completion) const {
  sendJson(path, requestTo(hostURL_ + std::string(path), "PUT"), parameters, headers,
           std::move(completion));
}

void HTTPClient::DELETE(std::string_view path, const Value& headers, Completion completion) const {
  HttpRequest request = requestTo(hostURL_ + std::string(path), "DELETE");
  addHeaders(request, headers);
  sessionCallerWithUrl(path, std::move(request), std::move(completion));
}

void HTTPClient::sendJson(std::string_view path, HttpRequest request, const Value& parameters,
                          const Value& headers, Completion completion) const {
  TernCoreUtils::createJSONWithData(
      parameters, [&](std::optional<std::string> error, std::optional<std::string> data) {
        if (error.has_value()) {
          completion(std::move(error), badParameters, {});
          return;
        }
        request.body = std::move(data);
        addHeaders(request, headers);
        sessionCallerWithUrl(path, std::move(request), std::move(completion));
      });
}

void HTTPClient::createUrlencodedRequestWithParams(const Value& parameters, const Value& headers,
                                                   std::string_view url, HttpRequest request,
                                                   Completion completion) const {
  std::string form = formOf(parameters);
  if (form.empty()) {
    completion("No request body provided", noRequestBody, {});
    return;
  }
  request.body = std::move(form);
  addHeaders(request, headers);
  sessionCallerWithUrl(url, std::move(request), std::move(completion));
}

void HTTPClient::sessionCallerWithUrl(std::string_view url, HttpRequest request,
                                      Completion completion) const {
  // The completion holds the transport, so that one which is replaced still ends what it began.
  const std::shared_ptr<HttpTransport> transport = httpTransport();
  transport->send(std::move(request),
                  [transport, url = std::string(url), completion = std::move(completion)](
                      HttpResponse response) { finish(std::move(response), url, completion); });
}

std::string HTTPClient::URLEncodeStringFromString(std::string_view string) {
  return percentEncoded(string, unescapedMarks);
}

}  // namespace tern
