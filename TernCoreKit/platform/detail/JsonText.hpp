// The characters of JSON strings: which stand for themselves, and well-formed UTF-8 as the Unicode
// standard defines it.
#pragma once

#include <cstddef>

namespace tern {

// ASCII that needs no escape.
inline bool isPlainInString(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= ' ' && byte < 0x80 && byte != '"' && byte != '\\';
}

// Bytes of the well-formed sequence of several bytes that the text starts with; 0 without one.
inline std::size_t utf8SequenceSize(const char* text, const char* end) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (end - text < 2) return 0;
  const unsigned lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4) return 0;
  // Neither longer than needed, nor half a surrogate pair, nor beyond the last code point.
  const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (byte(1) < lowest || byte(1) > highest) return 0;
  const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (static_cast<std::size_t>(end - text) < size) return 0;
  for (std::size_t i = 2; i < size; ++i) {
    if ((byte(i) & 0xC0U) != 0x80) return 0;
  }
  return size;
}

// Writes a code point, which must be one, and returns the place behind its one to four bytes.
inline char* putUtf8(char* out, char32_t code) {
  const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6U);
    put(0x80 | (code & 0x3FU));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12U);
    put(0x80 | (code >> 6U & 0x3FU));
    put(0x80 | (code & 0x3FU));
  } else {
    put(0xF0 | code >> 18U);
    put(0x80 | (code >> 12U & 0x3FU));
    put(0x80 | (code >> 6U & 0x3FU));
    put(0x80 | (code & 0x3FU));
  }
  return out;
}

}  // namespace tern
