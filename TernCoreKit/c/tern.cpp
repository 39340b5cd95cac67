#include "TernCoreKit/c/tern.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "TernCoreKit/Version.hpp"
#include "TernCoreKit/c/detail/CopiedStruct.hpp"
#include "TernCoreKit/c/detail/Guard.hpp"
#include "TernCoreKit/c/detail/Handles.hpp"
#include "TernCoreKit/c/detail/Host.hpp"
#include "TernCoreKit/c/detail/HostTransport.hpp"
#include "TernCoreKit/c/detail/OpenHub.hpp"
#include "TernCoreKit/c/detail/OpenVenue.hpp"
#include "TernCoreKit/c/detail/Options.hpp"
#include "TernCoreKit/c/detail/Sink.hpp"
#include "TernCoreKit/c/detail/VenueListing.hpp"
#include "TernCoreKit/c/detail/VenuesLoad.hpp"

namespace {

using namespace tern::detail;

using tern::DocumentSource;
using tern::HttpResponse;
using tern::TernError;

[[noreturn]] void refuseHandle(const void* handle, std::string_view kind) {
  refuseArgument("the " + std::string(kind) +
                 (handle == nullptr ? " is NULL" : " is closed, or never was one"));
}

template <class Object>
std::shared_ptr<Object> objectOf(const void* handle, std::string_view kind) {
  auto object = handles().find<Object>(numberOf(handle));
  if (object == nullptr) refuseHandle(handle, kind);
  return object;
}

template <class Object>
std::shared_ptr<Object> takenObject(const void* handle, std::string_view kind) {
  auto object = handles().take<Object>(numberOf(handle));
  if (object == nullptr) refuseHandle(handle, kind);
  return object;
}

void refuseNullCallback(bool isNull) {
  if (isNull) refuseArgument("the callback is NULL");
}

// Bytes of C, which may be none.
std::string_view bytesOf(const void* bytes, size_t size) {
  if (bytes == nullptr && size > 0) refuseArgument("the bytes are NULL");
  return size > 0 ? std::string_view(static_cast<const char*>(bytes), size) : std::string_view();
}

tern_venue* openedVenue(const DocumentSource& source, const char* options) {
  return handleTo<tern_venue>(
      handles().add(openVenue(source, Options(options, {"venues"}).ids("venues"))));
}

std::variant<std::string, TernError> documentOf(tern_document_callback document, void* context,
                                                const std::string& path) {
  const SinkHandle sink(tern::maximumDocumentBytes);
  document(context, path.c_str(), sink.handle());
  auto pieces = sink.taken();
  if (sink.isOverfull()) {
    return TernError::initWithErrorType(tern::TernErrorTypeIncorrectJSON,
                                        path + ": is larger than 1 GiB");
  }
  if (!pieces.empty()) return joinedPieces(std::move(pieces));
  return TernError::initWithErrorType(tern::TernErrorTypeObjectNotFound, path + ": was not given");
}

HttpResponse responseOf(const tern_http_response* given) {
  const tern_http_response response = copiedStruct(given, "response");
  HttpResponse made{.status = response.status, .leftOrigin = response.left_origin};
  if (response.body != nullptr) made.body = bytesOf(response.body, response.body_size);
  if (response.error != nullptr) made.error = textArgument(response.error, "text of an error");
  return made;
}

// Ends an exchange as it goes, with the response that it has by then.
class EndingExchange {
 public:
  explicit EndingExchange(tern_http_exchange* exchange)
      : number_(numberOf(exchange)), exchange_(takenObject<HostExchange>(exchange, "exchange")) {}
  ~EndingExchange() { exchange_->end(number_, std::move(response)); }
  EndingExchange(const EndingExchange&) = delete;
  EndingExchange& operator=(const EndingExchange&) = delete;

  HttpResponse response = {.error = "the host's response is not understood"};

 private:
  const std::uintptr_t number_;
  const std::shared_ptr<HostExchange> exchange_;
};

void refuseParts(const tern_host& host) {
  const int files = (host.file_read != nullptr) + (host.file_write != nullptr) +
                    (host.file_remove != nullptr) + (host.file_list != nullptr);
  if (files != 0 && files != 4) refuseArgument("of the callbacks for files some are NULL");
  if (host.http_cancel != nullptr && host.http_send == nullptr) {
    refuseArgument("http_cancel is there without http_send");
  }
}

}  // namespace

extern "C" {

const char* tern_version(void) noexcept { return tern::version().data(); }

int32_t tern_interface_version(void) noexcept { return TERN_INTERFACE_VERSION; }

void tern_text_free(char* text) noexcept { freeText(text); }

bool tern_give(tern_sink* sink, const void* bytes, size_t size, char** error) noexcept {
  return guarded(error, [&] {
    const auto taker = objectOf<Sink>(sink, "sink");
    if (!taker->give(bytesOf(bytes, size))) refuseArgument("these are too many bytes");
    return true;
  });
}

tern_venue* tern_venue_open_folder(const char* folder, const char* options, char** error) noexcept {
  return guarded(error, [&] {
    return openedVenue(tern::folderDocuments(textArgument(folder, "folder")), options);
  });
}

tern_venue* tern_venue_open_documents(tern_document_callback document, void* context,
                                      const char* options, char** error) noexcept {
  return guarded(error, [&] {
    refuseNullCallback(document == nullptr);
    const auto read = [=](const std::string& path) { return documentOf(document, context, path); };
    return openedVenue({{}, read}, options);
  });
}

char* tern_venue_answer(tern_venue* venue, const char* request) noexcept {
  char* error = nullptr;
  char* const answer = guarded(&error, [&] {
    const auto opened = objectOf<OpenVenue>(venue, "venue");
    if (request == nullptr) refuseArgument("the request is NULL");
    return textOf(opened->answers.answerText(request));
  });
  return answer != nullptr ? answer : error;
}

bool tern_venue_close(tern_venue* venue, char** error) noexcept {
  return guarded(error, [&] {
    takenObject<OpenVenue>(venue, "venue");
    return true;
  });
}

tern_hub* tern_hub_open(const char* options, char** error) noexcept {
  return guarded(error, [&] {
    const Options read(options, {"host", "customerId", "clientId", "clientSecret", "locale",
                                 "geoJSON", "autoReloadCache", "cacheFolder"});
    return handleTo<tern_hub>(handles().add(OpenHub::open(read)));
  });
}

bool tern_hub_load(tern_hub* hub, const char* options, tern_venue_callback loaded, void* context,
                   char** error) noexcept {
  return guarded(error, [&] {
    const auto opened = objectOf<OpenHub>(hub, "hub");
    refuseNullCallback(loaded == nullptr);
    const auto ids = Options(options, {"venues"}).ids("venues");
    opened->add([&](JobSource source) {
      return std::make_shared<VenuesLoad>(std::move(source), ids, loaded, context);
    });
    return true;
  });
}

bool tern_hub_list(tern_hub* hub, tern_text_callback listed, void* context, char** error) noexcept {
  return guarded(error, [&] {
    const auto opened = objectOf<OpenHub>(hub, "hub");
    refuseNullCallback(listed == nullptr);
    opened->add([&](JobSource source) {
      return std::make_shared<VenueListing>(std::move(source), listed, context);
    });
    return true;
  });
}

bool tern_hub_close(tern_hub* hub, char** error) noexcept {
  return guarded(error, [&] {
    takenObject<OpenHub>(hub, "hub")->close();
    return true;
  });
}

bool tern_http_complete(tern_http_exchange* exchange, const tern_http_response* response,
                        char** error) noexcept {
  return guarded(error, [&] {
    EndingExchange ending(exchange);
    ending.response = responseOf(response);
    return true;
  });
}

bool tern_set_host(const tern_host* host, char** error) noexcept {
  return guarded(error, [&] {
    std::shared_ptr<Host> made;
    if (host != nullptr) {
      const tern_host copied = copiedStruct(host, "host");
      refuseParts(copied);
      made = std::make_shared<Host>(copied);
    }
    setHost(made);
    return true;
  });
}

}  // extern "C"
