#include "TernCoreKit/model/collections/detail/Text.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5::detail {

namespace {

// A run of capital letters; with a stride of 2, capital and small letters take turns.
struct Capitals {
  char32_t first;
  char32_t last;
  char32_t stride;
  char32_t toSmall;
};

// In ascending order. Only letters whose small form takes as many bytes.
constexpr Capitals capitals[] = {
    {0x41, 0x5a, 1, 32},   {0xc0, 0xd6, 1, 32},    {0xd8, 0xde, 1, 32},    {0x100, 0x12e, 2, 1},
    {0x132, 0x136, 2, 1},  {0x139, 0x147, 2, 1},   {0x14a, 0x176, 2, 1},   {0x179, 0x17d, 2, 1},
    {0x386, 0x386, 1, 38}, {0x388, 0x38a, 1, 37},  {0x38c, 0x38c, 1, 64},  {0x38e, 0x38f, 1, 63},
    {0x391, 0x3a1, 1, 32}, {0x3a3, 0x3ab, 1, 32},  {0x400, 0x40f, 1, 80},  {0x410, 0x42f, 1, 32},
    {0x460, 0x480, 2, 1},  {0x48a, 0x4be, 2, 1},   {0x4c1, 0x4cd, 2, 1},   {0x4d0, 0x52e, 2, 1},
    {0x531, 0x556, 1, 48}, {0x1e00, 0x1e94, 2, 1}, {0x1ea0, 0x1efe, 2, 1}, {0xff21, 0xff3a, 1, 32},
};

char32_t small(char32_t letter) {
  const auto* run = std::find_if(std::begin(capitals), std::end(capitals),
                                 [=](const Capitals& each) { return letter <= each.last; });
  const bool isCapital =
      run != std::end(capitals) && letter >= run->first && (letter - run->first) % run->stride == 0;
  return isCapital ? letter + run->toSmall : letter;
}

}  // namespace

std::string lowered(std::string_view text) {
  std::string result(text);
  for (std::size_t at = 0; at < result.size();) {
    const Utf8Character letter = firstUtf8Character(std::string_view(result).substr(at));
    const char32_t lower = small(letter.code);
    if (lower != letter.code) putUtf8(&result[at], lower);
    at += letter.size;
  }
  return result;
}

bool sameTextInAnyCase(const Value& a, const Value& b) {
  return a.isText() && b.isText() && a.text().size() == b.text().size() &&
         lowered(a.text()) == lowered(b.text());
}

}  // namespace tern::detail
