// Work of many pieces that several threads do together.
//
//   shareWork(rows.size(), [&](Pieces& pieces) {
//     Scratch scratch;
//     while (const auto row = pieces.next()) rows[*row] = measure(scratch, *row);
//   });
//
// Ownership: keeps nothing. Threads: any; see below.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>

namespace tern::inline v5::detail {

// The numbers below a count, each handed out once. Threads: any number.
class Pieces {
 public:
  explicit Pieces(std::size_t count) : count_(count) {}

  // None when all have been handed out.
  std::optional<std::size_t> next() {
    const std::size_t piece = next_++;
    return piece < count_ ? std::optional(piece) : std::nullopt;
  }
  // Hands out no more.
  void stop() { next_ = count_; }

 private:
  std::atomic<std::size_t> next_ = 0;
  const std::size_t count_;
};

// Runs the work on as many threads as there are processors for the caller, its own among them, but
// on no more than there are pieces; returns when all have ended. Where no threads are to be had the
// caller's does it all. Fails: by std::bad_alloc, when the system had no more to give to the work
// itself.
void shareWork(std::size_t pieces, const std::function<void(Pieces&)>& work);

}  // namespace tern::detail
