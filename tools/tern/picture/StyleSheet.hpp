// The part of CSS that drawing programs write: rules for an element, a class or an id, without
// combinations of them. What they set is handed out as plain attributes, so no style sheet of a
// drawing gets into the picture, where it would apply to everything in it.
//
// A rule for an element counts least, then classes in the order of the sheet, then an id. Of an
// element's classes the first sixteen count. At-rules and selectors of other forms mean nothing.
//
// Ownership: a plain value.
// Threads: as a standard container.
// Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "tools/tern/picture/DrawingRules.hpp"

namespace tern::picture {

class StyleSheet {
 public:
  // Reads the text of one more style element.
  void add(std::string_view css);

  // Sets what the rules say of an element with that id and list of classes.
  void applyTo(Declarations& declarations, std::string_view element, std::string_view id,
               std::string_view classes) const;

  // Sets what the text of a style attribute, or the inside of a rule, says.
  static void declareAll(Declarations& declarations, std::string_view css);

 private:
  struct Rule {
    // Of the last rule with this selector.
    std::size_t place = 0;
    Declarations declarations;
  };

  void addRule(std::string_view selectors, std::string_view body);
  const Rule* find(std::string_view sort, std::string_view name) const;

  std::unordered_map<std::string, Rule> rules_;
  std::size_t places_ = 0;
};

}  // namespace tern::picture
