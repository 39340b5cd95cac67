#include "tools/service/SlowText.hpp"

#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace tern::service {

// The text once it is made, and who waits for it.
class SlowText::Text {
 public:
  void set(std::string text) {
    std::map<const Stream*, std::function<void()>> waiting;
    {
      const MutexLock lock(mutex_);
      text_ = std::move(text);
      waiting.swap(waiting_);
    }
    // Who is woken reads, which takes the lock.
    for (const auto& [stream, wake] : waiting) wake();
  }

  void await(const Stream* stream, std::function<void()> wake) {
    const MutexLock lock(mutex_);
    if (!text_) waiting_.emplace(stream, std::move(wake));
  }
  void forget(const Stream* stream) {
    const MutexLock lock(mutex_);
    waiting_.erase(stream);
  }

  BodyStream::Piece read(std::size_t from, char* to, std::size_t most) const {
    const MutexLock lock(mutex_);
    if (!text_) return {};
    return {.bytes = text_->copy(to, most, from), .isEnd = from == text_->size()};
  }

 private:
  mutable Mutex mutex_;
  std::optional<std::string> text_ TERN_GUARDED_BY(mutex_);
  std::map<const Stream*, std::function<void()>> waiting_ TERN_GUARDED_BY(mutex_);
};

class SlowText::Stream final : public BodyStream {
 public:
  Stream(std::shared_ptr<Text> text, std::function<void()> wake) : text_(std::move(text)) {
    text_->await(this, std::move(wake));
  }
  ~Stream() override { text_->forget(this); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  Piece read(char* to, std::size_t most) override {
    const Piece piece = text_->read(sent_, to, most);
    sent_ += piece.bytes;
    return piece;
  }

 private:
  const std::shared_ptr<Text> text_;
  std::size_t sent_ = 0;
};

SlowText::SlowText(std::function<std::string()> make)
    : make_(std::move(make)), text_(std::make_shared<Text>()) {}

SlowText::~SlowText() {
  const MutexLock lock(mutex_);
  if (maker_.joinable()) maker_.join();
}

std::shared_ptr<BodyStream> SlowText::stream(std::function<void()> wake) {
  auto stream = std::make_shared<Stream>(text_, std::move(wake));
  const MutexLock lock(mutex_);
  if (!maker_.joinable()) maker_ = std::thread([this] { text_->set(make_()); });
  return stream;
}

}  // namespace tern::service
