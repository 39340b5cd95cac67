// The size of a drawing, from the viewBox of its SVG document.
//
// Ownership: copies nothing of the document. Threads: any. Fails: by an empty answer.
#pragma once

#include <optional>
#include <string_view>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

// In map units.
struct DrawingSize {
  Value width;
  Value height;
};

// The third and the fourth part of the first viewBox="..." of the document, when single spaces cut
// it into exactly four parts; commas, tabs and repeated spaces are not read as separators.
std::optional<DrawingSize> sizeOfViewBox(std::string_view svg);

// The number that a text begins with: an integer when the whole text is one of 64 bits, a double
// otherwise; 0 when it begins with none that a double can hold.
Value leadingNumber(std::string_view text);

}  // namespace tern::detail
