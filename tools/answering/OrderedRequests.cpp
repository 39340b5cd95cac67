#include "tools/answering/OrderedRequests.hpp"

#include <utility>

namespace tern::answering {

bool OrderedRequests::hasRoom() const {
  return slots_.empty() ||
         (slots_.size() < bounds_.requests && waitingBytes_ + answerBytes_ < bounds_.bytes);
}

bool OrderedRequests::isHalfEmpty() const {
  return slots_.size() <= bounds_.requests / 2 && waitingBytes_ + answerBytes_ <= bounds_.bytes / 2;
}

void OrderedRequests::add(std::string request, bool isAlone) {
  if (isDropped_) return;
  const std::size_t bytes = request.size();
  slots_.push_back({std::move(request), isAlone});
  waitingBytes_ += bytes;
}

bool OrderedRequests::canBegin() const {
  if (begun_ == slots_.size() || isOneAlone_) return false;
  if (slots_[begun_].isAlone) return underWay_ == 0;
  // The first is what all others wait for to be taken.
  return begun_ == 0 || answerBytes_ < bounds_.bytes;
}

OrderedRequests::Begun OrderedRequests::begin() {
  Slot& slot = slots_[begun_];
  waitingBytes_ -= slot.text.size();
  isOneAlone_ = slot.isAlone;
  ++underWay_;
  return {firstNumber_ + begun_++, std::move(slot.text)};
}

bool OrderedRequests::end(std::uint64_t number, std::string answer) {
  --underWay_;
  isOneAlone_ = false;
  if (isDropped_) return false;
  Slot& slot = slots_[number - firstNumber_];
  answerBytes_ += answer.size();
  slot.text = std::move(answer);
  slot.isAnswered = true;
  return slots_.front().isAnswered;
}

std::string OrderedRequests::take() {
  std::string answers;
  while (!slots_.empty() && slots_.front().isAnswered) {
    answers.append(slots_.front().text).append("\n");
    answerBytes_ -= slots_.front().text.size();
    slots_.pop_front();
    ++firstNumber_;
    --begun_;
  }
  return answers;
}

void OrderedRequests::drop() {
  slots_.clear();
  waitingBytes_ = answerBytes_ = begun_ = 0;
  isDropped_ = true;
}

}  // namespace tern::answering
