// What something is called, language by language.
//
// Threads: plain values.
// Fails: never.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tern::imports {

struct Name {
  // "ja", "en", "de-AT"; empty where the source does not say.
  std::string language;
  std::string text;
};

// At most one for a language.
using Names = std::vector<Name>;

// The name in the language or, where there is none, in one that begins like it ("en" for "en-GB"),
// else the first; empty without names.
inline std::string_view nameIn(const Names& names, std::string_view language) {
  const auto base = [](std::string_view code) { return code.substr(0, code.find('-')); };
  const Name* chosen = nullptr;
  for (const Name& name : names) {
    if (name.language == language) return name.text;
    if (chosen == nullptr && base(name.language) == base(language)) chosen = &name;
  }
  if (chosen != nullptr) return chosen->text;
  return names.empty() ? std::string_view() : std::string_view(names.front().text);
}

}  // namespace tern::imports
