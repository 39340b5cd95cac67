#include "tools/answering/Blocks.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::answering {
namespace {

constexpr const char* blockRequests[] = {
    R"({"op":"blockEdge","from":1,"to":2,"blocked":true})", R"({"op" : "blockEntry"})",
    R"({"id":1,"op":"blockExit"})", R"({"op":"\u0062lockEdge"})", R"({"op":"bl\u006fckExit"})"};

TEST(Blocks, requestsThatBlockAreTold) {
  for (const char* const line : blockRequests) {
    EXPECT_TRUE(mayBlock(line)) << line;
    EXPECT_TRUE(blocks(decodeJson(line).value)) << line;
  }
}

TEST(Blocks, othersDoNotBlock) {
  EXPECT_FALSE(mayBlock(R"({"op":"route","from":1,"to":2})"));
  EXPECT_FALSE(mayBlock(R"({"op":"places","text":"the block"})"));
  for (const char* const line : {R"({"op":"places","text":"blockEdge"})", R"({"op":"block"})",
                                 R"({"op":["blockEdge"]})", R"("blockEdge")", "nonsense", "{}"}) {
    EXPECT_FALSE(blocks(decodeJson(line).value)) << line;
  }
}

}  // namespace
}  // namespace tern::answering
