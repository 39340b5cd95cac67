#include "tools/generate/ShopNames.hpp"

namespace tern::generate {

namespace {

using Weights = std::array<int, categoryCount>;

// In the order of `Category`: how often a shop of the zone is of each.
constexpr Weights basementWeights{0, 0, 2, 0, 3, 3, 5, 2, 2, 7, 4, 4, 6, 1, 0};
constexpr Weights groundWeights{7, 3, 5, 4, 1, 2, 1, 0, 0, 1, 4, 2, 3, 0, 0};
constexpr Weights upperWeights{8, 4, 2, 2, 2, 3, 4, 4, 4, 0, 3, 1, 0, 0, 0};
constexpr Weights topWeights{1, 0, 0, 0, 2, 3, 2, 3, 3, 0, 13, 0, 0, 1, 0};

constexpr Weights basementAnchors{0, 0, 0, 0, 0, 0, 1, 0, 0, 3, 0, 0, 0, 0, 0};
constexpr Weights groundAnchors{3, 0, 1, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0};
constexpr Weights upperAnchors{3, 0, 0, 0, 0, 1, 1, 3, 1, 0, 0, 0, 0, 0, 0};
constexpr Weights topAnchors{0, 0, 0, 0, 1, 0, 1, 1, 0, 0, 0, 0, 0, 3, 0};

const Weights& weightsOf(Zone zone) {
  constexpr const Weights* table[] = {&basementWeights, &groundWeights, &upperWeights, &topWeights};
  return *table[static_cast<int>(zone)];
}

const Weights& anchorWeightsOf(Zone zone) {
  constexpr const Weights* table[] = {&basementAnchors, &groundAnchors, &upperAnchors, &topAnchors};
  return *table[static_cast<int>(zone)];
}

}  // namespace

std::string ShopName::full(std::size_t localeIndex) const {
  return brand + " " + std::string((*noun)[localeIndex]);
}

ShopNames::ShopNames(std::uint64_t seed)
    : random_(seed, 1), words_(brandWords().begin(), brandWords().end()) {
  random_.shuffle(words_);
}

ShopName ShopNames::nextShop(Zone zone) {
  const int category = random_.pick(weightsOf(zone));
  return named(static_cast<Category>(category), shopsTaken_[static_cast<std::size_t>(category)]);
}

ShopName ShopNames::nextAnchor(Zone zone) {
  int category = random_.pick(anchorWeightsOf(zone));
  if (zone == Zone::ground && !hasDepartmentStore_) {
    hasDepartmentStore_ = true;
    category = static_cast<int>(Category::department);
  }
  return named(static_cast<Category>(category), anchorsTaken_[static_cast<std::size_t>(category)]);
}

ShopName ShopNames::named(Category category, std::size_t& turn) {
  const auto& nouns = wordsOf(category).nouns;
  return {nextBrand(), &nouns[turn++ % nouns.size()], category};
}

std::string ShopNames::nextBrand() {
  const std::size_t count = words_.size();
  const std::size_t turn = brandsTaken_ / count;
  const std::size_t place = brandsTaken_++ % count;
  std::string brand(words_[place]);
  if (turn == 0) return brand;
  // The second word is never the first one: the distance runs from 1 to count - 1.
  const std::size_t distance = 1 + (turn - 1) % (count - 1);
  brand += " & " + std::string(words_[(place + distance) % count]);
  const std::size_t round = (turn - 1) / (count - 1);
  return round == 0 ? brand : brand + " " + std::to_string(round + 1);
}

}  // namespace tern::generate
