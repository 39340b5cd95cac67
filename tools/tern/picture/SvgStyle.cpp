#include "tools/tern/picture/SvgStyle.hpp"

#include <algorithm>
#include <cstddef>
#include <string>

#include "tools/tern/picture/SvgNumbers.hpp"

namespace tern::picture {

namespace {

constexpr std::size_t mostClasses = 16;
constexpr std::string_view properties[] = {"fill",        "stroke",         "fill-opacity",
                                           "opacity",     "stroke-opacity", "font-size",
                                           "text-anchor", "display",        "visibility"};

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(svgBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(svgBlanks) + 1);
}

double opacityIn(std::string_view text) {
  const double number = takeNumber(text).value_or(1);
  return std::clamp(text.starts_with('%') ? number / 100 : number, 0.0, 1.0);
}

// Absent for a gradient, of which nothing is known.
std::optional<Paint> paintOr(std::string_view value, const std::optional<Paint>& inherited) {
  return value == "inherit" ? inherited : readPaint(value);
}

void set(SvgStyle& style, std::string_view property, std::string_view value) {
  if (property == "fill") {
    style.fill = paintOr(value, style.fill);
  } else if (property == "stroke") {
    style.stroke = paintOr(value, style.stroke);
  } else if (property == "fill-opacity") {
    style.fillOpacity = opacityIn(value);
  } else if (property == "stroke-opacity") {
    style.strokeOpacity = opacityIn(value);
  } else if (property == "opacity") {
    style.opacity *= opacityIn(value);
  } else if (property == "font-size") {
    style.fontSize = takeNumber(value).value_or(style.fontSize);
  } else if (property == "text-anchor") {
    style.anchor = value == "middle" ? 0 : value == "end" ? 1 : -1;
  } else {
    style.isShown = style.isShown && value != "none" && value != "hidden";
  }
}

// "fill: #123; stroke: none"
void declareAll(std::string_view text, SvgDeclarations& declarations) {
  while (!text.empty()) {
    const std::string_view each = text.substr(0, text.find(';'));
    text.remove_prefix(std::min(each.size() + 1, text.size()));
    const std::size_t colon = each.find(':');
    if (colon == nowhere) continue;
    const auto property = std::ranges::find(properties, trimmed(each.substr(0, colon)));
    const std::string_view value = each.substr(colon + 1);
    if (property == std::end(properties)) continue;
    declarations[static_cast<std::size_t>(property - properties)] =
        trimmed(value.substr(0, value.find('!')));
  }
}

void declareClasses(std::string_view classes, const SvgSheet& sheet,
                    SvgDeclarations& declarations) {
  for (std::size_t count = 0; count < mostClasses && !classes.empty(); ++count) {
    const std::string_view each = classes.substr(0, classes.find_first_of(svgBlanks));
    classes = trimmed(classes.substr(each.size()));
    sheet.declare("." + std::string(each), declarations);
  }
}

}  // namespace

void SvgSheet::add(std::string_view text) {
  while (true) {
    const std::size_t open = text.find('{');
    const std::size_t close = text.find('}', open);
    if (open == nowhere || close == nowhere) return;
    std::string_view selectors = text.substr(0, open);
    // Behind a comment or an @import that stands in front.
    const std::size_t behind = selectors.find_last_of("/;");
    if (behind != nowhere) selectors.remove_prefix(behind + 1);
    SvgDeclarations declarations;
    declareAll(text.substr(open + 1, close - open - 1), declarations);
    while (!selectors.empty()) {
      const std::string_view each = selectors.substr(0, selectors.find(','));
      selectors.remove_prefix(std::min(each.size() + 1, selectors.size()));
      SvgDeclarations& rule = rules_[std::string(trimmed(each))];
      for (std::size_t i = 0; i < rule.size(); ++i) {
        if (!declarations[i].empty()) rule[i] = declarations[i];
      }
    }
    text.remove_prefix(close + 1);
  }
}

void SvgSheet::declare(std::string_view selector, SvgDeclarations& declarations) const {
  const auto found = rules_.find(selector);
  if (found == rules_.end()) return;
  for (std::size_t i = 0; i < declarations.size(); ++i) {
    if (!found->second[i].empty()) declarations[i] = found->second[i];
  }
}

SvgStyle styleOf(const SvgTags& tag, const SvgStyle& outer, const SvgSheet& sheet) {
  SvgDeclarations declarations;
  for (std::size_t i = 0; i < declarations.size(); ++i) {
    declarations[i] = trimmed(tag.valueOf(properties[i]));
  }
  sheet.declare(tag.name(), declarations);
  declareClasses(trimmed(tag.valueOf("class")), sheet, declarations);
  declareAll(tag.valueOf("style"), declarations);
  SvgStyle style = outer;
  for (std::size_t i = 0; i < declarations.size(); ++i) {
    if (!declarations[i].empty()) set(style, properties[i], declarations[i]);
  }
  return style;
}

}  // namespace tern::picture
