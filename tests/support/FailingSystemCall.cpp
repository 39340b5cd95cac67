#include "tests/support/FailingSystemCall.hpp"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <type_traits>
#include <utility>

#include "tests/support/Countdown.hpp"

namespace {

using tern::test::Countdown;

constinit thread_local Countdown callsOfThread;
constinit Countdown callsOfProcess;

constinit thread_local std::vector<std::string>* recorded = nullptr;

void record(const char* name, int file) {
  if (recorded == nullptr) return;
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  recorded->push_back(name + (" " + std::filesystem::read_symlink(link).string()));
}

constinit thread_local int namesTaken = 0;

bool callFails() {
  return callsOfThread.fails() || (!tern::test::isThisThreadSpared() && callsOfProcess.fails());
}

// The call that the program would make without us, made; or the error.
template <class Call, class... Arguments>
auto callOr(int error, const char* name, Call* /*ours*/, Arguments... arguments) {
  using Result = decltype(std::declval<Call*>()(arguments...));
  if (callFails()) {
    errno = error;
    if constexpr (std::is_pointer_v<Result>) {
      return Result{nullptr};
    } else {
      return static_cast<Result>(-1);
    }
  }
  return reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, name))(arguments...);
}

}  // namespace

// These take the place of the C library's, for whoever calls them in this process.
extern "C" {

int open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return callOr(EMFILE, "open", &open, path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  if ((flags & O_EXCL) != 0 && namesTaken > 0) {
    --namesTaken;
    errno = EEXIST;
    return -1;
  }
  return callOr(EMFILE, "openat", &openat, folder, path, flags, mode);
}
// How libc++ opens a stream, below which no call can be seen.
FILE* fopen(const char* path, const char* mode) {
  return callOr(EMFILE, "fopen", &fopen, path, mode);
}
ssize_t read(int file, void* bytes, size_t size) {
  return callOr(EIO, "read", &read, file, bytes, size);
}
ssize_t write(int file, const void* bytes, size_t size) {
  record("write", file);
  return callOr(ENOSPC, "write", &write, file, bytes, size);
}
int fsync(int file) {
  record("fsync", file);
  return callOr(EIO, "fsync", &fsync, file);
}
int flock(int file, int what) noexcept { return callOr(ENOLCK, "flock", &flock, file, what); }
int fstat(int file, struct stat* status) noexcept {
  return callOr(EIO, "fstat", &fstat, file, status);
}
int fstatat(int folder, const char* name, struct stat* status, int flags) noexcept {
  return callOr(EIO, "fstatat", &fstatat, folder, name, status, flags);
}
int mkdirat(int folder, const char* name, mode_t mode) noexcept {
  record("mkdirat", folder);
  return callOr(ENOSPC, "mkdirat", &mkdirat, folder, name, mode);
}
int unlinkat(int folder, const char* name, int flags) noexcept {
  return callOr(EIO, "unlinkat", &unlinkat, folder, name, flags);
}
int renameat(int folder, const char* name, int into, const char* as) noexcept {
  record("renameat", folder);
  return callOr(EIO, "renameat", &renameat, folder, name, into, as);
}
DIR* fdopendir(int folder) { return callOr(ENOMEM, "fdopendir", &fdopendir, folder); }
dirent* readdir(DIR* folder) { return callOr(EIO, "readdir", &readdir, folder); }
int socket(int domain, int type, int protocol) noexcept {
  return callOr(EMFILE, "socket", &socket, domain, type, protocol);
}
int connect(int file, const sockaddr* address, socklen_t size) {
  return callOr(ENETUNREACH, "connect", &connect, file, address, size);
}
ssize_t send(int file, const void* bytes, size_t size, int flags) {
  return callOr(EPIPE, "send", &send, file, bytes, size, flags);
}
ssize_t recv(int file, void* bytes, size_t size, int flags) {
  return callOr(ECONNRESET, "recv", &recv, file, bytes, size, flags);
}
int eventfd(unsigned count, int flags) noexcept {
  return callOr(EMFILE, "eventfd", &eventfd, count, flags);
}
// The sanitizers', which have to know of each thread; null without one.
[[gnu::weak]] int sanitizedPthreadCreate(pthread_t* thread, const pthread_attr_t* attributes,
                                         void* (*work)(void*), void* word) noexcept
    __asm__("__interceptor_pthread_create");

// Says by its result what the others say by `errno`.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*),
                   void* word) noexcept {
  if (callFails()) return EAGAIN;
  using Create = decltype(&pthread_create);
  const Create create = sanitizedPthreadCreate != nullptr
                            ? &sanitizedPthreadCreate
                            : reinterpret_cast<Create>(::dlsym(RTLD_NEXT, "pthread_create"));
  return create(thread, attributes, work, word);
}

}  // extern "C"

namespace tern::test {

namespace {

Countdown& callCountdown(FailingAllocation::Reach reach) {
  return reach == FailingAllocation::Reach::thread ? callsOfThread : callsOfProcess;
}

constexpr std::size_t mostCalls = 60;

}  // namespace

int forFailingSystemCalls(FailingAllocation::Reach reach, const std::function<void()>& work,
                          const std::function<void()>& check) {
  Countdown& countdown = callCountdown(reach);
  countdown.start(Countdown::never - 1, false);
  work();
  const std::size_t count = Countdown::never - 1 - countdown.left();
  countdown.stop();
  check();
  const std::size_t step = isEveryFailureWanted() ? 1 : std::max<std::size_t>(1, count / mostCalls);
  int failed = 0;
  for (std::size_t nth = 0; nth < count; nth += step) {
    for (const bool always : {false, true}) {
      countdown.start(nth, always);
      work();
      countdown.stop();
      failed += countdown.hasFailed() ? 1 : 0;
      check();
    }
  }
  return failed;
}

void letNamesBeTaken(int count) { namesTaken = count; }

std::vector<std::string> callsThatReachTheDisk(const std::function<void()>& work) {
  std::vector<std::string> calls;
  recorded = &calls;
  work();
  recorded = nullptr;
  return calls;
}

}  // namespace tern::test
