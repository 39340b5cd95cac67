#include "TernCoreKit/platform/Utf8.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tern {
namespace {

constexpr char32_t beyondTheLast = 0x110000;
constexpr char32_t firstSurrogate = 0xD800;
constexpr char32_t behindSurrogates = 0xE000;

std::string utf8(char32_t code) {
  std::array<char, 4> bytes = {};
  return {bytes.data(), putUtf8(bytes.data(), code)};
}

std::size_t sequenceSize(const std::string& text) {
  return utf8SequenceSize(text.data(), text.data() + text.size());
}

TEST(Utf8, writesCodePointsAsUtf8) {
  EXPECT_EQ(utf8(U'A'), "A");
  EXPECT_EQ(utf8(0x7F), "\x7F");
  EXPECT_EQ(utf8(0x80), "\xC2\x80");
  EXPECT_EQ(utf8(U'é'), "é");
  EXPECT_EQ(utf8(0x7FF), "\xDF\xBF");
  EXPECT_EQ(utf8(U'€'), "€");
  EXPECT_EQ(utf8(0xFFFF), "\xEF\xBF\xBF");
  EXPECT_EQ(utf8(U'😀'), "😀");
  EXPECT_EQ(utf8(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, knowsEverySequenceOfSeveralBytes) {
  for (char32_t code = 0x80; code < beyondTheLast; ++code) {
    if (code == firstSurrogate) code = behindSurrogates;
    const std::string text = utf8(code);
    ASSERT_EQ(sequenceSize(text), text.size()) << static_cast<unsigned>(code);
    ASSERT_EQ(sequenceSize(text + "\x80"), text.size()) << static_cast<unsigned>(code);
    ASSERT_EQ(sequenceSize(text.substr(0, text.size() - 1)), 0U) << static_cast<unsigned>(code);
  }
}

TEST(Utf8, knowsNothingElse) {
  const std::string bytes = std::string(1, '\0') +
                            "\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE"
                            "\xEF\xF0\xF1\xF3\xF4\xF5\xF8\xFF";
  // In order, since UTF-8 keeps that of the code points.
  std::vector<std::string> good;
  for (char32_t code = 0x80; code < beyondTheLast; ++code) {
    if (code < firstSurrogate || code >= behindSurrogates) good.push_back(utf8(code));
  }
  const auto isGood = [&](const std::string& text, std::size_t size) {
    return std::ranges::binary_search(good, text.substr(0, size));
  };
  for (const char a : bytes) {
    for (const char b : bytes) {
      for (const char c : bytes) {
        for (const char d : {'A', '\x7F', '\x80', '\xBF', '\xC0'}) {
          const std::string text = {a, b, c, d};
          const std::size_t size = isGood(text, 2)   ? 2
                                   : isGood(text, 3) ? 3
                                   : isGood(text, 4) ? 4
                                                     : 0;
          ASSERT_EQ(sequenceSize(text), size);
        }
      }
    }
  }
}

TEST(Utf8, theFirstCharacterIsRead) {
  for (char32_t code = 0; code < beyondTheLast; ++code) {
    if (code == firstSurrogate) code = behindSurrogates;
    const std::string text = utf8(code);
    const Utf8Character first = firstUtf8Character(text + "\x80");
    ASSERT_EQ(first.code, code);
    ASSERT_EQ(first.size, text.size());
  }
}

TEST(Utf8, aByteThatIsNoPartOfACharacterIsReplaced) {
  for (const char* text : {"\x80",
                           "\xBF"
                           "a",
                           "\xC1\xBF", "\xC3",
                           "\xC3"
                           "a",
                           "\xE2\x82", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xFF"}) {
    EXPECT_EQ(firstUtf8Character(text).code, Utf8Character::replacement);
    EXPECT_EQ(firstUtf8Character(text).size, 1U);
  }
}

TEST(Utf8, bytesBehindTheFirstOfACharacterContinueIt) {
  for (int byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(continuesUtf8(static_cast<char>(byte)), byte >= 0x80 && byte < 0xC0) << byte;
  }
}

}  // namespace
}  // namespace tern
