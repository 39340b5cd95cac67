#include "TernCoreKit/platform/Notifications.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

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

TEST(NotificationsConcurrent, observersComeAndGoWhileOthersPost) {
  std::atomic<int> heard{0};
  const ObserverToken token = addObserver([&](std::string_view, const Value&) { ++heard; });
  {
    std::vector<std::jthread> threads;
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
