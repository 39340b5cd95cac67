// Names as they are compared: whatever the case, the accents and the width of their letters.
//
// Ownership: values. Threads: any. Fails: never; a byte that is no UTF-8 counts as U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace tern::inline v5::detail {

// Two names are the same when this is: "Café" and "CAFE", "Straße" and "strasse", "ｶﾞﾗｽ" and
// "ガラス". What spaces there are between words is one, and none at the ends. A syllable of Hangul
// is its letters one by one, so that the beginning of a name is one while its last syllable is
// being typed. What is folded already stays.
std::string folded(std::string_view name);

}  // namespace tern::detail
