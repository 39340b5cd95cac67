// What of a drawing from outside may be shown: a list of elements, a list of attributes, and for
// each attribute the few characters its values may be made of. What is on neither list is dropped.
//
// Nothing that loads, runs, animates or reaches outside the drawing is on the lists; a value that
// refers to something can only name an element of the same drawing.
//
// Threads: free functions over constant tables.
// Fails: never.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tern::picture {

enum class ValueKind {
  plain,      // numbers, words, path data
  transform,  // functions of numbers
  paint,      // a colour, or a reference to a gradient
  font,       // names, perhaps quoted
  clip,       // a reference to a clip path
  link,       // #id
};

struct AttributeRule {
  std::string_view name;
  ValueKind kind;
  // Whether a style sheet may set it too.
  bool isProperty;
};

// The element that stands for the given one in the picture: itself, or a plain group for an element
// that only wraps others. Empty for what is dropped with all that is in it.
std::string_view allowedElement(std::string_view name);

// Null for an attribute that is dropped.
const AttributeRule* ruleFor(std::string_view attribute);

bool isAllowedValue(ValueKind kind, std::string_view value);

// The id that a value of the kind `paint`, `clip` or `link` refers to; none when it is no
// reference.
std::optional<std::string_view> referredId(std::string_view value);

// An attribute and the value it has been given; the value has been found allowed.
struct Declaration {
  const AttributeRule* rule;
  std::string value;
};
using Declarations = std::vector<Declaration>;

// Sets the attribute when there is a rule for it and the value is allowed by it; a later value
// replaces an earlier one.
void declare(Declarations& declarations, const AttributeRule* rule, std::string_view value);

// Text without blanks around it.
std::string_view trimmed(std::string_view text);

}  // namespace tern::picture
