// The files of a small transit feed: two stations with every kind of pathway, and what goes wrong
// in feeds.
//
// Threads: any.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tern::fuzz {

inline constexpr std::array<std::string_view, 5> feedFiles{
    "stops.txt", "pathways.txt", "levels.txt", "translations.txt", "feed_info.txt"};

// In the order of `feedFiles`.
std::array<std::string, feedFiles.size()> seedFeed();

}  // namespace tern::fuzz
