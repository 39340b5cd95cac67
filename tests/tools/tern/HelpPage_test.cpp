#include "tools/tern/HelpPage.hpp"

#include <gtest/gtest.h>

#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using Kind = HelpPart::Kind;

TEST(HelpPage, linesOfProseAreOneParagraph) {
  const HelpPage page = partsOf("One\ntwo.\n\nThree.\n");
  ASSERT_EQ(page.size(), 2U);
  EXPECT_EQ(page[0].text, "One two.");
  EXPECT_EQ(page[1].text, "Three.");
  EXPECT_EQ(page[1].kind, Kind::paragraph);
}

TEST(HelpPage, examplesAreLinesForAShell) {
  const HelpPage page = partsOf("Examples:\n  tern a\n  tern b \\\n      c\n\nProse:\n  {}\n");
  ASSERT_EQ(page.size(), 5U);
  EXPECT_EQ(page[0].kind, Kind::heading);
  EXPECT_EQ(page[0].text, "Examples");
  EXPECT_EQ(page[1].kind, Kind::example);
  EXPECT_EQ(page[1].text, "tern a");
  EXPECT_EQ(page[2].text, "tern b c");
  EXPECT_EQ(page[3].kind, Kind::paragraph);
  EXPECT_EQ(page[4].kind, Kind::code);
  EXPECT_EQ(page[4].text, "  {}");
}

TEST(HelpPage, exitStatusesAreEntries) {
  const HelpPage page = partsOf("Exit status:\n  0  answered\n");
  ASSERT_EQ(page.size(), 2U);
  EXPECT_EQ(page[0].kind, Kind::heading);
  EXPECT_EQ(page[1].kind, Kind::entry);
  EXPECT_EQ(page[1].text, "0");
  EXPECT_EQ(page[1].meaning, "answered");
}

TEST(HelpPage, textWithoutALineBreakAtItsEndIsReadToItsEnd) {
  EXPECT_TRUE(partsOf("").empty());
  EXPECT_EQ(partsOf("One\ntwo").front().text, "One two");
}

TEST(HelpPage, usageNamesWhatIsRequired) {
  EXPECT_EQ(usageOf(routeCommand), "tern route --from W --to W [OPTIONS]");
  EXPECT_EQ(usageOf(placesCommand), "tern places [TEXT] [OPTIONS]");
}

TEST(HelpPage, entryOfAnOptionHasItsValueAndItsDefault) {
  const HelpPart entry = entryOf({"--port", "P", "where to listen", readText, orElse("0")});
  EXPECT_EQ(entry.text, "--port P");
  EXPECT_EQ(entry.meaning, "where to listen (default 0)");
  EXPECT_EQ(entryOf({"--json", "", "as JSON"}).text, "--json");
}

}  // namespace
}  // namespace tern::command
