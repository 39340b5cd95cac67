// One request on its way through libcurl, over all its redirects.
//
// Ownership: owns its handle; the one who adds the handle to others takes it away before the
// transfer ends. Stays where it is: libcurl points at it.
// Threads: one at a time. Fails: by the response's error, which want of memory is too.
#pragma once

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/detail/curl/Gunzip.hpp"

namespace tern::inline v5::detail {

class CurlTransfer {
 public:
  using Instant = std::chrono::steady_clock::time_point;

  // The settings must outlive it.
  CurlTransfer(HttpRequest request, HttpTransport::Completion completion,
               const HttpSettings& settings);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  // Makes the handle ready to be added; false, and an error in the response, when this request
  // cannot be sent.
  bool prepare();
  CURL* handle() const { return handle_.get(); }

  // Takes in how the handle's work ended. True when a redirect sends the request on: the handle
  // is ready to be added again.
  bool goesOn(CURLcode result);

  // When it has been silent for too long, unless something moves before.
  Instant stallsAt() const { return lastMove_ + settings_.stallTimeout; }
  // The first one counts.
  void fail(std::string_view error);

  // Calls the completion with what came. REQUIRES: called once, as the last.
  void complete();

 private:
  struct FreeHandle {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };
  struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  static std::size_t onHeader(char* bytes, std::size_t one, std::size_t count, void* self);
  static std::size_t onBody(char* bytes, std::size_t one, std::size_t count, void* self);
  static int onProgress(void* self, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up);

  // Whether the work succeeded; without memory for it, it fails.
  template <class Work>
  bool succeeds(Work work);
  bool makeReady();
  void setLimits();
  void setRequest();
  bool setHeaders();
  bool takeHeader(std::size_t bytes);
  bool takeBody(std::string_view bytes);
  bool takePlain(std::string& body, std::string_view bytes);
  bool takeGzip(std::string& body, std::string_view bytes);
  // False, and an error, when the body comes in an encoding that was not asked for.
  bool beginBody();
  bool isWhole();
  bool follow();
  int status() const;

  const HttpSettings& settings_;
  HttpRequest request_;
  HttpTransport::Completion completion_;
  HttpResponse response_;
  int redirects_ = 0;
  // While a body comes that is gzip.
  std::optional<Gunzip> gunzip_;
  std::size_t headerBytes_ = 0;
  curl_off_t movedBytes_ = 0;
  Instant lastMove_;
  std::array<char, CURL_ERROR_SIZE> errorText_ = {};
  std::unique_ptr<curl_slist, FreeList> headers_;
  // After all that it points to.
  std::unique_ptr<CURL, FreeHandle> handle_;
};

}  // namespace tern::detail
