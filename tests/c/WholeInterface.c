#define _POSIX_C_SOURCE 200809L

#include "tests/c/WholeInterface.h"

#include <pthread.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "TernCoreKit/c/tern.h"

/* Ends the function by the words and what there is to say more. */
#define EXPECT(isTrue, more)                                    \
  do {                                                          \
    if (!(isTrue)) return failed_at(__LINE__, (#isTrue), more); \
  } while (0)

static char failure[2000];

static const char* failed_at(int line, const char* what, const char* more) {
  snprintf(failure, sizeof failure, "WholeInterface.c:%d: %s: %.1000s", line, what,
           more ? more : "");
  return failure;
}

static const char* route = "{\"op\":\"route\",\"from\":22001,\"to\":14016}";

/* A file below a folder, to be freed; NULL without one. */
static char* read_file(const char* folder, const char* path, size_t* size) {
  char name[1000];
  snprintf(name, sizeof name, "%s/%s", folder, path);
  FILE* file = fopen(name, "rb");
  if (!file) return NULL;
  fseek(file, 0, SEEK_END);
  *size = (size_t)ftell(file);
  rewind(file);
  char* bytes = malloc(*size + 1);
  if (bytes) *size = fread(bytes, 1, *size, file);
  fclose(file);
  return bytes;
}

static void give_document(void* folder, const char* path, tern_sink* sink) {
  size_t size = 0;
  char* bytes = read_file(folder, path, &size);
  if (bytes) tern_give(sink, bytes, size, NULL);
  free(bytes);
}

/* What several threads ask of one venue. */
struct question {
  tern_venue* venue;
  const char* expected;
  int wrong;
};

static void* ask_often(void* word) {
  struct question* question = word;
  for (int i = 0; i < 20; ++i) {
    char* answer = tern_venue_answer(question->venue, route);
    if (strcmp(answer, question->expected) != 0) ++question->wrong;
    tern_text_free(answer);
  }
  return NULL;
}

static const char* ask_on_threads(tern_venue* venue, const char* expected) {
  pthread_t threads[4];
  struct question questions[4];
  for (int i = 0; i < 4; ++i) {
    questions[i] = (struct question){venue, expected, 0};
    EXPECT(pthread_create(&threads[i], NULL, ask_often, &questions[i]) == 0, "no thread");
  }
  for (int i = 0; i < 4; ++i) pthread_join(threads[i], NULL);
  for (int i = 0; i < 4; ++i) EXPECT(questions[i].wrong == 0, "other answers on other threads");
  return NULL;
}

/* Asks a venue, closes it and asks again. */
static const char* use_venue(tern_venue* venue) {
  static char expected[100000];
  char* answer = tern_venue_answer(venue, route);
  EXPECT(strncmp(answer, "{\"route\":[{", 11) == 0, answer);
  snprintf(expected, sizeof expected, "%s", answer);
  tern_text_free(answer);
  const char* wrong = ask_on_threads(venue, expected);
  if (wrong) return wrong;
  char* error = expected;
  EXPECT(tern_venue_close(venue, &error), error);
  EXPECT(error == NULL, error);
  EXPECT(!tern_venue_close(venue, &error), "closed twice");
  EXPECT(strstr(error, "\"TN006\"") != NULL, error);
  tern_text_free(error);
  answer = tern_venue_answer(venue, route);
  EXPECT(strncmp(answer, "{\"error\":{", 10) == 0, answer);
  tern_text_free(answer);
  return NULL;
}

static const char* open_and_use(const char* folder) {
  char* error = NULL;
  tern_venue* venue = tern_venue_open_folder(folder, NULL, &error);
  EXPECT(venue != NULL, error);
  const char* wrong = use_venue(venue);
  if (wrong) return wrong;
  venue = tern_venue_open_documents(give_document, (void*)folder, "{\"venues\":[1]}", &error);
  EXPECT(venue != NULL, error);
  wrong = use_venue(venue);
  if (wrong) return wrong;
  EXPECT(tern_venue_open_folder("no such folder", NULL, &error) == NULL, "opened");
  EXPECT(strstr(error, "there is no folder no such folder") != NULL, error);
  tern_text_free(error);
  return NULL;
}

/* A host with a service, files in memory and a log. */
enum { most_files = 20 };

struct host {
  const char* folder;
  pthread_mutex_t mutex;
  char* paths[most_files];
  char* contents[most_files];
  size_t sizes[most_files];
  int file_count;
  int requests;
  int lines;
  int cancelled;
  int released;
};

/* "https://h/QRVS/api/customer/1/venue/1/full?v=..." is FOLDER/venue/1/full.json. */
static char* document_of_url(const struct host* host, const char* url, size_t* size) {
  const char* customer = "/QRVS/api/customer/1/";
  const char* path = strstr(url, customer);
  char name[500];
  if (!path) return NULL;
  path += strlen(customer);
  snprintf(name, sizeof name, "%.*s.json", (int)strcspn(path, "?"), path);
  return read_file(host->folder, name, size);
}

static void send_request(void* context, const tern_http_request* request,
                         tern_http_exchange* exchange) {
  struct host* host = context;
  const char* token = "{\"access_token\":\"t\",\"expires_in\":3600}";
  tern_http_response response = {.size = sizeof response, .status = 200};
  char* document = NULL;
  pthread_mutex_lock(&host->mutex);
  ++host->requests;
  pthread_mutex_unlock(&host->mutex);
  if (strcmp(request->method, "POST") == 0) {
    response.body = token;
    response.body_size = strlen(token);
  } else {
    response.body = document = document_of_url(host, request->url, &response.body_size);
    if (!document) response.status = 404;
  }
  tern_http_complete(exchange, &response, NULL);
  free(document);
}

static void cancel_request(void* context, tern_http_exchange* exchange) {
  (void)exchange;
  ++((struct host*)context)->cancelled;
}

/* The place of a file, or behind the last one. */
static int place_of(const struct host* host, const char* path) {
  int i = 0;
  while (i < host->file_count && strcmp(host->paths[i], path) != 0) ++i;
  return i;
}

static void read_stored(void* context, const char* path, tern_sink* sink) {
  struct host* host = context;
  pthread_mutex_lock(&host->mutex);
  int i = place_of(host, path);
  if (i < host->file_count) tern_give(sink, host->contents[i], host->sizes[i], NULL);
  pthread_mutex_unlock(&host->mutex);
}

static bool write_stored(void* context, const char* path, const void* bytes, size_t size) {
  struct host* host = context;
  pthread_mutex_lock(&host->mutex);
  int i = place_of(host, path);
  const bool fits = i < most_files;
  if (fits && i == host->file_count) {
    host->paths[i] = malloc(strlen(path) + 1);
    strcpy(host->paths[i], path);
    host->contents[i] = NULL;
    ++host->file_count;
  }
  if (fits) {
    free(host->contents[i]);
    host->contents[i] = malloc(size + 1);
    memcpy(host->contents[i], bytes, size);
    host->sizes[i] = size;
  }
  pthread_mutex_unlock(&host->mutex);
  return fits;
}

static bool remove_stored(void* context, const char* path) {
  struct host* host = context;
  pthread_mutex_lock(&host->mutex);
  int i = place_of(host, path);
  const bool is_there = i < host->file_count;
  if (is_there) {
    free(host->paths[i]);
    free(host->contents[i]);
    --host->file_count;
    host->paths[i] = host->paths[host->file_count];
    host->contents[i] = host->contents[host->file_count];
    host->sizes[i] = host->sizes[host->file_count];
  }
  pthread_mutex_unlock(&host->mutex);
  return is_there;
}

static void list_stored(void* context, const char* prefix, tern_sink* sink) {
  struct host* host = context;
  pthread_mutex_lock(&host->mutex);
  for (int i = 0; i < host->file_count; ++i) {
    if (strncmp(host->paths[i], prefix, strlen(prefix)) != 0) continue;
    tern_give(sink, host->paths[i], strlen(host->paths[i]), NULL);
  }
  pthread_mutex_unlock(&host->mutex);
}

static void count_line(void* context, const char* line) {
  struct host* host = context;
  (void)line;
  pthread_mutex_lock(&host->mutex);
  ++host->lines;
  pthread_mutex_unlock(&host->mutex);
}

static void count_release(void* context) {
  struct host* host = context;
  pthread_mutex_lock(&host->mutex);
  ++host->released;
  pthread_mutex_unlock(&host->mutex);
}

static int releases(struct host* host) {
  pthread_mutex_lock(&host->mutex);
  const int released = host->released;
  pthread_mutex_unlock(&host->mutex);
  return released;
}

/* What came of a load. */
struct loaded {
  pthread_mutex_t mutex;
  tern_venue* venue;
  char text[2000];
  int calls;
};

static void take_text(void* context, const char* text) {
  struct loaded* loaded = context;
  pthread_mutex_lock(&loaded->mutex);
  snprintf(loaded->text, sizeof loaded->text, "%s", text);
  ++loaded->calls;
  pthread_mutex_unlock(&loaded->mutex);
}

static void take_venue(void* context, tern_venue* venue, const char* error) {
  struct loaded* loaded = context;
  loaded->venue = venue;
  take_text(context, error ? error : "");
}

static void wait_for(struct loaded* loaded, int calls) {
  const struct timespec millisecond = {0, 1000000};
  for (int tries = 0; tries < 120000; ++tries) {
    pthread_mutex_lock(&loaded->mutex);
    const bool is_there = loaded->calls == calls;
    pthread_mutex_unlock(&loaded->mutex);
    if (is_there) return;
    nanosleep(&millisecond, NULL);
  }
}

static const char* load_over_hub(struct host* host) {
  struct loaded loaded = {.venue = NULL};
  char* error = NULL;
  pthread_mutex_init(&loaded.mutex, NULL);
  tern_hub* hub = tern_hub_open(
      "{\"host\":\"https://h\",\"customerId\":1,\"clientId\":\"c\",\"clientSecret\":\"s\"}",
      &error);
  EXPECT(hub != NULL, error);
  EXPECT(tern_hub_list(hub, take_text, &loaded, &error), error);
  wait_for(&loaded, 1);
  EXPECT(strncmp(loaded.text, "{\"venues\":[{\"id\":1,", 19) == 0, loaded.text);
  EXPECT(tern_hub_load(hub, NULL, take_venue, &loaded, &error), error);
  wait_for(&loaded, 2);
  EXPECT(loaded.venue != NULL, loaded.text);
  EXPECT(host->requests > 0 && host->file_count > 0, "the host was not asked");
  EXPECT(tern_hub_close(hub, &error), error);
  EXPECT(!tern_hub_load(hub, NULL, take_venue, &loaded, NULL), "loaded by a closed hub");
  EXPECT(loaded.calls == 2, "called again");
  const char* wrong = use_venue(loaded.venue);
  pthread_mutex_destroy(&loaded.mutex);
  return wrong;
}

static const char* use_host(const char* folder) {
  struct host host = {.folder = folder};
  char* error = NULL;
  pthread_mutex_init(&host.mutex, NULL);
  const tern_host callbacks = {.size = sizeof callbacks,
                               .context = &host,
                               .release = count_release,
                               .http_send = send_request,
                               .http_cancel = cancel_request,
                               .file_read = read_stored,
                               .file_write = write_stored,
                               .file_remove = remove_stored,
                               .file_list = list_stored,
                               .log = count_line};
  EXPECT(tern_set_host(&callbacks, &error), error);
  const char* wrong = load_over_hub(&host);
  if (wrong) return wrong;
  EXPECT(tern_set_host(NULL, &error), error);
  const struct timespec millisecond = {0, 1000000};
  for (int tries = 0; tries < 120000 && releases(&host) == 0; ++tries)
    nanosleep(&millisecond, NULL);
  EXPECT(releases(&host) == 1, "the host was not released");
  while (host.file_count > 0) remove_stored(&host, host.paths[0]);
  pthread_mutex_destroy(&host.mutex);
  return NULL;
}

const char* drive_whole_interface(const char* folder) {
  EXPECT(strcmp(tern_version(), "5.12.2") == 0, tern_version());
  EXPECT(tern_interface_version() == TERN_INTERFACE_VERSION, "another interface");
  tern_text_free(NULL);
  EXPECT(!tern_give(NULL, "x", 1, NULL), "a sink that is none");
  EXPECT(!tern_http_complete(NULL, NULL, NULL), "an exchange that is none");
  const char* wrong = open_and_use(folder);
  return wrong ? wrong : use_host(folder);
}
