#include "tests/support/Process.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <span>
#include <utility>

#include "tests/support/Waiting.hpp"

extern char** environ;

namespace tern::test {

namespace {

struct Pipe {
  int readEnd = -1;
  int writeEnd = -1;
};

Pipe makePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
  return {ends[0], ends[1]};
}

void closeOnce(int& descriptor) {
  if (descriptor >= 0) close(std::exchange(descriptor, -1));
}

// Starts the program with the three descriptors as its own; -1 when that fails.
pid_t start(const std::vector<std::string>& words, const std::array<int, 3>& descriptors) {
  signal(SIGPIPE, SIG_IGN);  // a program that ends early must not end the tests
  std::vector<char*> argv;
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (int i = 0; i < 3; ++i) {
    posix_spawn_file_actions_adddup2(&actions, descriptors[static_cast<std::size_t>(i)], i);
  }
  pid_t process = -1;
  if (posix_spawn(&process, argv[0], &actions, nullptr, argv.data(), environ) != 0) process = -1;
  posix_spawn_file_actions_destroy(&actions);
  return process;
}

int waitFor(pid_t process) {
  int state = 0;
  pid_t ended = process;
  if (process >= 0) {
    awaitUntil([&] { return (ended = waitpid(process, &state, WNOHANG)) != 0; }, "a program's end");
  }
  if (process < 0 || ended != process) return 127;
  return WIFSIGNALED(state) ? 128 + WTERMSIG(state) : WEXITSTATUS(state);
}

// Waits until one of them is ready.
void awaitReady(std::span<pollfd> descriptors) {
  const auto longest = std::chrono::milliseconds(longestWait).count();
  if (poll(descriptors.data(), descriptors.size(), static_cast<int>(longest)) == 0) {
    giveUp("a program's output");
  }
}

// Takes what is there to read; closes the descriptor at its end.
void readSome(int& descriptor, std::string& text) {
  char buffer[65536];
  const ssize_t count = read(descriptor, buffer, sizeof buffer);
  if (count > 0) {
    text.append(buffer, static_cast<std::size_t>(count));
  } else {
    closeOnce(descriptor);
  }
}

void writeSome(int& descriptor, std::string_view& text) {
  const ssize_t count = write(descriptor, text.data(), text.size());
  if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  if (count < 0 || text.empty()) closeOnce(descriptor);
}

// Feeds and drains the three pipes together, so that neither side waits for the other for ever.
void converse(int input, int output, int diagnostics, std::string_view text,
              ProcessResult& result) {
  fcntl(input, F_SETFL, O_NONBLOCK);
  if (text.empty()) closeOnce(input);
  while (output >= 0 || diagnostics >= 0) {
    std::array<pollfd, 3> ready{
        {{input, POLLOUT, 0}, {output, POLLIN, 0}, {diagnostics, POLLIN, 0}}};
    awaitReady(ready);
    if (ready[0].revents != 0) writeSome(input, text);
    if (ready[1].revents != 0) readSome(output, result.output);
    if (ready[2].revents != 0) readSome(diagnostics, result.diagnostics);
  }
  closeOnce(input);
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& words, std::string_view input) {
  const Pipe in = makePipe();
  const Pipe out = makePipe();
  const Pipe err = makePipe();
  const pid_t process = start(words, {in.readEnd, out.writeEnd, err.writeEnd});
  close(in.readEnd);
  close(out.writeEnd);
  close(err.writeEnd);
  ProcessResult result;
  converse(in.writeEnd, out.readEnd, err.readEnd, input, result);
  result.status = waitFor(process);
  return result;
}

Conversation::Conversation(const std::vector<std::string>& words) {
  const Pipe in = makePipe();
  const Pipe out = makePipe();
  process_ = start(words, {in.readEnd, out.writeEnd, STDERR_FILENO});
  close(in.readEnd);
  close(out.writeEnd);
  input_ = in.writeEnd;
  output_ = out.readEnd;
}

Conversation::~Conversation() { end(); }

void Conversation::say(std::string_view line) {
  std::string text = std::string(line) + "\n";
  std::string_view left = text;
  while (!left.empty() && input_ >= 0) {
    const ssize_t count = write(input_, left.data(), left.size());
    if (count < 0) closeOnce(input_);
    if (count > 0) left.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::string Conversation::hear() {
  std::string line;
  char byte = 0;
  while (output_ >= 0) {
    pollfd ready{output_, POLLIN, 0};
    awaitReady({&ready, 1});
    if (read(output_, &byte, 1) != 1 || byte == '\n') break;
    line += byte;
  }
  return line;
}

void Conversation::stopListening() { closeOnce(output_); }

void Conversation::send(int signal) {
  if (process_ > 0) kill(process_, signal);
}

int Conversation::end() {
  closeOnce(input_);
  closeOnce(output_);
  return waitFor(std::exchange(process_, -1));
}

}  // namespace tern::test
