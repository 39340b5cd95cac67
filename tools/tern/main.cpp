#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "tools/service/Exhaustion.hpp"
#include "tools/tern/Command.hpp"
#include "tools/tern/EmbeddedPage.hpp"
#include "tools/tern/Failure.hpp"

namespace {

// Comes last, where nobody else could say it or where memory ran out in something that may not
// throw; it takes none itself.
[[noreturn]] void endOutOfMemory() {
  const std::exception_ptr thrown = std::current_exception();
  const bool isMistake =
      thrown == nullptr || tern::service::hasEnough([&] { std::rethrow_exception(thrown); });
  if (isMistake) std::abort();
  constexpr std::string_view line = "tern: out of memory\n";
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
  ::_exit(static_cast<int>(tern::command::ExitStatus::notLoaded));
}

}  // namespace

int main(int argc, char** argv) {
  std::set_terminate(endOutOfMemory);
  const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  return tern::command::runCommand(words, {}, tern::command::embeddedPage());
}
