#include "TernCoreKit/model/collections/detail/Text.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace tern::detail {

namespace {

// A run of capital letters; with a stride of 2, capital and small letters take turns.
struct Capitals {
  std::uint32_t first;
  std::uint32_t last;
  std::uint32_t stride;
  std::uint32_t toSmall;
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

std::uint32_t small(std::uint32_t letter) {
  const auto* run = std::find_if(std::begin(capitals), std::end(capitals),
                                 [=](const Capitals& each) { return letter <= each.last; });
  const bool isCapital =
      run != std::end(capitals) && letter >= run->first && (letter - run->first) % run->stride == 0;
  return isCapital ? letter + run->toSmall : letter;
}

std::size_t lengthOf(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xc2 && lead < 0xe0) return 2;
  return lead >= 0xe0 && lead < 0xf0 ? 3 : 0;
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80; }

// The number of bytes of the letter at the start, 0 when there is none of at most three bytes.
std::size_t letterLength(std::string_view text) {
  const std::size_t length = lengthOf(static_cast<unsigned char>(text[0]));
  if (length == 0 || length > text.size()) return 0;
  const std::string_view rest = text.substr(1, length - 1);
  return std::all_of(rest.begin(), rest.end(), isContinuation) ? length : 0;
}

std::uint32_t decode(const char* bytes, std::size_t length) {
  constexpr std::uint32_t leadBits[] = {0, 0x7f, 0x1f, 0x0f};
  std::uint32_t letter = static_cast<unsigned char>(bytes[0]) & leadBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    letter = letter << 6U | (static_cast<unsigned char>(bytes[i]) & 0x3fU);
  }
  return letter;
}

void encode(std::uint32_t letter, char* bytes, std::size_t length) {
  constexpr std::uint32_t leadMarks[] = {0, 0, 0xc0, 0xe0};
  for (std::size_t i = length; i-- > 1; letter >>= 6U) {
    bytes[i] = static_cast<char>(0x80U | (letter & 0x3fU));
  }
  bytes[0] = static_cast<char>(leadMarks[length] | letter);
}

}  // namespace

std::string lowered(std::string_view text) {
  std::string result(text);
  for (std::size_t at = 0; at < result.size();) {
    const std::size_t length = letterLength(text.substr(at));
    if (length > 0) encode(small(decode(&result[at], length)), &result[at], length);
    at += std::max<std::size_t>(length, 1);
  }
  return result;
}

bool sameTextInAnyCase(const Value& a, const Value& b) {
  return a.isText() && b.isText() && a.text().size() == b.text().size() &&
         lowered(a.text()) == lowered(b.text());
}

}  // namespace tern::detail
