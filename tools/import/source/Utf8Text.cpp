#include "tools/import/source/Utf8Text.hpp"

#include <array>

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::imports {

namespace {

// From 0x80 on, where it differs from Latin-1; what it has no letter for stands for itself there.
constexpr std::array<char32_t, 32> windowsLetters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void addWindowsLetter(std::string& text, unsigned char byte) {
  constexpr unsigned char first = 0x80;
  const bool isOwn = byte < first + windowsLetters.size();
  std::array<char, 4> letter{};
  const char32_t code = isOwn ? windowsLetters[byte - first] : byte;
  const char* const end = putUtf8(letter.data(), code);
  text.append(letter.data(), static_cast<std::size_t>(end - letter.data()));
}

}  // namespace

Utf8Text utf8TextOf(std::string_view bytes) {
  Utf8Text read;
  read.text.reserve(bytes.size());
  while (!bytes.empty()) {
    const auto byte = static_cast<unsigned char>(bytes.front());
    const std::size_t size =
        byte < 0x80 ? 1 : utf8SequenceSize(bytes.data(), bytes.data() + bytes.size());
    if (size == 0) {
      read.wasUtf8 = false;
      addWindowsLetter(read.text, byte);
    } else {
      read.text.append(bytes.substr(0, size));
    }
    bytes.remove_prefix(size == 0 ? 1 : size);
  }
  return read;
}

}  // namespace tern::imports
