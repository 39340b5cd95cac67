// What of a source did not come through as it stands, or came through and looks odd, and why.
//
// Threads: one caller at a time.
// Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tern::imports {

struct Oddity {
  // The record's own, in the source.
  std::string id;
  // A short word: "dangling", "one-way", ...
  std::string_view kind;
  // One sentence.
  std::string why;
  // Whether the venue has all that the record says.
  bool cameThrough = false;
};

class Oddities {
 public:
  // Of each record only what is told first, and rather what of it did not come through.
  void tell(Oddity oddity) {
    const auto [known, isNew] = known_.try_emplace(oddity.id, told_.size());
    if (isNew) {
      told_.push_back(std::move(oddity));
    } else if (told_[known->second].cameThrough && !oddity.cameThrough) {
      told_[known->second] = std::move(oddity);
    }
  }

  // What is left out of the venue, or changed.
  void tell(std::string_view id, std::string_view kind, std::string why) {
    tell({std::string(id), kind, std::move(why), false});
  }

  // What came through and looks odd.
  void remark(std::string_view id, std::string_view kind, std::string why) {
    tell({std::string(id), kind, std::move(why), true});
  }

  const std::vector<Oddity>& told() const { return told_; }

 private:
  std::vector<Oddity> told_;
  // By id.
  std::unordered_map<std::string, std::size_t> known_;
};

}  // namespace tern::imports
