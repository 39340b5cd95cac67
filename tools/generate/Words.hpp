// The words that venues are named with: cities, buildings, floors, kinds of shop, amenities, each
// in the languages of the generated locales.
//
// All tables are constants; every text is UTF-8. Threads: any.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tern::generate {

struct Locale {
  std::string_view code;
  std::string_view name;
};

inline constexpr std::array<Locale, 4> locales{
    {{"en-US", "English"}, {"de-DE", "Deutsch"}, {"fr-FR", "Français"}, {"ja-JP", "日本語"}}};

// One phrase in each of the locales, in their order.
using Phrase = std::array<std::string_view, locales.size()>;

enum class Category {
  fashion,
  shoes,
  beauty,
  jewellery,
  electronics,
  books,
  home,
  sports,
  kids,
  groceries,
  food,
  health,
  services,
  leisure,
  department,
};
inline constexpr int categoryCount = 15;

struct CategoryWords {
  Phrase name;
  // What the shops of the category call themselves behind their own word: "Bakery".
  std::span<const Phrase> nouns;
  std::span<const std::string_view> keywords;
};

const CategoryWords& wordsOf(Category category);

// The id that documents give the category.
inline int idOf(Category category) { return static_cast<int>(category) + 1; }

enum class Amenity { exit, toilets, information, cashMachine, babyCare };
inline constexpr int amenityCount = 5;

struct AmenityWords {
  Phrase name;
  std::array<std::string_view, 3> keywords;
};

const AmenityWords& wordsOf(Amenity amenity);

inline int idOf(Amenity amenity) { return static_cast<int>(amenity) + 1; }

struct City {
  std::string_view name;
  std::string_view street;
  // Degrees times 10^7.
  std::int64_t latitudeE7;
  std::int64_t longitudeE7;
  // 10^-9 degrees of longitude that a metre to the east makes at this latitude.
  std::int64_t longitudeE9PerMetre;
};

// 10^-9 degrees of latitude that a metre to the north makes anywhere on the sphere.
inline constexpr std::int64_t latitudeE9PerMetre = 8983;

std::span<const City> cities();

// First and second words of a venue's name: "Linden" "Plaza".
std::span<const std::string_view> venueFirstWords();
std::span<const std::string_view> venueSecondWords();

// Words that shops are called by: "Juniper".
std::span<const std::string_view> brandWords();

// "Garden Hall", a different one for each index.
std::string buildingName(int index);
// "A", "B", ..., "Z", "A2", ...
std::string buildingLetter(int index);
// "Lower Ground" for -1, "Ground Floor", "First Floor", ... "Level 11"
std::string floorName(int level);
// "LG", "G", "1", ...
std::string shortFloorName(int level);

}  // namespace tern::generate
