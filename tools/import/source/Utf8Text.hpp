// Texts of which some bytes are not UTF-8, as tables have that an office program wrote.
//
// Threads: a free function. Fails: never.
#pragma once

#include <string>
#include <string_view>

namespace tern::imports {

struct Utf8Text {
  std::string text;
  bool wasUtf8 = true;
};

// What is UTF-8 stays as it is; every other byte is a letter of Windows-1252.
Utf8Text utf8TextOf(std::string_view bytes);

}  // namespace tern::imports
