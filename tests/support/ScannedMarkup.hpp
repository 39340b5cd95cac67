// Reads XML as a checker would, apart from any reader of the repository: whether it is well-formed,
// and which elements and attributes it has.
//
//   const ScannedMarkup scanned = scanMarkup(svg);
//   EXPECT_EQ(scanned.problem, "");
//
// Threads: any. Fails: `problem` says what is not well-formed.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tern::test {

struct ScannedMarkup {
  // Empty when all is well.
  std::string problem;
  // In document order.
  std::vector<std::string> elements;
  std::vector<std::pair<std::string, std::string>> attributes;
  // All texts between tags, one after another, as they are written.
  std::string text;

  std::vector<std::string> valuesOf(std::string_view attribute) const;
  bool has(std::string_view element) const;
};

// An XML declaration or a <!DOCTYPE html> may stand in front.
ScannedMarkup scanMarkup(std::string_view markup);

// The first thing in a picture that could load, run or reach anything outside of it, or that refers
// to an id that is not there or is there twice; empty when there is none. An image that the picture
// itself holds reaches nothing.
std::string reachOf(const ScannedMarkup& scanned);

}  // namespace tern::test
