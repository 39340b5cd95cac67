// Answers requests as `tern batch` does, with nothing but the library's C interface, so that it is
// quickly built for any machine.
//
//   portable_answers FOLDER VENUE... <requests >answers
#include <cstdio>
#include <iostream>
#include <string>

#include "TernCoreKit/c/tern.h"

namespace {

// {"venues":[1,2]}
std::string optionsOf(int count, char** venues) {
  std::string options = R"({"venues":[)";
  for (int i = 0; i < count; ++i) options += (i > 0 ? "," : "") + std::string(venues[i]);
  return options + "]}";
}

}  // namespace

int main(int count, char** words) {
  if (count < 3) return 2;
  tern_host silent{};
  silent.size = sizeof silent;
  silent.log = [](void*, const char*) {};
  tern_set_host(&silent, nullptr);

  char* error = nullptr;
  const std::string options = optionsOf(count - 2, words + 2);
  tern_venue* const venue = tern_venue_open_folder(words[1], options.c_str(), &error);
  if (venue == nullptr) {
    std::fprintf(stderr, "%s\n", error);
    tern_text_free(error);
    return 1;
  }
  std::ios::sync_with_stdio(false);
  for (std::string line; std::getline(std::cin, line);) {
    char* const answer = tern_venue_answer(venue, line.c_str());
    std::cout << answer << '\n';
    tern_text_free(answer);
  }
  tern_venue_close(venue, nullptr);
}
