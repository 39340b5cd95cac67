#include "tools/generate/ShopNames.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tern::generate {
namespace {

TEST(ShopNames, noTwoShopsShareABrand) {
  ShopNames names(3);
  std::set<std::string> brands;
  constexpr std::size_t count = 40'000;
  for (std::size_t i = 0; i < count; ++i) brands.insert(names.nextShop(Zone::upper).brand);
  EXPECT_EQ(brands.size(), count);
}

TEST(ShopNames, firstAnchorOfAGroundFloorIsTheOnlyDepartmentStore) {
  ShopNames names(3);
  EXPECT_NE(names.nextAnchor(Zone::basement).category, Category::department);
  EXPECT_EQ(names.nextAnchor(Zone::ground).category, Category::department);
  for (int i = 0; i < 200; ++i) {
    EXPECT_NE(names.nextAnchor(Zone::ground).category, Category::department);
    EXPECT_NE(names.nextShop(Zone::ground).category, Category::department);
  }
}

TEST(ShopNames, foodGathersOnTheTopFloor) {
  ShopNames names(3);
  const auto foodOf = [&](Zone zone) {
    int food = 0;
    for (int i = 0; i < 500; ++i) food += names.nextShop(zone).category == Category::food ? 1 : 0;
    return food;
  };
  EXPECT_GT(foodOf(Zone::top), 2 * foodOf(Zone::ground));
}

TEST(ShopNames, brandStaysAndNounIsTranslated) {
  const ShopName name{"Wren", &wordsOf(Category::health).nouns[0], Category::health};
  EXPECT_EQ(name.full(0), "Wren Pharmacy");
  EXPECT_EQ(name.full(1), "Wren Apotheke");
  EXPECT_EQ(name.full(2), "Wren Pharmacie");
  EXPECT_EQ(name.full(3), "Wren 薬局");
}

}  // namespace
}  // namespace tern::generate
