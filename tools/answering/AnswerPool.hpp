// Threads that answer what any number of askers ask, a request of each in turn. An asker's requests
// are answered side by side too, and its answers come in order.
//
//   AnswerPool pool(2);
//   const auto asker = pool.admit({.answer = answerTo, .onAnswers = [&] { write(); }});
//   while (pool.waitForRoom(*asker) && readLine(line)) pool.ask(asker, line);
//
// Ownership: owns its threads; shares the askers, whose functions must outlive it. The destructor
// waits until all that was asked is answered, but for what has no room for its answer.
// Threads: any; the destructor comes last.
// Fails: where the system gives fewer threads, those that there are must do; where it gives none,
// by std::system_error from the constructor.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "TernCoreKit/platform/Mutex.hpp"
#include "tools/answering/OrderedRequests.hpp"

namespace tern::answering {

class AnswerPool {
 public:
  struct AskerSettings {
    // The answer to a request; called on several threads at once.
    std::function<std::string(std::string request)> answer;
    // Called when there is something to take, on several threads at once.
    std::function<void()> onAnswers;
    OrderedRequests::Bounds bounds = {};
  };
  class Asker;

  explicit AnswerPool(unsigned threadCount);
  ~AnswerPool();
  AnswerPool(const AnswerPool&) = delete;
  AnswerPool& operator=(const AnswerPool&) = delete;

  std::shared_ptr<Asker> admit(AskerSettings settings);

  bool hasRoom(const Asker& asker);
  // Where there is none, waits until half of it is free: whoever asks would else be woken for every
  // answer, and take a core from those who answer. False once the asker has left.
  bool waitForRoom(const Asker& asker);
  // A request that is alone is answered when all before it are, and those behind it when it is.
  // REQUIRES: `hasRoom`.
  void ask(const std::shared_ptr<Asker>& asker, std::string request, bool isAlone = false);
  // The answers that are there, in order, each with a line break.
  std::string take(const std::shared_ptr<Asker>& asker);
  // Whether all that was asked is answered and taken.
  bool isDone(const Asker& asker);
  // Nothing more of it is begun, and its answers are forgotten.
  void leave(Asker& asker);

 private:
  void startThreads(unsigned count);
  void work();
  // Puts the asker at the end of the line when it has a request that can begin.
  void queue(const std::shared_ptr<Asker>& asker) TERN_REQUIRES(mutex_);
  std::shared_ptr<Asker> nextInLine() TERN_REQUIRES(mutex_);

  Mutex mutex_;
  std::condition_variable_any hasWork_;
  std::condition_variable_any hasRoom_;
  // Those that have a request that can begin, linked by their `next`.
  std::shared_ptr<Asker> first_ TERN_GUARDED_BY(mutex_);
  Asker* last_ TERN_GUARDED_BY(mutex_) = nullptr;
  bool isEnding_ TERN_GUARDED_BY(mutex_) = false;
  std::vector<std::thread> threads_;
};

}  // namespace tern::answering
