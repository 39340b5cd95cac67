// A route told in steps, floor by floor, for a person to read.
//
// Threads: any. Fails: for want of memory, by std::bad_alloc.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/guidance/TernGuidance.hpp"

namespace tern::command {

// Each floor's name on a line of its own, its steps below it with how far each goes, and in the end
// how far and how long it all is, where a scale tells that.
std::string stepsText(const std::vector<TernStep>& steps,
                      const std::function<std::string(std::int64_t mapId)>& floorName,
                      std::string_view language);

// The steps of a route, which is to be told first.
std::vector<TernStep> stepsOf(const TernGuidance& guidance, const TernRoute& route,
                              std::string_view language);

// Ids of the destinations that the steps are told by.
std::vector<std::int64_t> landmarksOf(const std::vector<TernStep>& steps);

}  // namespace tern::command
