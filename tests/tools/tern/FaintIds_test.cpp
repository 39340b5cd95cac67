#include "tools/tern/FaintIds.hpp"

#include <gtest/gtest.h>

namespace tern::command {
namespace {

std::string shown(std::string_view text) {
  std::string marked = withFaintIds(text, {.isColoured = true});
  for (const auto& [style, mark] : {std::pair{"\x1B[2m", "<"}, std::pair{"\x1B[0m", ">"}}) {
    for (std::size_t at = marked.find(style); at != marked.npos; at = marked.find(style)) {
      marked.replace(at, 4, mark);
    }
  }
  return marked;
}

TEST(FaintIds, idsInBracketsAreFaint) {
  EXPECT_EQ(shown("Coral (destination 7) on First (waypoints 3, 9)\n"),
            "Coral <(destination 7)> on First <(waypoints 3, 9)>\n");
  EXPECT_EQ(shown("(path type -2)"), "<(path type -2)>");
  EXPECT_EQ(shown(""), "");
}

TEST(FaintIds, otherBracketsAreNot) {
  for (const char* text :
       {"Shoes (and more)", "(destination 7; no way)", "(waypoint 7", "((", "("}) {
    EXPECT_EQ(shown(text), text);
  }
}

TEST(FaintIds, plainTextStays) {
  EXPECT_EQ(withFaintIds("Coral (destination 7)", {}), "Coral (destination 7)");
}

}  // namespace
}  // namespace tern::command
