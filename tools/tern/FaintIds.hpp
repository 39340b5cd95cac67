// Ids beside names, which a person seldom reads.
//
// Threads: any. Fails: never.
#pragma once

#include <string>
#include <string_view>

#include "tools/tern/Look.hpp"

namespace tern::command {

// The text with "(waypoint 12)", "(destination 7)" and the like faint, where there are colours.
std::string withFaintIds(std::string_view text, const Look& look);

}  // namespace tern::command
