#include "tools/tern/ProcessEnd.hpp"

#include <unistd.h>

#include <thread>

namespace tern::command {

void endProcessWithin(std::chrono::milliseconds time, ExitStatus status) {
  std::thread([=] {
    std::this_thread::sleep_for(time);
    ::_exit(static_cast<int>(status));
  }).detach();
}

}  // namespace tern::command
