// The target of an HTTP request in its parts.
//
//   parseTarget("/a%20b/full?v=4.12&ids=1,2")->parameter("ids");  // "1,2"
//
// Threads: plain values. Fails: by value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tern::service {

struct RequestTarget {
  // What stands in front of the query, as it was sent.
  std::string path;
  // Its names, unescaped. None is empty, "." or "..", or holds a "/" or a NUL.
  std::vector<std::string> names;
  std::vector<std::pair<std::string, std::string>> parameters;

  // The first of that name; empty when there is none.
  std::string_view parameter(std::string_view name) const;
};

// None for a path with a name that could lead out of a folder, and for a wrong escape.
std::optional<RequestTarget> parseTarget(std::string_view target);

// Whether it may be a name in a path.
bool isFileName(std::string_view name);

// The text between the separators; nothing of an empty text.
std::vector<std::string> split(std::string_view text, char separator);

}  // namespace tern::service
