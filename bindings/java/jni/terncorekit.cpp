// The C interface for Java: the functions that io.terncorekit.Native declares, and the callbacks
// that go to Documents, HubJob and HostCalls. Texts and bytes are byte arrays both ways, since
// Java's own kind of UTF-8 is another one. Nothing is decided here.
#include <jni.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <limits>

#include "TernCoreKit/c/tern.h"

namespace {

JavaVM* machine = nullptr;

// Threads of the library that are in Java, and whether Java ends, when no more may come: one that
// is still there then is never let out again, and the end of the process would wait for it.
std::atomic<int> threadsInJava = 0;
std::atomic<bool> javaEnds = false;

// What is called of Java, looked up once.
struct JavaMethods {
  jclass bytes;
  jclass exception;
  jmethodID exceptionOf;
  jmethodID documentsGet;
  jmethodID jobDone;
  jmethodID httpSend;
  jmethodID httpCancel;
  jmethodID fileRead;
  jmethodID fileWrite;
  jmethodID fileRemove;
  jmethodID fileList;
  jmethodID log;
} java;

template <class Handle>
Handle* handleOf(jlong number) {
  return reinterpret_cast<Handle*>(static_cast<std::intptr_t>(number));
}

jlong numberOf(const void* handle) {
  return static_cast<jlong>(reinterpret_cast<std::intptr_t>(handle));
}

// An array of those bytes; null with an OutOfMemoryError where there is no room.
jbyteArray arrayOf(JNIEnv* env, const void* bytes, std::size_t size) {
  if (size > static_cast<std::size_t>(std::numeric_limits<jsize>::max())) {
    if (jclass error = env->FindClass("java/lang/OutOfMemoryError")) {
      env->ThrowNew(error, "more than an array holds");
    }
    return nullptr;
  }
  jbyteArray array = env->NewByteArray(static_cast<jsize>(size));
  if (array && size > 0) {
    env->SetByteArrayRegion(array, 0, static_cast<jsize>(size), static_cast<const jbyte*>(bytes));
  }
  return array;
}

jbyteArray arrayOf(JNIEnv* env, const char* text) {
  return text ? arrayOf(env, text, std::strlen(text)) : nullptr;
}

// The bytes of an array, which may be null, for a scope.
class Given {
 public:
  Given(JNIEnv* env, jbyteArray array)
      : env_(env),
        array_(array),
        bytes_(array ? env->GetByteArrayElements(array, nullptr) : nullptr) {}
  Given(const Given&) = delete;
  Given& operator=(const Given&) = delete;
  ~Given() {
    if (bytes_) env_->ReleaseByteArrayElements(array_, bytes_, JNI_ABORT);
  }

  // There was no memory for them; an OutOfMemoryError is on its way.
  [[nodiscard]] bool failed() const { return array_ && !bytes_; }
  [[nodiscard]] const char* text() const { return reinterpret_cast<const char*>(bytes_); }
  [[nodiscard]] std::size_t size() const {
    return bytes_ ? static_cast<std::size_t>(env_->GetArrayLength(array_)) : 0;
  }

 private:
  JNIEnv* env_;
  jbyteArray array_;
  jbyte* bytes_;
};

// Throws an error of the library, which is freed; nothing where there is none.
void raise(JNIEnv* env, char* error) {
  if (!error) return;
  jbyteArray text = arrayOf(env, error);
  tern_text_free(error);
  if (!text) return;
  jobject thrown = env->CallStaticObjectMethod(java.exception, java.exceptionOf, text);
  if (!env->ExceptionCheck()) env->Throw(static_cast<jthrowable>(thrown));
}

// Java for the scope of a callback, on any thread. One that Java does not know is attached for that
// long, as a daemon: nobody waits for it when the program ends. What is thrown ends here.
class JavaScope {
 public:
  JavaScope() {
    void* known = nullptr;
    if (machine->GetEnv(&known, JNI_VERSION_1_6) == JNI_OK) {
      env_ = static_cast<JNIEnv*>(known);
    } else {
      attach();
    }
    if (env_ && env_->PushLocalFrame(16) != 0) {
      env_->ExceptionClear();
      leave();
    }
  }
  JavaScope(const JavaScope&) = delete;
  JavaScope& operator=(const JavaScope&) = delete;
  ~JavaScope() {
    if (!env_) return;
    env_->ExceptionClear();
    env_->PopLocalFrame(nullptr);
    leave();
  }

  // Null where Java has gone or has no memory.
  [[nodiscard]] JNIEnv* env() const { return env_; }

  // Whether the last call of Java threw, which is forgotten.
  [[nodiscard]] bool caught() const {
    const bool thrown = env_->ExceptionCheck() == JNI_TRUE;
    if (thrown) env_->ExceptionClear();
    return thrown;
  }

 private:
  void attach() {
    ++threadsInJava;
    if (javaEnds) {
      --threadsInJava;
      return;
    }
#ifdef __ANDROID__
    isAttached_ = machine->AttachCurrentThreadAsDaemon(&env_, nullptr) == JNI_OK;
#else
    void* attached = nullptr;
    isAttached_ = machine->AttachCurrentThreadAsDaemon(&attached, nullptr) == JNI_OK;
    env_ = static_cast<JNIEnv*>(attached);
#endif
    if (isAttached_) return;
    env_ = nullptr;
    --threadsInJava;
  }

  void leave() {
    env_ = nullptr;
    if (!isAttached_) return;
    machine->DetachCurrentThread();
    --threadsInJava;
  }

  JNIEnv* env_ = nullptr;
  bool isAttached_ = false;
};

void giveArray(JNIEnv* env, tern_sink* sink, jbyteArray array) {
  const Given given(env, array);
  if (array && !given.failed()) tern_give(sink, given.text(), given.size(), nullptr);
}

void onDocument(void* context, const char* path, tern_sink* sink) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  jbyteArray name = env ? arrayOf(env, path) : nullptr;
  if (!name) return;
  jobject document = env->CallObjectMethod(static_cast<jobject>(context), java.documentsGet, name);
  if (!scope.caught()) giveArray(env, sink, static_cast<jbyteArray>(document));
}

// Tells a job of its end, and lets it go. What Java could not take is closed here.
void onDone(void* context, tern_venue* venue, const char* text) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  if (!env) {
    tern_venue_close(venue, nullptr);
    return;
  }
  auto* const job = static_cast<jobject>(context);
  jbyteArray said = arrayOf(env, text);
  if (scope.caught()) said = nullptr;
  env->CallVoidMethod(job, java.jobDone, numberOf(venue), said);
  if (scope.caught()) tern_venue_close(venue, nullptr);
  env->DeleteGlobalRef(job);
}

void onListed(void* context, const char* text) { onDone(context, nullptr, text); }

jobjectArray headersOf(JNIEnv* env, const tern_http_request& request) {
  const auto count = static_cast<jsize>(2 * request.header_count);
  jobjectArray headers = env->NewObjectArray(count, java.bytes, nullptr);
  for (jsize i = 0; headers && i < count; ++i) {
    jbyteArray text = arrayOf(env, request.headers[i]);
    if (!text) return nullptr;
    env->SetObjectArrayElement(headers, i, text);
    env->DeleteLocalRef(text);
  }
  return headers;
}

// Whether Java took the request.
bool sends(const JavaScope& scope, void* context, const tern_http_request& request,
           tern_http_exchange* exchange) {
  JNIEnv* env = scope.env();
  if (!env) return false;
  jbyteArray method = arrayOf(env, request.method);
  jbyteArray url = method ? arrayOf(env, request.url) : nullptr;
  jobjectArray headers = url ? headersOf(env, request) : nullptr;
  if (!headers) return false;
  jbyteArray body = request.body ? arrayOf(env, request.body, request.body_size) : nullptr;
  if (request.body && !body) return false;
  env->CallVoidMethod(static_cast<jobject>(context), java.httpSend, numberOf(exchange), method, url,
                      headers, body);
  return !scope.caught();
}

void onHttpSend(void* context, const tern_http_request* request, tern_http_exchange* exchange) {
  const JavaScope scope;
  if (sends(scope, context, *request, exchange)) return;
  tern_http_response response{};
  response.size = sizeof response;
  response.error = "Java could not take the request";
  tern_http_complete(exchange, &response, nullptr);
}

void onHttpCancel(void* context, tern_http_exchange* exchange) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  if (!env) return;
  env->CallVoidMethod(static_cast<jobject>(context), java.httpCancel, numberOf(exchange));
}

void onFileRead(void* context, const char* path, tern_sink* sink) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  jbyteArray name = env ? arrayOf(env, path) : nullptr;
  if (!name) return;
  jobject contents = env->CallObjectMethod(static_cast<jobject>(context), java.fileRead, name);
  if (!scope.caught()) giveArray(env, sink, static_cast<jbyteArray>(contents));
}

bool onFileWrite(void* context, const char* path, const void* bytes, std::size_t size) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  jbyteArray name = env ? arrayOf(env, path) : nullptr;
  jbyteArray contents = name ? arrayOf(env, bytes, size) : nullptr;
  if (!contents) return false;
  const jboolean isWritten =
      env->CallBooleanMethod(static_cast<jobject>(context), java.fileWrite, name, contents);
  return !scope.caught() && isWritten == JNI_TRUE;
}

bool onFileRemove(void* context, const char* path) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  jbyteArray name = env ? arrayOf(env, path) : nullptr;
  if (!name) return false;
  const jboolean isRemoved =
      env->CallBooleanMethod(static_cast<jobject>(context), java.fileRemove, name);
  return !scope.caught() && isRemoved == JNI_TRUE;
}

void onFileList(void* context, const char* prefix, tern_sink* sink) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  jbyteArray begin = env ? arrayOf(env, prefix) : nullptr;
  if (!begin) return;
  auto* const paths = static_cast<jobjectArray>(
      env->CallObjectMethod(static_cast<jobject>(context), java.fileList, begin));
  if (scope.caught() || !paths) return;
  for (jsize i = 0; i < env->GetArrayLength(paths); ++i) {
    auto* const path = static_cast<jbyteArray>(env->GetObjectArrayElement(paths, i));
    giveArray(env, sink, path);
    env->DeleteLocalRef(path);
  }
}

void onLog(void* context, const char* line) {
  const JavaScope scope;
  JNIEnv* env = scope.env();
  jbyteArray text = env ? arrayOf(env, line) : nullptr;
  if (text) env->CallVoidMethod(static_cast<jobject>(context), java.log, text);
}

void onRelease(void* context) {
  const JavaScope scope;
  if (scope.env()) scope.env()->DeleteGlobalRef(static_cast<jobject>(context));
}

// The host that calls the object, which is kept until `release`.
tern_host hostOf(jobject calls, bool http, bool files, bool log) {
  tern_host host{};
  host.size = sizeof host;
  host.context = calls;
  host.release = onRelease;
  if (http) {
    host.http_send = onHttpSend;
    host.http_cancel = onHttpCancel;
  }
  if (files) {
    host.file_read = onFileRead;
    host.file_write = onFileWrite;
    host.file_remove = onFileRemove;
    host.file_list = onFileList;
  }
  if (log) host.log = onLog;
  return host;
}

jclass keptClass(JNIEnv* env, const char* name) {
  jclass found = env->FindClass(name);
  return found ? static_cast<jclass>(env->NewGlobalRef(found)) : nullptr;
}

jmethodID methodOf(JNIEnv* env, const char* type, const char* name, const char* signature) {
  jclass found = env->ExceptionCheck() ? nullptr : env->FindClass(type);
  return found ? env->GetMethodID(found, name, signature) : nullptr;
}

bool looksUp(JNIEnv* env) {
  java.bytes = keptClass(env, "[B");
  java.exception = keptClass(env, "io/terncorekit/TernException");
  if (!java.bytes || !java.exception) return false;
  java.exceptionOf =
      env->GetStaticMethodID(java.exception, "of", "([B)Lio/terncorekit/TernException;");
  java.documentsGet = methodOf(env, "io/terncorekit/Documents", "get", "([B)[B");
  java.jobDone = methodOf(env, "io/terncorekit/HubJob", "done", "(J[B)V");
  const char* host = "io/terncorekit/HostCalls";
  java.httpSend = methodOf(env, host, "httpSend", "(J[B[B[[B[B)V");
  java.httpCancel = methodOf(env, host, "httpCancel", "(J)V");
  java.fileRead = methodOf(env, host, "fileRead", "([B)[B");
  java.fileWrite = methodOf(env, host, "fileWrite", "([B[B)Z");
  java.fileRemove = methodOf(env, host, "fileRemove", "([B)Z");
  java.fileList = methodOf(env, host, "fileList", "([B)[[B");
  java.log = methodOf(env, host, "log", "([B)V");
  return !env->ExceptionCheck();
}

}  // namespace

extern "C" {

JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*) {
  machine = vm;
  void* env = nullptr;
  if (vm->GetEnv(&env, JNI_VERSION_1_6) != JNI_OK) return JNI_ERR;
  return looksUp(static_cast<JNIEnv*>(env)) ? JNI_VERSION_1_6 : JNI_ERR;
}

JNIEXPORT jbyteArray JNICALL Java_io_terncorekit_Native_version(JNIEnv* env, jclass) {
  return arrayOf(env, tern_version());
}

JNIEXPORT jint JNICALL Java_io_terncorekit_Native_endCalls(JNIEnv*, jclass) {
  javaEnds = true;
  return threadsInJava;
}

JNIEXPORT jlong JNICALL Java_io_terncorekit_Native_openFolder(JNIEnv* env, jclass,
                                                              jbyteArray folder,
                                                              jbyteArray options) {
  const Given path(env, folder);
  if (path.failed()) return 0;
  const Given chosen(env, options);
  if (chosen.failed()) return 0;
  char* error = nullptr;
  tern_venue* venue = tern_venue_open_folder(path.text(), chosen.text(), &error);
  raise(env, error);
  return numberOf(venue);
}

JNIEXPORT jlong JNICALL Java_io_terncorekit_Native_openDocuments(JNIEnv* env, jclass,
                                                                 jobject documents,
                                                                 jbyteArray options) {
  const Given chosen(env, options);
  if (chosen.failed()) return 0;
  char* error = nullptr;
  tern_venue* venue = tern_venue_open_documents(onDocument, documents, chosen.text(), &error);
  raise(env, error);
  return numberOf(venue);
}

JNIEXPORT jbyteArray JNICALL Java_io_terncorekit_Native_answer(JNIEnv* env, jclass, jlong venue,
                                                               jbyteArray request) {
  const Given asked(env, request);
  if (asked.failed()) return nullptr;
  char* answer = tern_venue_answer(handleOf<tern_venue>(venue), asked.text());
  jbyteArray taken = arrayOf(env, answer);
  tern_text_free(answer);
  return taken;
}

JNIEXPORT void JNICALL Java_io_terncorekit_Native_closeVenue(JNIEnv*, jclass, jlong venue) {
  tern_venue_close(handleOf<tern_venue>(venue), nullptr);
}

JNIEXPORT jlong JNICALL Java_io_terncorekit_Native_openHub(JNIEnv* env, jclass,
                                                           jbyteArray options) {
  const Given chosen(env, options);
  if (chosen.failed()) return 0;
  char* error = nullptr;
  tern_hub* hub = tern_hub_open(chosen.text(), &error);
  raise(env, error);
  return numberOf(hub);
}

JNIEXPORT void JNICALL Java_io_terncorekit_Native_load(JNIEnv* env, jclass, jlong hub,
                                                       jbyteArray options, jobject job) {
  const Given chosen(env, options);
  jobject kept = chosen.failed() ? nullptr : env->NewGlobalRef(job);
  if (!kept) return;
  char* error = nullptr;
  if (!tern_hub_load(handleOf<tern_hub>(hub), chosen.text(), onDone, kept, &error)) {
    env->DeleteGlobalRef(kept);
  }
  raise(env, error);
}

JNIEXPORT void JNICALL Java_io_terncorekit_Native_list(JNIEnv* env, jclass, jlong hub,
                                                       jobject job) {
  jobject kept = env->NewGlobalRef(job);
  if (!kept) return;
  char* error = nullptr;
  if (!tern_hub_list(handleOf<tern_hub>(hub), onListed, kept, &error)) env->DeleteGlobalRef(kept);
  raise(env, error);
}

JNIEXPORT void JNICALL Java_io_terncorekit_Native_closeHub(JNIEnv*, jclass, jlong hub) {
  tern_hub_close(handleOf<tern_hub>(hub), nullptr);
}

JNIEXPORT void JNICALL Java_io_terncorekit_Native_setHost(JNIEnv* env, jclass, jobject calls,
                                                          jboolean http, jboolean files,
                                                          jboolean log) {
  char* error = nullptr;
  if (!calls) {
    tern_set_host(nullptr, &error);
    raise(env, error);
    return;
  }
  jobject kept = env->NewGlobalRef(calls);
  if (!kept) return;
  const tern_host host = hostOf(kept, http == JNI_TRUE, files == JNI_TRUE, log == JNI_TRUE);
  if (!tern_set_host(&host, &error)) env->DeleteGlobalRef(kept);
  raise(env, error);
}

JNIEXPORT void JNICALL Java_io_terncorekit_Native_complete(JNIEnv* env, jclass, jlong exchange,
                                                           jint status, jboolean leftOrigin,
                                                           jbyteArray body, jbyteArray error) {
  const Given contents(env, body);
  if (contents.failed()) env->ExceptionClear();
  const Given reason(env, error);
  if (reason.failed()) env->ExceptionClear();
  tern_http_response response{};
  response.size = sizeof response;
  response.status = status;
  response.left_origin = leftOrigin == JNI_TRUE;
  response.body = contents.text();
  response.body_size = contents.size();
  response.error = contents.failed() ? "Java has no memory for the answer" : reason.text();
  tern_http_complete(handleOf<tern_http_exchange>(exchange), &response, nullptr);
}

}  // extern "C"
