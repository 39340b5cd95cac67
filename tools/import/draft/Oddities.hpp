// What of a source did not come through as it stands, and why.
//
// Threads: one caller at a time.
// Fails: never.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
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
};

class Oddities {
 public:
  // Of each record only what is told first.
  void tell(std::string_view id, std::string_view kind, std::string why) {
    if (!known_.emplace(id).second) return;
    told_.push_back({std::string(id), kind, std::move(why)});
  }

  const std::vector<Oddity>& told() const { return told_; }

 private:
  std::vector<Oddity> told_;
  std::unordered_set<std::string> known_;
};

}  // namespace tern::imports
