#include "TernCoreKit/service/HTTPClient.hpp"

#include <utility>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/TernCoreUtils.hpp"

namespace tern::inline v5 {
namespace {

constexpr std::int64_t noMemory = 0;
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

using KeptCompletion = detail::Kept<HTTPClient::OriginCompletion>;

void finish(HttpResponse response, std::string_view url, const KeptCompletion& completion) {
  const std::int64_t status = response.status != 0 ? response.status : noAnswer;
  const auto end = [&](std::optional<std::string> error, Value answer) {
    if (!error.has_value() && status == serverError) error = serverErrorText(answer);
    if (error.has_value()) answer = Value();
    completion(std::move(error), status, std::move(answer), response.leftOrigin);
  };
  if (status == notModified) {
    end(std::nullopt, {});
  } else if (response.body.has_value() && !response.body->empty()) {
    TernCoreUtils::parseJSONWithData(std::move(*response.body), end);
  } else {
    const std::string text = "An error occured during " + std::string(url) + " request";
    end(response.error.value_or(text), {});
  }
}

// Runs the steps of a request up to where its completion is in the hands of others.
template <class Steps>
void begin(HTTPClient::Completion completion, Steps steps) {
  detail::attemptWith(std::move(completion), steps,
                      [](const auto& ended) { ended(detail::outOfMemory, noMemory, Value()); });
}

void endWithoutMemory(const auto& completion) {
  completion(detail::outOfMemory, noMemory, Value(), false);
}

}  // namespace

HTTPClient::HTTPClient(std::string hostURL, std::shared_ptr<HttpTransport> transport)
    : hostURL_(std::move(hostURL)), transport_(std::move(transport)) {}

std::shared_ptr<HTTPClient> HTTPClient::initWithHostURL(std::string hostURL,
                                                        std::shared_ptr<HttpTransport> transport) {
  return std::shared_ptr<HTTPClient>(new HTTPClient(std::move(hostURL), std::move(transport)));
}

void HTTPClient::GET(std::string_view path, const Value& headers, Completion completion) const {
  begin(std::move(completion), [&](const auto& kept) {
    HttpRequest request = requestTo(hostURL_ + std::string(path), "GET");
    addHeaders(request, headers);
    sessionCallerWithUrl(path, std::move(request), kept);
  });
}

void HTTPClient::GETWithOrigin(std::string_view path, const Value& headers,
                               OriginCompletion completion) const {
  detail::attemptWith(
      std::move(completion),
      [&](const auto& kept) {
        HttpRequest request = requestTo(hostURL_ + std::string(path), "GET");
        addHeaders(request, headers);
        send(path, std::move(request), kept);
      },
      [](const auto& ended) { endWithoutMemory(ended); });
}

void HTTPClient::GETWithFullUrl(std::string_view url, const Value& headers,
                                Completion completion) const {
  begin(std::move(completion), [&](const auto& kept) {
    HttpRequest request = requestTo(url, "GET");
    addHeaders(request, headers);
    sessionCallerWithUrl(url, std::move(request), kept);
  });
}

void HTTPClient::POST(std::string_view path, const Value& parameters, const Value& headers,
                      Completion completion) const {
  begin(std::move(completion), [&](const auto& kept) {
    HttpRequest request = requestTo(hostURL_ + std::string(path), "POST");
    if (headers["Content-Type"].text() == "application/x-www-form-urlencoded") {
      createUrlencodedRequestWithParams(parameters, headers, path, std::move(request), kept);
    } else {
      sendJson(path, std::move(request), parameters, headers, kept);
    }
  });
}

void HTTPClient::PUT(std::string_view path, const Value& parameters, const Value& headers,
                     Completion completion) const {
  begin(std::move(completion), [&](const auto& kept) {
    sendJson(path, requestTo(hostURL_ + std::string(path), "PUT"), parameters, headers, kept);
  });
}

void HTTPClient::DELETE(std::string_view path, const Value& headers, Completion completion) const {
  begin(std::move(completion), [&](const auto& kept) {
    HttpRequest request = requestTo(hostURL_ + std::string(path), "DELETE");
    addHeaders(request, headers);
    sessionCallerWithUrl(path, std::move(request), kept);
  });
}

// Where memory runs out, its caller tells the completion.
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
  begin(std::move(completion), [&](const auto& kept) {
    std::string form = formOf(parameters);
    if (form.empty()) return kept("No request body provided", noRequestBody, Value());
    request.body = std::move(form);
    addHeaders(request, headers);
    sessionCallerWithUrl(url, std::move(request), kept);
  });
}

void HTTPClient::sessionCallerWithUrl(std::string_view url, HttpRequest request,
                                      Completion completion) const {
  begin(std::move(completion), [&](const auto& kept) {
    send(url, std::move(request),
         [kept](std::optional<std::string> error, std::int64_t status, Value answer,
                bool /*leftOrigin*/) { kept(std::move(error), status, std::move(answer)); });
  });
}

void HTTPClient::send(std::string_view url, HttpRequest request,
                      OriginCompletion completion) const {
  const auto steps = [&](const KeptCompletion& kept) {
    // The completion holds the transport, so that one which is replaced still ends what it began.
    const auto transport = transport_ != nullptr ? transport_ : httpTransport();
    transport->send(std::move(request),
                    [transport, url = std::string(url), kept](HttpResponse response) {
                      const auto end = [&] { finish(std::move(response), url, kept); };
                      if (!detail::attempt(end)) endWithoutMemory(kept);
                    });
  };
  detail::attemptWith(std::move(completion), steps,
                      [](const auto& ended) { endWithoutMemory(ended); });
}

std::string HTTPClient::URLEncodeStringFromString(std::string_view string) {
  return percentEncoded(string, unescapedMarks);
}

}  // namespace tern
