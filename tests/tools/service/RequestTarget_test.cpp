#include "tools/service/RequestTarget.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::service {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RequestTarget, isTakenApart) {
  const auto target = parseTarget("/a%20b/full?v=4.12&ids=1%2C2&flag&empty=");
  ASSERT_TRUE(target);
  EXPECT_EQ(target->path, "/a%20b/full");
  EXPECT_THAT(target->names, ElementsAre("a b", "full"));
  EXPECT_EQ(target->parameter("v"), "4.12");
  EXPECT_EQ(target->parameter("ids"), "1,2");
  EXPECT_EQ(target->parameter("flag"), "");
  EXPECT_EQ(target->parameter("missing"), "");
}

TEST(RequestTarget, rootHasNoNames) { EXPECT_THAT(parseTarget("/")->names, IsEmpty()); }

class WrongRequestTarget : public testing::TestWithParam<const char*> {};

TEST_P(WrongRequestTarget, isRefused) { EXPECT_FALSE(parseTarget(GetParam())); }

INSTANTIATE_TEST_SUITE_P(, WrongRequestTarget,
                         testing::Values("", "a", "http://a/b", "/../full", "/a/./b", "/a//b",
                                         "/%2e%2e/full", "/a%2Fb", "/a%2fb", "/a%00b", "/a%2",
                                         "/a%zz", "/a%", "/a?b=%", "/a?b=%+1"));

TEST(RequestTarget, emptyTextSplitsIntoNothing) {
  EXPECT_THAT(split("", ','), IsEmpty());
  EXPECT_THAT(split("1,,2", ','), ElementsAre("1", "", "2"));
}

}  // namespace
}  // namespace tern::service
