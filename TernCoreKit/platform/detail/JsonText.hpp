// Which characters stand for themselves in the strings of JSON.
#pragma once

namespace tern::inline v5 {

// ASCII that needs no escape.
inline bool isPlainInString(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= ' ' && byte < 0x80 && byte != '"' && byte != '\\';
}

}  // namespace tern
