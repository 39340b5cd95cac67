// Requests of one who asks, on their way to their answers, which come in the order of the requests
// whichever is there first.
//
//   requests.add(line, false);
//   const auto begun = requests.begin();
//   requests.end(begun.number, answerTo(begun.request));
//   write(requests.take());
//
// Ownership: holds requests and answers. Threads: one at a time. Fails: by std::bad_alloc, from
// `add` and `take` only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

namespace tern::answering {

class OrderedRequests {
 public:
  // What there may be at a time that has not been taken yet: requests, and bytes of those that wait
  // and of answers. One request always may, however long it is, and the answers of those that are
  // under way come on top.
  struct Bounds {
    std::size_t requests = 64;
    std::size_t bytes = std::size_t{1} << 20U;
  };
  struct Begun {
    std::uint64_t number;
    std::string request;
  };

  explicit OrderedRequests(Bounds bounds) : bounds_(bounds) {}

  bool hasRoom() const;
  // Whether half of the room is free, as it is when all has been taken.
  bool isHalfEmpty() const;
  // One that is alone begins when all before it have ended, and those behind it begin when it has.
  void add(std::string request, bool isAlone);

  bool canBegin() const;
  // REQUIRES: `canBegin`.
  Begun begin();
  // Whether there is something to take now.
  bool end(std::uint64_t number, std::string answer);

  // The answers that are there up to the first that is not, each with a line break.
  std::string take();
  // Whether all that was added has been taken.
  bool isEmpty() const { return slots_.empty(); }
  // Forgets what has not begun, and every answer.
  void drop();

 private:
  struct Slot {
    // The request until it begins, the answer when it has ended.
    std::string text;
    bool isAlone;
    bool isAnswered = false;
  };

  const Bounds bounds_;
  std::deque<Slot> slots_;
  // Of the first slot; the others follow one by one.
  std::uint64_t firstNumber_ = 0;
  // How many of the slots have begun: those in front.
  std::size_t begun_ = 0;
  std::size_t underWay_ = 0;
  std::size_t waitingBytes_ = 0;
  std::size_t answerBytes_ = 0;
  bool isOneAlone_ = false;
  bool isDropped_ = false;
};

}  // namespace tern::answering
