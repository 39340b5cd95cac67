#include "TernCoreKit/platform/Notifications.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/JoiningThread.hpp"

namespace tern {
namespace {

using testing::ElementsAre;

TEST(Notifications, everyObserverHearsNameAndPayloadInTheOrderAdded) {
  std::vector<std::string> heard;
  const auto listen = [&](std::string who) {
    return addObserver([&heard, who](std::string_view name, const Value& payload) {
      heard.push_back(who + " " + std::string(name) + " " + std::string(payload["a"].text()));
    });
  };
  const ObserverToken first = listen("first");
  const ObserverToken second = listen("second");
  postNotification("event", Value::map({{"a", "b"}}));
  EXPECT_THAT(heard, ElementsAre("first event b", "second event b"));
  removeObserver(first);
  removeObserver(first);
  heard.clear();
  postNotification("later", {});
  EXPECT_THAT(heard, ElementsAre("second later "));
  removeObserver(second);
}

TEST(Notifications, observerMayAddRemoveAndPost) {
  std::vector<std::string> heard;
  ObserverToken added{};
  ObserverToken last{};
  const ObserverToken first = addObserver([&](std::string_view name, const Value&) {
    heard.push_back("first " + std::string(name));
    if (name != "one") return;
    removeObserver(last);
    added = addObserver([&](std::string_view inner, const Value&) {
      heard.push_back("added " + std::string(inner));
    });
    postNotification("two", {});
  });
  last = addObserver([&](std::string_view, const Value&) { heard.emplace_back("removed"); });
  postNotification("one", {});
  EXPECT_THAT(heard, ElementsAre("first one", "first two", "added two"));
  removeObserver(first);
  removeObserver(added);
}

TEST(Notifications, observerMayRemoveItself) {
  int calls = 0;
  ObserverToken token{};
  token = addObserver([&](std::string_view, const Value&) {
    ++calls;
    removeObserver(token);
  });
  postNotification("one", {});
  postNotification("two", {});
  EXPECT_EQ(calls, 1);
}

// What the observer uses is freed right behind its removal.
TEST(NotificationsConcurrent, whatAnObserverUsesMayBeFreedWhenItHasBeenRemoved) {
  std::atomic<bool> isOver{false};
  std::vector<test::JoiningThread> posting;
  for (int thread = 0; thread < 2; ++thread) {
    posting.emplace_back([&] {
      while (!isOver) postNotification("event", Value::map({{"i", 1}}));
    });
  }
  for (int i = 0; i < 200; ++i) {
    auto used = std::make_unique<std::atomic<int>>(0);
    std::atomic<int> calls{0};
    const ObserverToken token =
        addObserver([own = used.get(), &calls](std::string_view, const Value&) {
          ++*own;
          ++calls;
        });
    while (calls == 0) std::this_thread::yield();
    removeObserver(token);
    const int heard = *used;
    used.reset();
    EXPECT_EQ(calls, heard);
  }
  isOver = true;
}

TEST(NotificationsConcurrent, observersThatRemoveEachOtherDoNotWaitForEachOther) {
  for (int i = 0; i < 100; ++i) {
    ObserverToken first{};
    ObserverToken second{};
    std::atomic<int> inside{0};
    const auto removing = [&](ObserverToken& other) {
      return [&](std::string_view, const Value&) {
        ++inside;
        removeObserver(other);
      };
    };
    first = addObserver(removing(second));
    second = addObserver(removing(first));
    {
      const test::JoiningThread one([] { postNotification("one", {}); });
      const test::JoiningThread two([] { postNotification("two", {}); });
    }
    EXPECT_GE(inside, 1);
    removeObserver(first);
    removeObserver(second);
  }
}

TEST(NotificationsConcurrent, observersComeAndGoWhileOthersPost) {
  std::atomic<int> heard{0};
  const ObserverToken token = addObserver([&](std::string_view, const Value&) { ++heard; });
  {
    std::vector<test::JoiningThread> threads;
    for (int thread = 0; thread < 3; ++thread) {
      threads.emplace_back([] {
        for (int i = 0; i < 200; ++i) {
          const ObserverToken own = addObserver([](std::string_view, const Value&) {});
          postNotification("event", Value::map({{"i", i}}));
          removeObserver(own);
        }
      });
    }
  }
  EXPECT_EQ(heard, 600);
  removeObserver(token);
}

}  // namespace
}  // namespace tern
