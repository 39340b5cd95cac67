// Options of the C interface: a JSON object of known fields, each of its kind.
//
//   const Options options(text, {"venues"});
//   options.ids("venues");
//
// Ownership: its own copy. Threads: as a standard container. Fails: by a Refusal that names the
// field.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

class Options {
 public:
  // NULL is an empty object.
  Options(const char* text, std::initializer_list<std::string_view> known);

  // A list of ids with at least one in it; empty when it is left out.
  std::vector<std::int64_t> ids(std::string_view name) const;
  // Empty when it is left out.
  std::string text(std::string_view name) const;
  std::string requiredText(std::string_view name) const;
  std::int64_t requiredInteger(std::string_view name) const;
  bool flag(std::string_view name, bool otherwise) const;

 private:
  Value options_;
};

}  // namespace tern::detail
