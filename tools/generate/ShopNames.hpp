// Gives every shop of a venue a name of its own, in each locale, and something to sell.
//
// The names come out in the order of the calls; no two are equal within one venue: the brand words,
// then pairs of them, then pairs with a number. Threads: one caller at a time.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "tools/generate/Random.hpp"
#include "tools/generate/Words.hpp"

namespace tern::generate {

// Which part of a building a floor is; what is sold depends on it.
enum class Zone { basement, ground, upper, top };

struct ShopName {
  // "Juniper", "Juniper & Alder"
  std::string brand;
  // "Bakery", the same in every locale; points into the word tables.
  const Phrase* noun = nullptr;
  Category category = Category::fashion;

  // "Juniper Bakery" in the locale of the index.
  std::string full(std::size_t localeIndex) const;
};

class ShopNames {
 public:
  explicit ShopNames(std::uint64_t seed);

  ShopName nextShop(Zone zone);
  // A large shop that people come for: a supermarket, a cinema. The first one of a ground floor is
  // the venue's department store.
  ShopName nextAnchor(Zone zone);

 private:
  ShopName named(Category category, std::size_t& turn);
  std::string nextBrand();

  Random random_;
  std::vector<std::string_view> words_;
  std::size_t brandsTaken_ = 0;
  bool hasDepartmentStore_ = false;
  // How many shops and anchors of each category there are, so that its nouns take turns.
  std::array<std::size_t, categoryCount> shopsTaken_{};
  std::array<std::size_t, categoryCount> anchorsTaken_{};
};

}  // namespace tern::generate
