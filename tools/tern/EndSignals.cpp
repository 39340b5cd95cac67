#include "tools/tern/EndSignals.hpp"

#include <semaphore.h>

#include <array>
#include <csignal>

namespace tern::command {

namespace {

constexpr std::array endings{SIGINT, SIGTERM};

// What a signal's handler may touch: posting is safe in it.
sem_t signalsSeen;
std::array<struct sigaction, endings.size()> handlersBefore;

void takeSignal(int /*signal*/) { ::sem_post(&signalsSeen); }

}  // namespace

EndSignals::EndSignals() {
  ::sem_init(&signalsSeen, 0, 0);
  struct sigaction taken {};
  taken.sa_handler = takeSignal;
  taken.sa_flags = SA_RESTART;
  ::sigemptyset(&taken.sa_mask);
  for (std::size_t i = 0; i < endings.size(); ++i) {
    ::sigaction(endings[i], &taken, &handlersBefore[i]);
  }
}

EndSignals::~EndSignals() {
  for (std::size_t i = 0; i < endings.size(); ++i) {
    ::sigaction(endings[i], &handlersBefore[i], nullptr);
  }
}

void EndSignals::wait() const {
  // A signal that is none of ours interrupts it.
  while (::sem_wait(&signalsSeen) != 0) {
  }
}

}  // namespace tern::command
