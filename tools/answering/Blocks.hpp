// Which requests change what others are answered: those that block a link or a waypoint.
//
// Threads: any. Fails: never.
#pragma once

#include <string_view>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::answering {

// Told by the text, which need not be decoded for it: never false for one that blocks, and now and
// then true for another. A letter that is written as its number may be one of "block".
inline bool mayBlock(std::string_view line) {
  return line.find("\"block") != line.npos || line.find("\\u00") != line.npos;
}

inline bool blocks(const Value& request) {
  if (!request.isMap()) return false;
  const std::string_view op = request["op"].text();
  return op == "blockEdge" || op == "blockEntry" || op == "blockExit";
}

}  // namespace tern::answering
