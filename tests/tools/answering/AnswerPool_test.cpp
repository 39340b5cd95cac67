#include "tools/answering/AnswerPool.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/Waiting.hpp"

namespace tern::answering {
namespace {

// Lets those wait who come until it is opened.
class Gate {
 public:
  void pass() {
    std::unique_lock lock(mutex_);
    ++waiting_;
    changed_.notify_all();
    changed_.wait(lock, [&] { return isOpen_; });
  }
  void open() {
    const std::lock_guard lock(mutex_);
    isOpen_ = true;
    changed_.notify_all();
  }
  void waitFor(int count) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return waiting_ >= count; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int waiting_ = 0;
  bool isOpen_ = false;
};

// Gathers what an asker is answered; may go before the pool does.
class Asking {
 public:
  Asking(AnswerPool& pool, std::function<std::string(std::string)> answer)
      : pool_(pool),
        asker_(pool.admit({.answer = std::move(answer),
                           .onAnswers = [&pool, heard = heard_] { heard->take(pool); },
                           .bounds = {.requests = 8, .bytes = 1000}})) {
    heard_->asker = asker_;
  }

  AnswerPool::Asker& asker() { return *asker_; }
  void ask(std::string request, bool isAlone = false) {
    ASSERT_TRUE(pool_.waitForRoom(*asker_));
    pool_.ask(asker_, std::move(request), isAlone);
  }
  std::string answers() {
    const std::lock_guard lock(heard_->mutex);
    return heard_->answers;
  }
  void awaitAnswers() {
    test::awaitUntil([&] { return pool_.isDone(*asker_); }, "the answers");
  }

 private:
  struct Heard {
    std::mutex mutex;
    std::string answers;
    std::weak_ptr<AnswerPool::Asker> asker;

    void take(AnswerPool& pool) {
      const std::lock_guard lock(mutex);
      answers += pool.take(asker.lock());
    }
  };

  AnswerPool& pool_;
  std::shared_ptr<Heard> heard_ = std::make_shared<Heard>();
  std::shared_ptr<AnswerPool::Asker> asker_;
};

std::string numbered(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::to_string(i) + "\n";
  return text;
}

const auto echo = [](std::string request) { return request; };

TEST(ConcurrentAnswerPool, everyoneIsAnsweredInTheOrderOfTheOwnRequests) {
  constexpr int askers = 20;
  constexpr int requests = 200;
  std::list<Asking> all;
  {
    AnswerPool pool(4);
    for (int i = 0; i < askers; ++i) all.emplace_back(pool, echo);
    for (int j = 0; j < requests; ++j) {
      for (Asking& each : all) each.ask(std::to_string(j));
    }
  }
  for (Asking& each : all) EXPECT_EQ(each.answers(), numbered(requests));
}

TEST(ConcurrentAnswerPool, oneAskersRequestsAreAnsweredSideBySide) {
  Gate gate;
  AnswerPool pool(2);
  Asking asking(pool, [&](std::string request) {
    gate.pass();
    return request;
  });
  asking.ask("a");
  asking.ask("b");
  gate.waitFor(2);
  gate.open();
}

TEST(ConcurrentAnswerPool, whoAsksMuchKeepsNobodyWaiting) {
  Gate gate;
  std::atomic<int> answered = 0;
  std::atomic<int> before = -1;
  AnswerPool pool(1);
  Asking greedy(pool, [&](std::string request) {
    gate.pass();
    ++answered;
    return request;
  });
  for (int i = 0; i < 8; ++i) greedy.ask("x");
  gate.waitFor(1);
  Asking modest(pool, [&](std::string request) {
    before = answered.load();
    return request;
  });
  modest.ask("y");
  gate.open();
  modest.awaitAnswers();
  EXPECT_LE(before, 2);
}

TEST(ConcurrentAnswerPool, oneThatIsAloneIsAnsweredAlone) {
  std::atomic<int> underWay = 0;
  std::atomic<int> beside = 0;
  const auto answer = [&](std::string request) {
    const int others = underWay++;
    if (request == "alone") beside += others;
    for (int i = 0; i < 50; ++i) std::this_thread::yield();
    if (request == "alone") beside += underWay - 1;
    --underWay;
    return request;
  };
  AnswerPool pool(4);
  Asking asking(pool, answer);
  for (int i = 0; i < 300; ++i) asking.ask(i % 5 == 0 ? "alone" : "other", i % 5 == 0);
  asking.awaitAnswers();
  EXPECT_EQ(beside, 0);
}

TEST(ConcurrentAnswerPool, whoeverTakesNoAnswersIsNotAnsweredOn) {
  std::atomic<int> answered = 0;
  AnswerPool pool(2);
  const auto asker = pool.admit({.answer =
                                     [&](std::string) {
                                       ++answered;
                                       return std::string(100, 'x');
                                     },
                                 .onAnswers = [] {},
                                 .bounds = {.requests = 50, .bytes = 1000}});
  for (int i = 0; i < 50 && pool.hasRoom(*asker); ++i) pool.ask(asker, "");
  Asking other(pool, echo);
  for (int i = 0; i < 100; ++i) other.ask("x");
  other.awaitAnswers();
  EXPECT_LE(answered, 12) << "ten have as many bytes as may be kept, two may have been under way";
  pool.leave(*asker);
}

TEST(ConcurrentAnswerPool, whoHasLeftIsNotAnsweredOn) {
  Gate gate;
  std::atomic<int> answered = 0;
  AnswerPool pool(1);
  Asking asking(pool, [&](std::string request) {
    gate.pass();
    ++answered;
    return request;
  });
  for (int i = 0; i < 8; ++i) asking.ask("x");
  gate.waitFor(1);
  pool.leave(asking.asker());
  EXPECT_FALSE(pool.waitForRoom(asking.asker()));
  gate.open();
  Asking other(pool, echo);
  other.ask("y");
  other.awaitAnswers();
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(asking.answers(), "");
}

TEST(ConcurrentAnswerPool, whoHasFilledItIsWokenWhenHalfIsFree) {
  Gate gate;
  AnswerPool pool(1);
  Asking asking(pool, [&](std::string request) {
    gate.pass();
    return request;
  });
  for (int i = 0; i < 8; ++i) asking.ask("x");
  std::thread opening([&] { gate.open(); });
  EXPECT_TRUE(pool.waitForRoom(asking.asker()));
  // Nothing has been asked since, and what is free stays so.
  EXPECT_GE(asking.answers().size(), 4 * std::string("x\n").size());
  opening.join();
  asking.awaitAnswers();
}

TEST(ConcurrentAnswerPool, whoWaitsForRoomGetsItOrLearnsThatThereIsNone) {
  Gate gate;
  AnswerPool pool(1);
  Asking asking(pool, [&](std::string request) {
    gate.pass();
    return request;
  });
  for (int i = 0; i < 8; ++i) asking.ask("x");
  EXPECT_FALSE(pool.hasRoom(asking.asker()));
  std::thread leaving([&] { pool.leave(asking.asker()); });
  EXPECT_FALSE(pool.waitForRoom(asking.asker()));
  leaving.join();
  gate.open();
}

}  // namespace
}  // namespace tern::answering
