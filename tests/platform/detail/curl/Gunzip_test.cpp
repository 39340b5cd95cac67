#include "TernCoreKit/platform/detail/curl/Gunzip.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace tern::detail {
namespace {

// "text" as gzip.
const std::string zipped(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\x2b\x49\xad\x28\x01\x00\xc7\xa7\x8b\x3b\x04\x00\x00"
    "\x00",
    24);
// 4096 times "a".
const std::string zippedLetters(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\xff\xed\xc1\x01\x0d\x00\x00\x00\xc2\xa0\xac\xef\x5f\xc2"
    "\x1e\x0e\x28\x00\x00\x00\xe0\xdd\x00\x73\xdc\x99\x9c\x00\x10\x00\x00",
    40);

// What came of the bytes when each came alone; none for a fault or half a stream.
std::optional<std::string> inflated(std::string_view bytes, std::size_t most = 1 << 20) {
  Gunzip gunzip;
  std::string text;
  for (const char& byte : bytes) {
    if (gunzip.add({&byte, 1}, text, most) != nullptr) return std::nullopt;
  }
  return gunzip.hasEnded() ? std::optional(text) : std::nullopt;
}

TEST(Gunzip, takesAStreamInPartsOfAnySize) {
  EXPECT_EQ(inflated(zipped), "text");
  Gunzip gunzip;
  std::string text;
  EXPECT_EQ(gunzip.add(zipped, text, 4), nullptr);
  EXPECT_EQ(text, "text");
  EXPECT_TRUE(gunzip.hasEnded());
}

TEST(Gunzip, aStreamThatIsCutAnywhereHasNotEnded) {
  for (std::size_t size = 0; size < zipped.size(); ++size) {
    EXPECT_EQ(inflated(std::string_view(zipped).substr(0, size)), std::nullopt) << size;
  }
}

TEST(Gunzip, severalStreamsAreOneText) { EXPECT_EQ(inflated(zipped + zipped), "texttext"); }

TEST(Gunzip, whatIsNoGzipOrGoesOnBehindItIsAFault) {
  EXPECT_EQ(inflated("plain text"), std::nullopt);
  EXPECT_EQ(inflated(zipped + "plain text"), std::nullopt);
  std::string wrongSum = zipped;
  wrongSum[16] ^= 1;
  EXPECT_EQ(inflated(wrongSum), std::nullopt);
}

TEST(Gunzip, noMoreIsInflatedThanTheCallerTakes) {
  EXPECT_EQ(inflated(zippedLetters, 4096), std::string(4096, 'a'));
  EXPECT_EQ(inflated(zippedLetters, 4095), std::nullopt);
  Gunzip gunzip;
  std::string text = "before";
  EXPECT_STREQ(gunzip.add(zippedLetters, text, 100), "The answer is too long");
  EXPECT_EQ(text, "before");
}

}  // namespace
}  // namespace tern::detail
