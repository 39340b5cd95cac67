#include "tools/tern/Desktop.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <vector>

namespace tern::command {

namespace {

bool isSet(const char* name) {
  const char* const text = std::getenv(name);
  return text != nullptr && *text != '\0';
}

// Ends with a null pointer.
std::vector<char*> environmentWithoutSecret() {
  std::vector<char*> kept;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (!std::string_view(*variable).starts_with("TERN_CLIENT_SECRET=")) kept.push_back(*variable);
  }
  kept.push_back(nullptr);
  return kept;
}

// A session of its own, so that what ends us at a terminal leaves the browser alone; signals as
// they are at first, and nothing to read or to say.
class QuietStart {
 public:
  QuietStart() {
    sigset_t piped;
    ::sigemptyset(&piped);
    ::sigaddset(&piped, SIGPIPE);
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setsigdefault(&attributes_, &piped);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    ::posix_spawn_file_actions_init(&files_);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      ::posix_spawn_file_actions_addopen(&files_, descriptor, "/dev/null", O_RDWR, 0);
    }
  }
  ~QuietStart() {
    ::posix_spawn_file_actions_destroy(&files_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  QuietStart(const QuietStart&) = delete;
  QuietStart& operator=(const QuietStart&) = delete;

  // -1 when it cannot be started.
  pid_t run(const char* program, char* const* words, char* const* environment) const {
    pid_t child = -1;
    const int error = ::posix_spawnp(&child, program, &files_, &attributes_, words, environment);
    return error == 0 ? child : -1;
  }

 private:
  posix_spawnattr_t attributes_{};
  posix_spawn_file_actions_t files_{};
};

}  // namespace

bool hasDesktop() { return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY"); }

void openOnDesktop(const std::string& address) {
  std::string program = "xdg-open";
  std::string word = address;
  const std::array<char*, 3> words{program.data(), word.data(), nullptr};
  const std::vector<char*> environment = environmentWithoutSecret();
  const pid_t child = QuietStart().run(program.c_str(), words.data(), environment.data());
  // Somebody has to hear that it has ended.
  if (child > 0) std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
}

}  // namespace tern::command
