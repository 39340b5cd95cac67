// A process that saves one cache entry over and over, to be killed at it: the test program itself,
// with the words "saves" and a documents folder.
//
//   EndlessSaves saves(folder.path().string());
//   saves.awaitSome(3);
//   saves.kill();
//
// Ownership: owns the process. Threads: one. Fails: as Conversation.
#pragma once

#include <string>

#include "tests/support/Process.hpp"

namespace tern::test {

// The entry, and texts that it may hold: letters of one kind, as JSON.
inline constexpr const char* savedKey = "/venue/7/full";
bool isWholeSave(const std::string& text);

class EndlessSaves {
 public:
  explicit EndlessSaves(const std::string& folder);

  // Waits until so many more have been written.
  void awaitSome(int saves);
  // Ends it where it stands. REQUIRES: called once.
  void kill();

 private:
  Conversation process_;
};

// What `main` does with those words; ends when nobody listens any more.
int saveForEver(const std::string& folder);

}  // namespace tern::test
