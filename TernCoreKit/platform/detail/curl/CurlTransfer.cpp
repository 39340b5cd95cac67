#include "TernCoreKit/platform/detail/curl/CurlTransfer.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/platform/detail/HttpRequestCheck.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/platform/detail/curl/HttpRedirect.hpp"

namespace tern::inline v5::detail {
namespace {

// Of all answers to one request together. A service sends some hundred bytes.
constexpr std::size_t mostHeaderBytes = std::size_t{1} << 20U;

CurlTransfer::Instant now() { return std::chrono::steady_clock::now(); }

bool needsBody(const HttpRequest& request) {
  return request.body.has_value() || request.method == "POST" || request.method == "PUT" ||
         request.method == "PATCH";
}

// A line as libcurl takes it, which sends a header without a value only when it ends in ";".
std::string headerLine(const HttpHeader& header) {
  return header.value.empty() ? header.name + ";" : header.name + ": " + header.value;
}

enum class Encoding { plain, gzip, other };

// How the body of the last answer comes.
Encoding encodingOf(CURL* handle) {
  curl_header* header = nullptr;
  if (curl_easy_header(handle, "Content-Encoding", 0, CURLH_HEADER, -1, &header) != CURLHE_OK) {
    return Encoding::plain;
  }
  const std::string_view name = header->value;
  if (header->amount > 1) return Encoding::other;
  if (isSameHeader(name, "gzip") || isSameHeader(name, "x-gzip")) return Encoding::gzip;
  const bool isPlain = name.empty() || isSameHeader(name, "identity");
  return isPlain ? Encoding::plain : Encoding::other;
}

}  // namespace

CurlTransfer::CurlTransfer(HttpRequest request, HttpTransport::Completion completion,
                           const HttpSettings& settings)
    : settings_(settings),
      request_(std::move(request)),
      completion_(std::move(completion)),
      lastMove_(now()) {}

template <class Work>
bool CurlTransfer::succeeds(Work work) {
  bool isDone = false;
  if (!attempt([&] { isDone = work(); })) fail(outOfMemory);
  return isDone;
}

bool CurlTransfer::prepare() {
  return succeeds([this] { return makeReady(); });
}

bool CurlTransfer::makeReady() {
  std::optional<std::string> fault = httpRequestFault(request_);
  if (!fault.has_value()) fault = urlFault(request_.url);
  if (fault.has_value()) {
    fail(*fault);
    return false;
  }
  if (handle_ == nullptr) handle_.reset(curl_easy_init());
  if (handle_ == nullptr || !setHeaders()) {
    fail(outOfMemory);
    return false;
  }
  setLimits();
  setRequest();
  return true;
}

// The same for every request.
void CurlTransfer::setLimits() {
  CURL* const handle = handle_.get();
  const auto connectTimeout = std::max(settings_.connectTimeout, std::chrono::milliseconds(1));
  curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(connectTimeout.count()));
  curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
  curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(handle, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  if (!settings_.certificateFile.empty()) {
    curl_easy_setopt(handle, CURLOPT_CAINFO, settings_.certificateFile.c_str());
    curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
  }
  curl_easy_setopt(handle, CURLOPT_PROXY, "");  // none, not even from the environment
  curl_easy_setopt(handle, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
  // Asked for, but left to us: libcurl takes half a stream for a whole one.
  curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "gzip");
  curl_easy_setopt(handle, CURLOPT_HTTP_CONTENT_DECODING, 0L);
  curl_easy_setopt(handle, CURLOPT_USERAGENT, "TernCoreKit");
  curl_easy_setopt(handle, CURLOPT_BUFFERSIZE, 128L * 1024L);
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  // A name that is still being looked up must not hold up the thread when its request ends.
  curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
}

void CurlTransfer::setRequest() {
  CURL* const handle = handle_.get();
  if (request_.method == "HEAD") {
    curl_easy_setopt(handle, CURLOPT_NOBODY, 1L);
  } else if (needsBody(request_)) {
    const std::size_t size = request_.body.has_value() ? request_.body->size() : 0;
    curl_easy_setopt(handle, CURLOPT_POST, 1L);
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(size));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, size > 0 ? request_.body->data() : "");
  } else {
    curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
  }
  curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, request_.method.c_str());
  curl_easy_setopt(handle, CURLOPT_URL, request_.url.c_str());
  curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers_.get());
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, errorText_.data());
  curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeader);
  curl_easy_setopt(handle, CURLOPT_HEADERDATA, static_cast<void*>(this));
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &CurlTransfer::onBody);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, static_cast<void*>(this));
  curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &CurlTransfer::onProgress);
  curl_easy_setopt(handle, CURLOPT_XFERINFODATA, static_cast<void*>(this));
  curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
}

bool CurlTransfer::setHeaders() {
  headers_.reset();
  const auto add = [&](const std::string& line) {
    curl_slist* const longer = curl_slist_append(headers_.get(), line.c_str());
    if (longer == nullptr) return false;
    // The first element stays the head.
    static_cast<void>(headers_.release());
    headers_.reset(longer);
    return true;
  };
  // libcurl's own: it would wait for a leave to send the body, and call any body a form.
  if (!add("Expect:")) return false;
  const auto isContentType = [](const HttpHeader& header) {
    return isSameHeader(header.name, "Content-Type");
  };
  if (std::none_of(request_.headers.begin(), request_.headers.end(), isContentType) &&
      !add("Content-Type:")) {
    return false;
  }
  return std::all_of(request_.headers.begin(), request_.headers.end(),
                     [&](const HttpHeader& header) { return add(headerLine(header)); });
}

std::size_t CurlTransfer::onHeader(char* /*bytes*/, std::size_t one, std::size_t count,
                                   void* self) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  return transfer.succeeds([&] { return transfer.takeHeader(one * count); }) ? one * count : 0;
}

std::size_t CurlTransfer::onBody(char* bytes, std::size_t one, std::size_t count, void* self) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  const std::string_view part(bytes, one * count);
  return transfer.succeeds([&] { return transfer.takeBody(part); }) ? part.size() : 0;
}

int CurlTransfer::onProgress(void* self, curl_off_t /*downTotal*/, curl_off_t down,
                             curl_off_t /*upTotal*/, curl_off_t up) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  if (std::exchange(transfer.movedBytes_, down + up) != down + up) transfer.lastMove_ = now();
  return 0;
}

bool CurlTransfer::takeHeader(std::size_t bytes) {
  lastMove_ = now();
  headerBytes_ += bytes;
  if (headerBytes_ <= mostHeaderBytes) return true;
  fail("The answer's headers are too long");
  return false;
}

bool CurlTransfer::takeBody(std::string_view bytes) {
  lastMove_ = now();
  if (!response_.body.has_value() && !beginBody()) return false;
  return gunzip_ ? takeGzip(*response_.body, bytes) : takePlain(*response_.body, bytes);
}

bool CurlTransfer::beginBody() {
  response_.body.emplace();
  gunzip_.reset();
  const Encoding encoding = encodingOf(handle_.get());
  if (encoding == Encoding::gzip) gunzip_.emplace();
  if (encoding == Encoding::other) fail("The answer comes in an encoding that was not asked for");
  return encoding != Encoding::other;
}

bool CurlTransfer::takePlain(std::string& body, std::string_view bytes) {
  if (bytes.size() > settings_.mostBodyBytes - body.size()) {
    fail("The answer is longer than " + std::to_string(settings_.mostBodyBytes) + " bytes");
    return false;
  }
  body.append(bytes);
  return true;
}

bool CurlTransfer::takeGzip(std::string& body, std::string_view bytes) {
  const char* const fault = gunzip_->add(bytes, body, settings_.mostBodyBytes);
  if (fault != nullptr) fail(fault);
  return fault == nullptr;
}

bool CurlTransfer::isWhole() {
  if (status() == 0) {
    fail("The answer has no status");
    return false;
  }
  if (!response_.body.has_value() || !gunzip_ || gunzip_->hasEnded()) return true;
  fail("The answer broke off");
  return false;
}

void CurlTransfer::fail(std::string_view error) {
  if (response_.error.has_value()) return;
  if (!attempt([&] { response_.error = error; })) response_.error = outOfMemory;
}

// 0 for none. libcurl takes "HTTP/200 OK" for the first line of an answer, and reads all digits of
// "HTTP/2 20000 OK".
int CurlTransfer::status() const {
  long status = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
  return status >= 100 && status <= 999 ? static_cast<int>(status) : 0;
}

bool CurlTransfer::goesOn(CURLcode result) {
  if (result == CURLE_OK) {
    return isWhole() && isRedirect(status()) && succeeds([this] { return follow(); });
  }
  fail(errorText_[0] != '\0' ? errorText_.data() : curl_easy_strerror(result));
  return false;
}

bool CurlTransfer::follow() {
  const char* location = nullptr;
  curl_easy_getinfo(handle_.get(), CURLINFO_REDIRECT_URL, &location);
  if (location == nullptr) return false;
  if (++redirects_ > settings_.mostRedirects) {
    fail("Redirect refused: there were more than " + std::to_string(settings_.mostRedirects));
    return false;
  }
  // Copied first: the handle owns it and gets a new one.
  const std::string target = location;
  const std::string source = request_.url;
  if (const auto fault = followRedirect(request_, status(), target)) {
    fail(*fault);
    return false;
  }
  response_.leftOrigin = response_.leftOrigin || !isSameOrigin(source, target);
  response_.body.reset();
  return makeReady();
}

void CurlTransfer::complete() {
  if (handle_ != nullptr) response_.status = status();
  if (response_.error.has_value()) response_.body.reset();
  completion_(std::move(response_));
}

}  // namespace tern::detail
