// What JavaScript calls and is called by: the C interface with its callbacks as imports, and a
// struct as plain arguments. Texts and bytes lie in memory that the caller got by `take`.
#include <stdlib.h>

#include "TernCoreKit/c/tern.h"

#define TERN_IMPORT(name) __attribute__((import_module("tern"), import_name(name)))
#define TERN_EXPORT(name) __attribute__((export_name(name)))

TERN_IMPORT("document") void tern_js_document(void* context, const char* path, tern_sink* sink);
TERN_IMPORT("loaded")
void tern_js_loaded(void* context, tern_venue* venue, const char* error);
TERN_IMPORT("listed") void tern_js_listed(void* context, const char* text);
TERN_IMPORT("httpSend")
void tern_js_http_send(void* context, const tern_http_request* request,
                       tern_http_exchange* exchange);
TERN_IMPORT("httpCancel") void tern_js_http_cancel(void* context, tern_http_exchange* exchange);
TERN_IMPORT("fileRead")
void tern_js_file_read(void* context, const char* path, tern_sink* sink);
TERN_IMPORT("fileWrite")
bool tern_js_file_write(void* context, const char* path, const void* bytes, size_t size);
TERN_IMPORT("fileRemove") bool tern_js_file_remove(void* context, const char* path);
TERN_IMPORT("fileList")
void tern_js_file_list(void* context, const char* prefix, tern_sink* sink);
TERN_IMPORT("log") void tern_js_log(void* context, const char* line);

TERN_EXPORT("take") void* tern_js_take(size_t size) { return malloc(size); }
TERN_EXPORT("release") void tern_js_release(void* memory) { free(memory); }

TERN_EXPORT("version") const char* tern_js_version(void) { return tern_version(); }
TERN_EXPORT("freeText") void tern_js_free_text(char* text) { tern_text_free(text); }

// Puts JavaScript's HTTP, files and log in their places; before everything else.
TERN_EXPORT("setHost") bool tern_js_set_host(char** error) {
  const tern_host host = {
      .size = sizeof(tern_host),
      .http_send = tern_js_http_send,
      .http_cancel = tern_js_http_cancel,
      .file_read = tern_js_file_read,
      .file_write = tern_js_file_write,
      .file_remove = tern_js_file_remove,
      .file_list = tern_js_file_list,
      .log = tern_js_log,
  };
  return tern_set_host(&host, error);
}

TERN_EXPORT("give") bool tern_js_give(tern_sink* sink, const void* bytes, size_t size) {
  return tern_give(sink, bytes, size, NULL);
}

TERN_EXPORT("openVenue")
tern_venue* tern_js_open_venue(void* context, const char* options, char** error) {
  return tern_venue_open_documents(tern_js_document, context, options, error);
}
TERN_EXPORT("answer") char* tern_js_answer(tern_venue* venue, const char* request) {
  return tern_venue_answer(venue, request);
}
TERN_EXPORT("closeVenue") bool tern_js_close_venue(tern_venue* venue, char** error) {
  return tern_venue_close(venue, error);
}

TERN_EXPORT("openHub") tern_hub* tern_js_open_hub(const char* options, char** error) {
  return tern_hub_open(options, error);
}
TERN_EXPORT("loadVenues")
bool tern_js_load_venues(tern_hub* hub, const char* options, void* context, char** error) {
  return tern_hub_load(hub, options, tern_js_loaded, context, error);
}
TERN_EXPORT("listVenues") bool tern_js_list_venues(tern_hub* hub, void* context, char** error) {
  return tern_hub_list(hub, tern_js_listed, context, error);
}
TERN_EXPORT("closeHub") bool tern_js_close_hub(tern_hub* hub, char** error) {
  return tern_hub_close(hub, error);
}

TERN_EXPORT("completeHttp")
bool tern_js_complete_http(tern_http_exchange* exchange, int32_t status, bool left_origin,
                           const void* body, size_t body_size, const char* reason, char** error) {
  const tern_http_response response = {
      .size = sizeof(tern_http_response),
      .status = status,
      .left_origin = left_origin,
      .body = body,
      .body_size = body_size,
      .error = reason,
  };
  return tern_http_complete(exchange, &response, error);
}
