#include "tools/tern/Look.hpp"

#include <gtest/gtest.h>

#include "tests/support/MemoryFile.hpp"
#include "tests/support/ScopedVariable.hpp"
#include "tests/support/Terminal.hpp"

namespace tern::command {
namespace {

using test::ScopedVariable;
using test::Terminal;

std::size_t widthOf(unsigned short columns) {
  const Terminal terminal(columns);
  return lookOf(terminal.descriptor()).width;
}

bool isColoured(const char* noColor, const char* kind) {
  const ScopedVariable none("NO_COLOR", noColor);
  const ScopedVariable term("TERM", kind);
  const Terminal terminal(80);
  return lookOf(terminal.descriptor()).isColoured;
}

TEST(Look, fileIsEightyWideAndPlain) {
  const ScopedVariable columns("COLUMNS", "60");
  const ScopedVariable term("TERM", "xterm");
  const test::MemoryFile file;
  EXPECT_EQ(lookOf(file.descriptor()).width, 80U);
  EXPECT_FALSE(lookOf(file.descriptor()).isColoured);
}

TEST(Look, terminalSaysHowWideItIsWithinWhatCanBeRead) {
  const ScopedVariable columns("COLUMNS", "70");
  EXPECT_EQ(widthOf(60), 60U);
  EXPECT_EQ(widthOf(40), 40U);
  EXPECT_EQ(widthOf(7), 40U);
  EXPECT_EQ(widthOf(100), 100U);
  EXPECT_EQ(widthOf(250), 100U);
}

TEST(Look, terminalThatDoesNotKnowIsAsWideAsTheEnvironmentSays) {
  const auto widthWith = [](const char* text) {
    const ScopedVariable columns("COLUMNS", text);
    return widthOf(0);
  };
  EXPECT_EQ(widthWith("60"), 60U);
  EXPECT_EQ(widthWith("999"), 100U);
  EXPECT_EQ(widthWith(nullptr), 80U);
  EXPECT_EQ(widthWith("wide"), 80U);
  EXPECT_EQ(widthWith("-60"), 80U);
}

TEST(Look, coloursAreForTerminalsThatHaveThemAndPeopleWhoWantThem) {
  EXPECT_TRUE(isColoured(nullptr, "xterm"));
  EXPECT_TRUE(isColoured("", "xterm"));
  EXPECT_FALSE(isColoured("1", "xterm"));
  EXPECT_FALSE(isColoured(nullptr, "dumb"));
  EXPECT_FALSE(isColoured(nullptr, nullptr));
}

TEST(Look, stylesEndWhereTheTextEnds) {
  const Look coloured{.isColoured = true};
  EXPECT_EQ(coloured.bold("a"), "\x1B[1ma\x1B[0m");
  EXPECT_EQ(coloured.red("a"), "\x1B[31ma\x1B[0m");
  EXPECT_EQ(coloured.faint("a"), "\x1B[2ma\x1B[0m");
  EXPECT_EQ(Look().bold("a"), "a");
}

}  // namespace
}  // namespace tern::command
