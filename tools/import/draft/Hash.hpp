// FNV-1a, by which ids become numbers and a source's files a stamp.
//
// Threads: a free function. Fails: never.
#pragma once

#include <cstdint>
#include <string_view>

namespace tern::imports {

inline constexpr std::uint64_t emptyHash = 0xCBF29CE484222325;

// Of the text behind what `before` is the hash of.
inline std::uint64_t hashOf(std::string_view text, std::uint64_t before = emptyHash) {
  for (const char c : text) before = (before ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return before;
}

}  // namespace tern::imports
