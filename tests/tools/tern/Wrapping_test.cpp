#include "tools/tern/Wrapping.hpp"

#include <gtest/gtest.h>

namespace tern::command {
namespace {

TEST(Wrapping, proseBreaksBetweenWords) {
  EXPECT_EQ(wrapped("one two three", {.width = 7}), "one two\nthree\n");
  EXPECT_EQ(wrapped("one two three", {.width = 9, .first = 1, .further = 3}),
            " one two\n   three\n");
  EXPECT_EQ(wrapped("one", {.width = 3}), "one\n");
  EXPECT_EQ(wrapped("", {.width = 3}), "");
}

TEST(Wrapping, severalSpacesStayTogether) {
  EXPECT_EQ(wrapped("one  two", {.width = 8}), "one  two\n");
  EXPECT_EQ(wrapped("one  two", {.width = 4}), "one\ntwo\n");
}

TEST(Wrapping, wordThatIsTooLongIsCut) {
  EXPECT_EQ(wrapped("a abcdefgh b", {.width = 4, .further = 1}), "a\n abc\n def\n gh\n b\n");
}

TEST(Wrapping, jsonBreaksBehindCommas) {
  EXPECT_EQ(wrapped("[1,2,3] or 4", {.width = 5, .further = 1, .breaks = Breaks::atCommas}),
            "[1,2,\n 3]\n or 4\n");
}

TEST(Wrapping, shellLineGoesOnBehindABackslash) {
  const auto inShell = [](const char* text) {
    return wrapped(text, {.width = 10, .first = 2, .further = 4, .breaks = Breaks::inShell});
  };
  EXPECT_EQ(inShell("tern abc def"), "  tern \\\n    abc \\\n    def\n");
  EXPECT_EQ(inShell("tern abc"), "  tern abc\n");
}

TEST(Wrapping, shellLineIsNotBrokenWithinQuotes) {
  EXPECT_EQ(wrapped("echo 'a \"b c' \"d' e\" f", {.width = 7, .breaks = Breaks::inShell}),
            "echo \\\n'a \"b c' \\\n\"d' e\" \\\nf\n");
}

}  // namespace
}  // namespace tern::command
