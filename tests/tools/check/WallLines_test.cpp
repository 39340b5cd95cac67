#include "tools/check/WallLines.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tern::check {
namespace {

std::string drawing(const std::string& data, const std::string& kind = "walls") {
  return R"(<svg viewBox="0 0 10 10"><path d=")" + data + R"(" class=")" + kind + R"("/></svg>)";
}

std::string wallsIn(const std::string& svg) {
  std::string text;
  for (const Segment& line : wallLinesOf(svg).walls) {
    for (const double number : {line.from.x, line.from.y, line.to.x, line.to.y}) {
      text += std::to_string(static_cast<int>(number)) + " ";
    }
  }
  return text;
}

TEST(WallLines, straightLinesAreRead) {
  EXPECT_EQ(wallsIn(drawing("M1 2l3 4")), "1 2 4 6 ");
  EXPECT_EQ(wallsIn(drawing("M1,2 L3,4")), "1 2 3 4 ");
  EXPECT_EQ(wallsIn(drawing("M1 2h5v-2z")), "1 2 6 2 6 2 6 0 6 0 1 2 ");
  EXPECT_EQ(wallsIn(drawing("M1 2 3 4m1 1 1 0")), "1 2 3 4 4 5 5 5 ");
}

TEST(WallLines, doorsAreKeptApart) {
  const std::string svg = R"(<svg viewBox="0 0 9 9"><path class="walls" d="M0 0h9"/>)"
                          R"(<path class="doors" d="M3 0h2"/><path d="M0 5h9"/></svg>)";
  EXPECT_EQ(wallLinesOf(svg).walls.size(), 1U);
  EXPECT_EQ(wallLinesOf(svg).doors.size(), 1U);
}

TEST(WallLines, groupThatScalesAllIsFollowed) {
  EXPECT_EQ(wallsIn(R"x(<svg viewBox="0 0 9 9"><g transform="scale(0.5)"><path class="walls" )x"
                    R"x(d="M2 4h6"/></g></svg>)x"),
            "1 2 4 2 ");
}

TEST(WallLines, whatCannotBeReadForSureHasNoLines) {
  for (const std::string& svg :
       {drawing("M1 2c1 1 1 1 1 1"), drawing("M1 2l3"), drawing("1 2 3 4"), drawing("M1 2l1e999 4"),
        drawing("M1 2z5"), drawing("M1 2h5", "wallpaper"), std::string("<svg"), std::string(),
        std::string(R"(<svg viewBox="5 0 9 9"><path class="walls" d="M0 0h9"/></svg>)"),
        std::string(R"x(<svg viewBox="0 0 9 9"><g transform="rotate(3)"><path class="walls" )x"
                    R"(d="M0 0h9"/></g></svg>)"),
        std::string(R"x(<svg viewBox="0 0 9 9"><g transform="scale(2)"><g transform="scale(2)">)x"
                    R"(<path class="walls" d="M0 0h9"/></g></g></svg>)"),
        std::string(R"(<svg viewBox="0 0 9 9"><path class="walls)")}) {
    EXPECT_EQ(wallsIn(svg), "") << svg;
  }
}

}  // namespace
}  // namespace tern::check
