// Runs a program and gathers what it says.
//
//   const ProcessResult result = runProcess({commandPath(), "info", "--data", "data/plaza"});
//
// Threads: one at a time. Fails: a program that cannot be started ends with status 127; one that a
// signal ends has the status 128 and the signal's number, as in a shell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tern::test {

struct ProcessResult {
  int status = 127;
  std::string output;
  std::string diagnostics;
};

ProcessResult runProcess(const std::vector<std::string>& words, std::string_view input = {});

// A program in conversation: what is said to it and what it answers, line by line.
class Conversation {
 public:
  explicit Conversation(const std::vector<std::string>& words);
  ~Conversation();
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  void say(std::string_view line);
  // The next line of its output, without its end; empty at the end of the output.
  std::string hear();
  // Closes the program's output, as a reader does who has had enough.
  void stopListening();
  // Sends the program a signal.
  void send(int signal);
  // Ends its input and waits for it.
  int end();

 private:
  int process_ = -1;
  int input_ = -1;
  int output_ = -1;
};

}  // namespace tern::test
