// The colours and letters of the pictures. Texts keep a contrast of at least 4.5 to 1 on their
// grounds.
#pragma once

#include <string_view>

namespace tern::picture::palette {

inline constexpr std::string_view fonts =
    "system-ui, -apple-system, 'Segoe UI', Roboto, 'Helvetica Neue', Arial, sans-serif";

inline constexpr std::string_view page = "#f5f6f8";
inline constexpr std::string_view paper = "#fbfbfa";
inline constexpr std::string_view frame = "#d9dde3";
inline constexpr std::string_view ink = "#1c2430";
inline constexpr std::string_view quiet = "#5a6472";
inline constexpr std::string_view route = "#2563eb";
inline constexpr std::string_view casing = "#ffffff";
inline constexpr std::string_view otherRoute = "#8a97a8";
inline constexpr std::string_view start = "#0f766e";
inline constexpr std::string_view goal = "#d6293e";

}  // namespace tern::picture::palette
