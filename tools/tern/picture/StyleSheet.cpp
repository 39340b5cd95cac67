#include "tools/tern/picture/StyleSheet.hpp"

#include <algorithm>
#include <vector>

namespace tern::picture {

namespace {

constexpr auto npos = std::string_view::npos;

// Of one element; drawings have one or two.
constexpr std::size_t mostClasses = 16;

std::string withoutComments(std::string_view css) {
  std::string out;
  while (true) {
    const std::size_t open = css.find("/*");
    out += css.substr(0, open);
    if (open == npos) return out;
    const std::size_t close = css.find("*/", open + 2);
    if (close == npos) return out;
    css.remove_prefix(close + 2);
  }
}

// Calls `use` with each part between the marks, without the blanks around it.
template <class Use>
void eachPart(std::string_view text, std::string_view marks, Use use) {
  while (!text.empty()) {
    const std::size_t stop = std::min(text.find_first_of(marks), text.size());
    if (const std::string_view part = trimmed(text.substr(0, stop)); !part.empty()) use(part);
    text.remove_prefix(std::min(stop + 1, text.size()));
  }
}

// Behind the block that opens at `open`.
std::size_t endOfBlock(std::string_view css, std::size_t open) {
  std::size_t depth = 0;
  for (std::size_t at = open; at < css.size(); ++at) {
    if (css[at] == '{') ++depth;
    if (css[at] == '}' && --depth == 0) return at + 1;
  }
  return css.size();
}

}  // namespace

void StyleSheet::add(std::string_view css) {
  const std::string text = withoutComments(css);
  std::string_view rest = trimmed(text);
  while (!rest.empty()) {
    const std::size_t stop = rest.find_first_of("{;");
    if (stop == npos) return;
    std::size_t end = stop + 1;
    if (rest[stop] == '{') {
      end = endOfBlock(rest, stop);
      if (rest.front() != '@') {
        addRule(rest.substr(0, stop), rest.substr(stop + 1, end - stop - 2));
      }
    }
    rest = trimmed(rest.substr(end));
  }
}

void StyleSheet::addRule(std::string_view selectors, std::string_view body) {
  ++places_;
  eachPart(selectors, ",", [&](std::string_view selector) {
    if (selector.find_first_of(" \t\r\n>+~:[*") != npos) return;
    Rule& rule = rules_[std::string(selector)];
    rule.place = places_;
    declareAll(rule.declarations, body);
  });
}

void StyleSheet::declareAll(Declarations& declarations, std::string_view css) {
  eachPart(css, ";", [&](std::string_view declaration) {
    const std::size_t colon = declaration.find(':');
    if (colon == npos) return;
    const AttributeRule* rule = ruleFor(trimmed(declaration.substr(0, colon)));
    if (rule == nullptr || !rule->isProperty) return;
    const std::string_view value = declaration.substr(colon + 1);
    declare(declarations, rule, value.substr(0, value.find('!')));
  });
}

const StyleSheet::Rule* StyleSheet::find(std::string_view sort, std::string_view name) const {
  const auto found = rules_.find(std::string(sort).append(name));
  return found != rules_.end() ? &found->second : nullptr;
}

void StyleSheet::applyTo(Declarations& declarations, std::string_view element, std::string_view id,
                         std::string_view classes) const {
  if (rules_.empty()) return;
  std::vector<const Rule*> matching;
  const auto match = [&](std::string_view sort, std::string_view name) {
    if (const Rule* rule = find(sort, name)) matching.push_back(rule);
  };
  match("", element);
  const std::size_t fromClasses = matching.size();
  std::size_t left = mostClasses;
  eachPart(classes, " \t\r\n", [&](std::string_view name) {
    if (left == 0) return;
    --left;
    match(".", name);
    match(std::string(element) + ".", name);
  });
  std::sort(matching.begin() + static_cast<std::ptrdiff_t>(fromClasses), matching.end(),
            [](const Rule* a, const Rule* b) { return a->place < b->place; });
  if (!id.empty()) match("#", id);
  for (const Rule* rule : matching) {
    for (const auto& [attribute, value] : rule->declarations) {
      declare(declarations, attribute, value);
    }
  }
}

}  // namespace tern::picture
