// The colours and letters of the pictures. Texts keep a contrast of at least 4.5 to 1 on their
// grounds, on a dark screen too.
#pragma once

#include <string_view>

namespace tern::picture::palette {

inline constexpr std::string_view fonts =
    "system-ui, -apple-system, 'Segoe UI', Roboto, 'Helvetica Neue', Arial, sans-serif";

inline constexpr std::string_view page = "#f5f6f8";
inline constexpr std::string_view paper = "#fbfbfa";
// Under a floor that would not be seen on the other.
inline constexpr std::string_view deepPaper = "#dde1e8";
inline constexpr std::string_view frame = "#d9dde3";
inline constexpr std::string_view ink = "#1c2430";
inline constexpr std::string_view quiet = "#5a6472";
inline constexpr std::string_view route = "#2563eb";
inline constexpr std::string_view casing = "#ffffff";
inline constexpr std::string_view otherRoute = "#8a97a8";
inline constexpr std::string_view start = "#0f766e";
inline constexpr std::string_view goal = "#d6293e";

// From near to far: each is lighter than the one before, and the last still is seen on paper. On a
// dark screen near is what is light.
inline constexpr std::string_view ramp[] = {"#440154", "#46327e", "#365c8d", "#277f8e", "#1fa187"};

// Parts of the ways that nothing joins: far from each other, and from `quiet`, for people who do
// not see all colours, too.
inline constexpr std::string_view islands[] = {"#0072b2", "#d55e00", "#00805d",
                                               "#aa3f86", "#8f6a00", "#15181c"};

struct Twin {
  std::string_view light;
  std::string_view dark;
};

// What each becomes on a dark screen; no two are alike.
inline constexpr Twin twins[] = {
    {page, "#14181f"},       {paper, "#0f1319"},      {deepPaper, "#0b0e13"},
    {frame, "#39424e"},      {ink, "#e8ebf0"},        {quiet, "#a3adba"},
    {route, "#5b93ff"},      {casing, "#10141a"},     {start, "#2dd4bf"},
    {otherRoute, "#77849a"}, {goal, "#ff6b78"},       {ramp[0], "#fde725"},
    {ramp[1], "#a0da39"},    {ramp[2], "#4ac16d"},    {ramp[3], "#1fa188"},
    {ramp[4], "#277f8f"},    {islands[0], "#56b4e9"}, {islands[1], "#ff8a3d"},
    {islands[2], "#12c493"}, {islands[3], "#e58fc6"}, {islands[4], "#f0d040"},
    {islands[5], "#f7f9fc"},
};

constexpr std::string_view darkTwin(std::string_view light) {
  for (const Twin& twin : twins) {
    if (twin.light == light) return twin.dark;
  }
  return light;
}

}  // namespace tern::picture::palette
