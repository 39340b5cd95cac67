#include "tools/import/source/Utf8Text.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

TEST(Utf8Text, whatIsUtf8StaysAsItIs) {
  for (const char* const text : {"", "stop_id,stop_name", "Straße", "出口3A", "🚉"}) {
    const Utf8Text read = utf8TextOf(text);
    EXPECT_EQ(read.text, text);
    EXPECT_TRUE(read.wasUtf8);
  }
}

TEST(Utf8Text, otherBytesAreLettersOfWindows) {
  const Utf8Text read = utf8TextOf(
      "Stra\xDF"
      "e \x96 5 \x80");
  EXPECT_EQ(read.text, "Straße – 5 €");
  EXPECT_FALSE(read.wasUtf8);
}

TEST(Utf8Text, oneOddByteLeavesTheOthersAsTheyAre) {
  EXPECT_EQ(utf8TextOf("Stra\xC3\x9F"
                       "e, Caf\xE9")
                .text,
            "Straße, Café");
  EXPECT_EQ(utf8TextOf("\xE5\x87").text, "å‡") << "cut off amid a character";
}

}  // namespace
}  // namespace tern::imports
