#include "TernCoreKit/platform/detail/JsonText.hpp"

#include <gtest/gtest.h>

namespace tern {
namespace {

TEST(JsonText, knowsWhatStandsForItselfInAString) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool plain = byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
    EXPECT_EQ(isPlainInString(static_cast<char>(byte)), plain) << byte;
  }
}

}  // namespace
}  // namespace tern
