// Says whether a text is a JSON document, by the grammar read aloud: slow, plain, and with nothing
// in common with the library's reader.
#pragma once

#include <string_view>

namespace tern::test {

// Includes what the library asks beyond the grammar: numbers within range, half surrogate pairs
// refused, a byte order mark allowed in front.
bool isJsonDocument(std::string_view text);

}  // namespace tern::test
