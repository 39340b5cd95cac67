#include "tests/support/EndlessSaves.hpp"

#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/service/TernFileCaching.hpp"

namespace tern::test {

namespace {

std::string savedText(int number) {
  // Two lengths, so that a torn file cannot look like a whole one.
  return "\"" +
         std::string(number % 2 == 0 ? 20'000 : 60'000, static_cast<char>('a' + number % 26)) +
         "\"";
}

}  // namespace

bool isWholeSave(const std::string& text) {
  return text.size() > 2 && text == savedText(text[1] - 'a');
}

EndlessSaves::EndlessSaves(const std::string& folder)
    : process_({std::filesystem::read_symlink("/proc/self/exe").string(), "saves", folder}) {}

void EndlessSaves::awaitSome(int saves) {
  for (int i = 0; i < saves; ++i) process_.hear();
}

void EndlessSaves::kill() {
  process_.send(SIGKILL);
  process_.end();
}

int saveForEver(const std::string& folder) {
  const auto cache = TernFileCaching::initWithVersion("5.12.2", makeFileSystem(folder));
  for (int number = 0;; number = (number + 1) % 26) {
    if (!cache->replaceData(savedText(number), savedKey, [](const auto&) {})) return 1;
    if (::write(STDOUT_FILENO, "saved\n", 6) != 6) return 0;
  }
}

}  // namespace tern::test
