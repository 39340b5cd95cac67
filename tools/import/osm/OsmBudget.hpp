// What the records of an OpenStreetMap file take in memory, counted before they are built or while
// they are: a file of a few kilobytes may unpack to more than a machine has.
//
// Ownership: a plain value. Threads: one caller at a time. Fails: never.
#pragma once

#include <cstddef>

namespace tern::imports {

class OsmBudget {
 public:
  explicit OsmBudget(std::size_t bytes) : left_(bytes) {}

  void takeRecords(std::size_t count) { take(count, recordBytes); }
  void takeRefs(std::size_t count) { take(count, refBytes); }
  // Keys, values and roles, of so many letters together.
  void takeTexts(std::size_t count, std::size_t letters) {
    take(count, textBytes);
    take(letters, 1);
  }

  bool isSpent() const { return isSpent_; }

 private:
  static constexpr std::size_t recordBytes = 128;
  static constexpr std::size_t refBytes = 24;
  static constexpr std::size_t textBytes = 48;

  void take(std::size_t count, std::size_t bytesOfEach) {
    if (count > left_ / bytesOfEach) {
      isSpent_ = true;
      left_ = 0;
    } else {
      left_ -= count * bytesOfEach;
    }
  }

  std::size_t left_;
  bool isSpent_ = false;
};

}  // namespace tern::imports
