#include "tools/import/ways/BoxGrid.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace tern::imports {
namespace {

Box arbitraryBox() {
  const int left = *rc::gen::inRange(-50, 50);
  const int top = *rc::gen::inRange(-50, 50);
  return {static_cast<double>(left), static_cast<double>(top),
          static_cast<double>(left + *rc::gen::inRange(0, 40)),
          static_cast<double>(top + *rc::gen::inRange(0, 40))};
}

RC_GTEST_PROP(BoxGrid, findsWhatAScanOfAllBoxesFinds, ()) {
  std::vector<Box> boxes;
  const std::size_t count = *rc::gen::inRange<std::size_t>(0, 40);
  while (boxes.size() < count) boxes.push_back(arbitraryBox());
  const BoxGrid grid(boxes);
  const Box asked = arbitraryBox();
  std::vector<std::uint32_t> expected;
  for (std::uint32_t i = 0; i < boxes.size(); ++i) {
    const Box& box = boxes[i];
    if (box.left <= asked.right && asked.left <= box.right && box.top <= asked.bottom &&
        asked.top <= box.bottom) {
      expected.push_back(i);
    }
  }
  RC_ASSERT(grid.about(asked) == expected);
}

TEST(BoxGrid, ofNoBoxesNoneLiesAnywhere) {
  EXPECT_TRUE(BoxGrid({}).about({-10, -10, 10, 10}).empty());
}

}  // namespace
}  // namespace tern::imports
