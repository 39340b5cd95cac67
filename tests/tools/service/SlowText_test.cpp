#include "tools/service/SlowText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Waiting.hpp"

namespace tern::service {
namespace {

// A text that is made when the test says so, and what reads it.
class ConcurrentSlowText : public testing::Test {
 protected:
  ~ConcurrentSlowText() override {
    if (!isFinished_) finish();
  }

  void finish() {
    isFinished_ = true;
    mayEnd_.set_value();
  }
  // All of it, in pieces of two bytes; waits to be woken where there is none yet.
  static std::string read(BodyStream& stream, const std::shared_ptr<std::promise<void>>& woken) {
    std::string text;
    char bytes[2];
    bool isAwaited = false;
    for (;;) {
      const BodyStream::Piece piece = stream.read(bytes, sizeof bytes);
      text.append(bytes, piece.bytes);
      if (piece.isEnd) return text;
      if (piece.bytes == 0 && !std::exchange(isAwaited, true)) test::await(*woken, "more of it");
    }
  }

  std::promise<void> mayEnd_;
  bool isFinished_ = false;
  std::atomic<int> made_ = 0;
  SlowText text_{[this] {
    ++made_;
    mayEnd_.get_future().wait();
    return std::string("slowly");
  }};
};

TEST_F(ConcurrentSlowText, isMadeOnceForAllWhoAsk) {
  std::vector<std::shared_ptr<std::promise<void>>> woken;
  std::vector<std::shared_ptr<BodyStream>> streams;
  for (int i = 0; i < 3; ++i) {
    const auto& last = woken.emplace_back(std::make_shared<std::promise<void>>());
    streams.push_back(text_.stream([last] { last->set_value(); }));
  }
  char byte = 0;
  for (const auto& stream : streams) {
    const BodyStream::Piece piece = stream->read(&byte, 1);
    EXPECT_EQ(piece.bytes, 0U);
    EXPECT_FALSE(piece.isEnd);
  }
  finish();
  for (std::size_t i = 0; i < streams.size(); ++i) EXPECT_EQ(read(*streams[i], woken[i]), "slowly");
  EXPECT_EQ(made_, 1);
}

TEST_F(ConcurrentSlowText, isThereAtOnceWhenItIsMade) {
  finish();
  const auto woken = std::make_shared<std::promise<void>>();
  const auto first = text_.stream([woken] { woken->set_value(); });
  EXPECT_EQ(read(*first, woken), "slowly");
  const auto second = text_.stream([] { ADD_FAILURE() << "nobody waits"; });
  EXPECT_EQ(read(*second, woken), "slowly");
  EXPECT_EQ(made_, 1);
}

TEST_F(ConcurrentSlowText, whoHasGoneIsNotWoken) {
  text_.stream([] { ADD_FAILURE() << "nobody is there"; }).reset();
  const auto woken = std::make_shared<std::promise<void>>();
  const auto stream = text_.stream([woken] { woken->set_value(); });
  finish();
  EXPECT_EQ(read(*stream, woken), "slowly");
}

TEST(SlowText, isNotMadeBeforeItIsAskedFor) {
  bool isMade = false;
  {
    const SlowText text([&] {
      isMade = true;
      return std::string();
    });
  }
  EXPECT_FALSE(isMade);
}

}  // namespace
}  // namespace tern::service
