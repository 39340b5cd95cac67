#include <string>
#include <vector>

#include "tools/tern/Command.hpp"

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  return tern::command::runCommand(words, {});
}
