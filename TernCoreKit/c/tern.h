/// @file
/// TernCoreKit in C11: the one door for Swift, Kotlin, Python, JavaScript and whoever calls C.
///
///     char *error;
///     tern_venue *venue = tern_venue_open_folder("data/plaza", NULL, &error);
///     char *answer = tern_venue_answer(venue, "{\"op\":\"route\",\"from\":22001,\"to\":14016}");
///     puts(answer);  // {"route":[{"mapId":11,...
///     tern_text_free(answer);
///     tern_venue_close(venue, NULL);
///
/// What all functions have in common:
///
/// - Texts are UTF-8 and end with a NUL, both ways: every language hands such a text over without
///   ado, and JSON holds no NUL. What may hold any byte (documents, bodies, files) has its size
///   beside it. Options, requests and answers are JSON.
/// - A function that can fail has `error` as its last argument, which may be NULL. It is set to
///   NULL, or to an error: {"error":{"code","message","description"}} with the library's own codes:
///   TN001 the service was not reached, TN002 it refused, TN003 no JSON, TN006 a wrong argument,
///   TN007 nothing was found, TN008 everything else, want of memory included. It is freed with
///   `tern_text_free`.
/// - A text that the library returns is the caller's until `tern_text_free`. What it hands to a
///   callback is valid during the call. What the caller hands over is copied.
/// - A handle that is NULL, was closed or never was one gets an error (TN006); nothing is read from
///   where it points to, on no thread. A number that was a handle once never is one again.
/// - Any function may be called from any thread at any time, from within a callback too.
/// - No exception crosses, and nothing ends the process. REQUIRES: a callback returns by its end;
/// it
///   neither throws nor jumps.
/// - Nothing is printed, but that the log goes to standard error until a host takes it.
///
/// Structs begin with their own size, so that later versions can add to their ends: set it with
/// sizeof. What an older caller's struct lacks counts as NULL or 0.
#ifndef TERN_C_TERN_H
#define TERN_C_TERN_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/// What stands before what a shared library exports; see TernCoreKit/platform/Export.hpp.
#if defined(TERN_SHARED) && defined(__GNUC__)
#define TERN_C_API __attribute__((visibility("default")))
#else
#define TERN_C_API
#endif

/// @def TERN_NULLABLE
/// Behind a pointer that may be NULL, for Swift. Clang alone knows the word.
/// @def TERN_NONNULL
/// Behind a pointer that never is NULL.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wnullability-extension"
#define TERN_NULLABLE _Nullable
#define TERN_NONNULL _Nonnull
#else
#define TERN_NULLABLE
#define TERN_NONNULL
#endif

/// Of a function: no exception leaves it, which a C++ compiler may rely on.
#ifdef __cplusplus
#define TERN_NOEXCEPT noexcept
extern "C" {
#else
#define TERN_NOEXCEPT
#endif

/// The version of this interface: raised with each addition. What is there stays as it is.
#define TERN_INTERFACE_VERSION 1

/// A loaded venue, or several that are joined. Not a pointer to anything.
typedef struct tern_venue tern_venue;
/// A mapping service and the cache of its answers. Not a pointer to anything.
typedef struct tern_hub tern_hub;
/// Takes what a callback gives; a handle that is good until that callback returns.
typedef struct tern_sink tern_sink;
/// An HTTP request that waits for its answer; a handle that is good until it has it.
typedef struct tern_http_exchange tern_http_exchange;

// Versions

/// The version of the library that the program runs with, such as "5.12.2". It stays the library's.
TERN_C_API const char* TERN_NONNULL tern_version(void) TERN_NOEXCEPT;

/// The TERN_INTERFACE_VERSION that the library was built with: one that is less than the header's
/// lacks functions.
TERN_C_API int32_t tern_interface_version(void) TERN_NOEXCEPT;

// Texts and bytes

/// Frees a text that a function of this interface returned. NULL means nothing.
/// REQUIRES: it is such a text, and was not freed before.
TERN_C_API void tern_text_free(char* TERN_NULLABLE text) TERN_NOEXCEPT;

/// Hands bytes over from within the callback that was given the sink. Several calls add up, where
/// one text is wanted; where a list is wanted each call is an element. `bytes` may be NULL when
/// `size` is 0.
TERN_C_API bool tern_give(tern_sink* TERN_NULLABLE sink, const void* TERN_NULLABLE bytes,
                          size_t size, char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

// Venues

/// Opens venues of a folder that holds the documents of a mapping service:
///
///     full.json                             the customer, with the list of venues
///     venue/<id>/full.json                  a venue
///     venue/<id>/building/<id>/full.json    a building of it, with floors and maps
///
/// Returns when routes can be asked for, which may take seconds. `options` may be NULL:
/// {"venues":[1,2]} are the ids of the venues to open; left out, it is the only one of the folder.
/// Several are joined by their exits: routes then lead across them, and every other request names
/// its "venue". One set of joined venues may be open at a time in a process.
///
/// NULL with an error when a document is missing or broken.
TERN_C_API tern_venue* TERN_NULLABLE
tern_venue_open_folder(const char* TERN_NULLABLE folder, const char* TERN_NULLABLE options,
                       char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

/// Hands over the document of that path, such as "venue/1/full.json", by `tern_give`; one that does
/// not exist is not given. Called on the thread that opens, as often as documents are needed.
typedef void (*tern_document_callback)(void* TERN_NULLABLE context, const char* TERN_NONNULL path,
                                       tern_sink* TERN_NONNULL sink);

/// The same where there is no folder: each document is asked of the callback. An error names the
/// document that is missing, so that who gets documents later can fetch it and open again.
TERN_C_API tern_venue* TERN_NULLABLE tern_venue_open_documents(
    tern_document_callback TERN_NULLABLE document, void* TERN_NULLABLE context,
    const char* TERN_NULLABLE options, char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

/// The answer to a request, on one line, to be freed; or an error in its place. Never NULL. The
/// requests are those of `tern batch`, and so are the answers, byte for byte. Any number of threads
/// may ask one venue at once.
TERN_C_API char* TERN_NONNULL tern_venue_answer(tern_venue* TERN_NULLABLE venue,
                                                const char* TERN_NULLABLE request) TERN_NOEXCEPT;

/// Closes a venue. Answers that are under way on other threads are finished, and its memory goes
/// with the last of them.
TERN_C_API bool tern_venue_close(tern_venue* TERN_NULLABLE venue,
                                 char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

// A mapping service

/// A hub that loads venues of a customer from a mapping service and keeps what it loads. `options`:
///
///     "host"             scheme and host, "https://maps.example.com"
///     "customerId"       a number
///     "clientId"         the credentials, which go to that host only;
///     "clientSecret"     all hubs of a process share the last ones
///     "locale"           left out: "en-US"
///     "geoJSON"          whether the service is asked for GeoJSON; left out: false
///     "autoReloadCache"  false: what is kept is used without asking the service; left out: true
///     "cacheFolder"      where answers are kept, a folder for this hub alone, which is emptied
///     when
///                        another version of the library has used it; left out: with the host's
///                        file callbacks, or else in the folder "TernCoreKit" of the user's data
///
/// No request is sent before the first load.
TERN_C_API tern_hub* TERN_NULLABLE tern_hub_open(
    const char* TERN_NULLABLE options, char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

/// Takes a venue that was loaded, which the callback has to close in time, and NULL; or NULL and
/// the error. Called exactly once for each load that began, on a thread of the library or of the
/// host's HTTP, or on the thread that began or closed, before that call returns.
typedef void (*tern_venue_callback)(void* TERN_NULLABLE context, tern_venue* TERN_NULLABLE venue,
                                    const char* TERN_NULLABLE error);

/// Loads venues with all their buildings; `options` as for `tern_venue_open_folder`. Loads of one
/// hub follow each other. What the service does not answer is taken from what is kept. True: the
/// load began, and the callback will be called.
TERN_C_API bool tern_hub_load(tern_hub* TERN_NULLABLE hub, const char* TERN_NULLABLE options,
                              tern_venue_callback TERN_NULLABLE loaded, void* TERN_NULLABLE context,
                              char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

/// Takes {"venues":[{"id","externalId","name"},...]}, or an error. Called as `tern_venue_callback`.
typedef void (*tern_text_callback)(void* TERN_NULLABLE context, const char* TERN_NONNULL text);

/// Lists the customer's venues.
TERN_C_API bool tern_hub_list(tern_hub* TERN_NULLABLE hub, tern_text_callback TERN_NULLABLE listed,
                              void* TERN_NULLABLE context,
                              char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

/// Closes a hub: loads that are under way or wait end with an error, whose callbacks are called
/// before this returns unless another thread is calling them just then, and the host's HTTP is told
/// to cancel their requests. Venues that were loaded stay.
TERN_C_API bool tern_hub_close(tern_hub* TERN_NULLABLE hub,
                               char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

// What a host may provide in place of the library's own

/// What is asked of a server.
typedef struct tern_http_request {
  /// Of this struct.
  size_t size;
  /// Such as "GET".
  const char* TERN_NONNULL method;
  /// Absolute, percent-encoded.
  const char* TERN_NONNULL url;
  /// Name, value, name, value, ...: two texts for each header.
  const char* TERN_NONNULL const* TERN_NULLABLE headers;
  /// How many headers there are.
  size_t header_count;
  /// To be sent as it is; NULL for none.
  const void* TERN_NULLABLE body;
  /// Bytes.
  size_t body_size;
} tern_http_request;

/// What came of a request.
typedef struct tern_http_response {
  /// sizeof(tern_http_response).
  size_t size;
  /// The HTTP status; 0 when no answer came.
  int32_t status;
  /// Whether a redirect led to another scheme, host or port on the way. Such an answer is used but
  /// not kept.
  bool left_origin;
  /// Decompressed; NULL when none came, or when it broke off.
  const void* TERN_NULLABLE body;
  /// Bytes.
  size_t body_size;
  /// Why the exchange failed, one line; NULL when it did not.
  const char* TERN_NULLABLE error;
} tern_http_response;

/// Ends an exchange with what came of it, from any thread, in the call of `http_send` or later.
/// Every exchange has to be ended, once. A response that is not understood ends it with an error.
TERN_C_API bool tern_http_complete(tern_http_exchange* TERN_NULLABLE exchange,
                                   const tern_http_response* TERN_NULLABLE response,
                                   char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

/// What the library uses of its host. What is NULL is the library's own: HTTP over libcurl, files
/// in the user's data folder, the log on standard error.
typedef struct tern_host {
  /// sizeof(tern_host).
  size_t size;
  /// The first argument of every callback below, each of which may be called from any thread, and
  /// from several at once.
  void* TERN_NULLABLE context;
  /// The context is not needed any more: another host is in place and nothing that this one began
  /// is under way. Called once.
  void (*TERN_NULLABLE release)(void* TERN_NULLABLE context);

  /// Begins to send a request, to the service and not to a local cache, and follows redirects.
  /// Cookies and stored passwords are not sent. `tern_http_complete` ends the exchange.
  void (*TERN_NULLABLE http_send)(void* TERN_NULLABLE context,
                                  const tern_http_request* TERN_NONNULL request,
                                  tern_http_exchange* TERN_NONNULL exchange);
  /// Nobody waits for this exchange any more, which has ended; it may be one that `http_send` is
  /// still being called with. May be NULL.
  void (*TERN_NULLABLE http_cancel)(void* TERN_NULLABLE context,
                                    tern_http_exchange* TERN_NONNULL exchange);

  // The store of what is loaded: files by their paths, such as "Tern/cache/5.12.2/.../data.json",
  // without folders to be made. All four or none.

  /// Gives the contents of the file; one that is not there is not given.
  void (*TERN_NULLABLE file_read)(void* TERN_NULLABLE context, const char* TERN_NONNULL path,
                                  tern_sink* TERN_NONNULL sink);
  /// Writes the file, in the place of an older one as one step. False when it could not.
  bool (*TERN_NULLABLE file_write)(void* TERN_NULLABLE context, const char* TERN_NONNULL path,
                                   const void* TERN_NONNULL bytes, size_t size);
  /// Removes the file. False when it could not, or when there was none.
  bool (*TERN_NULLABLE file_remove)(void* TERN_NULLABLE context, const char* TERN_NONNULL path);
  /// Gives the path of each file whose path begins with the prefix, a path a call.
  void (*TERN_NULLABLE file_list)(void* TERN_NULLABLE context, const char* TERN_NONNULL prefix,
                                  tern_sink* TERN_NONNULL sink);

  /// Takes a line of the log, which never holds a secret.
  void (*TERN_NULLABLE log)(void* TERN_NULLABLE context, const char* TERN_NONNULL line);
} tern_host;

/// Puts a host in the place of the current one; NULL brings the library's own back. To be called
/// before the first hub is opened: hubs that are open keep what they were opened with. Exchanges of
/// the old host that no hub waits for are cancelled. Where it fails nothing changes and nothing is
/// released.
TERN_C_API bool tern_set_host(const tern_host* TERN_NULLABLE host,
                              char* TERN_NULLABLE* TERN_NULLABLE error) TERN_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#if defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif
