#include "tools/tern/picture/DrawingRules.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace tern::picture {

namespace {

constexpr auto elements = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"a", "g"},
    {"circle", "circle"},
    {"clipPath", "clipPath"},
    {"defs", "defs"},
    {"ellipse", "ellipse"},
    {"g", "g"},
    {"line", "line"},
    {"linearGradient", "linearGradient"},
    {"path", "path"},
    {"polygon", "polygon"},
    {"polyline", "polyline"},
    {"radialGradient", "radialGradient"},
    {"rect", "rect"},
    {"stop", "stop"},
    {"svg", "svg"},
    {"switch", "g"},
    {"symbol", "symbol"},
    {"text", "text"},
    {"tspan", "tspan"},
    {"use", "use"},
});

constexpr auto rules = std::to_array<AttributeRule>({
    {"clip-path", ValueKind::clip, true},
    {"clip-rule", ValueKind::plain, true},
    {"clipPathUnits", ValueKind::plain, false},
    {"color", ValueKind::paint, true},
    {"cx", ValueKind::plain, false},
    {"cy", ValueKind::plain, false},
    {"d", ValueKind::plain, false},
    {"display", ValueKind::plain, true},
    {"dominant-baseline", ValueKind::plain, true},
    {"dx", ValueKind::plain, false},
    {"dy", ValueKind::plain, false},
    {"fill", ValueKind::paint, true},
    {"fill-opacity", ValueKind::plain, true},
    {"fill-rule", ValueKind::plain, true},
    {"font-family", ValueKind::font, true},
    {"font-size", ValueKind::plain, true},
    {"font-style", ValueKind::plain, true},
    {"font-weight", ValueKind::plain, true},
    {"fx", ValueKind::plain, false},
    {"fy", ValueKind::plain, false},
    {"gradientTransform", ValueKind::transform, false},
    {"gradientUnits", ValueKind::plain, false},
    {"height", ValueKind::plain, false},
    {"href", ValueKind::link, false},
    {"letter-spacing", ValueKind::plain, true},
    {"offset", ValueKind::plain, false},
    {"opacity", ValueKind::plain, true},
    {"paint-order", ValueKind::plain, true},
    {"pathLength", ValueKind::plain, false},
    {"points", ValueKind::plain, false},
    {"preserveAspectRatio", ValueKind::plain, false},
    {"r", ValueKind::plain, false},
    {"rotate", ValueKind::plain, false},
    {"rx", ValueKind::plain, false},
    {"ry", ValueKind::plain, false},
    {"spreadMethod", ValueKind::plain, false},
    {"stop-color", ValueKind::paint, true},
    {"stop-opacity", ValueKind::plain, true},
    {"stroke", ValueKind::paint, true},
    {"stroke-dasharray", ValueKind::plain, true},
    {"stroke-dashoffset", ValueKind::plain, true},
    {"stroke-linecap", ValueKind::plain, true},
    {"stroke-linejoin", ValueKind::plain, true},
    {"stroke-miterlimit", ValueKind::plain, true},
    {"stroke-opacity", ValueKind::plain, true},
    {"stroke-width", ValueKind::plain, true},
    {"text-anchor", ValueKind::plain, true},
    {"transform", ValueKind::transform, false},
    {"vector-effect", ValueKind::plain, true},
    {"viewBox", ValueKind::plain, false},
    {"visibility", ValueKind::plain, true},
    {"width", ValueKind::plain, false},
    {"x", ValueKind::plain, false},
    {"x1", ValueKind::plain, false},
    {"x2", ValueKind::plain, false},
    {"y", ValueKind::plain, false},
    {"y1", ValueKind::plain, false},
    {"y2", ValueKind::plain, false},
});

static_assert(std::ranges::is_sorted(elements, {},
                                     &std::pair<std::string_view, std::string_view>::first));
static_assert(std::ranges::is_sorted(rules, {}, &AttributeRule::name));

bool isPlain(char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
  return std::string_view(" \t\r\n+-.,%").find(c) != std::string_view::npos;
}

bool consistsOf(std::string_view value, std::string_view more) {
  return std::all_of(value.begin(), value.end(), [more](char c) {
    return isPlain(c) || more.find(c) != std::string_view::npos;
  });
}

bool isPaint(std::string_view value) {
  if (!value.empty() && value.front() == '#') return consistsOf(value.substr(1), "");
  const std::size_t paren = value.find('(');
  if (paren == std::string_view::npos) return consistsOf(value, "");
  constexpr std::string_view functions[] = {"rgb", "rgba", "hsl", "hsla"};
  return std::ranges::find(functions, value.substr(0, paren)) != std::end(functions) &&
         value.back() == ')' && consistsOf(value.substr(paren + 1, value.size() - paren - 2), "");
}

}  // namespace

std::string_view allowedElement(std::string_view name) {
  const auto found = std::ranges::lower_bound(
      elements, name, {}, &std::pair<std::string_view, std::string_view>::first);
  return found != elements.end() && found->first == name ? found->second : std::string_view();
}

const AttributeRule* ruleFor(std::string_view attribute) {
  if (attribute == "xlink:href") attribute = "href";
  const auto found = std::ranges::lower_bound(rules, attribute, {}, &AttributeRule::name);
  return found != rules.end() && found->name == attribute ? &*found : nullptr;
}

bool isAllowedValue(ValueKind kind, std::string_view value) {
  if (value.empty()) return false;
  switch (kind) {
    case ValueKind::plain:
      return consistsOf(value, "");
    case ValueKind::transform:
      return consistsOf(value, "()");
    case ValueKind::paint:
      return isPaint(value) || (value.front() != '#' && referredId(value).has_value());
    case ValueKind::font:
      return consistsOf(value, "'\"_");
    case ValueKind::clip:
      return value == "none" || (value.front() != '#' && referredId(value).has_value());
    case ValueKind::link:
      return value.front() == '#' && referredId(value).has_value();
  }
  return false;
}

std::optional<std::string_view> referredId(std::string_view value) {
  if (value.substr(0, 4) == "url(") {
    value = trimmed(value.substr(4, value.find(')') - 4));
    if (value.size() > 1 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front()) {
      value = trimmed(value.substr(1, value.size() - 2));
    }
  } else if (value.find_first_of("() \t\r\n") != std::string_view::npos) {
    return std::nullopt;
  }
  if (value.size() < 2 || value.front() != '#') return std::nullopt;
  return value.substr(1);
}

void declare(Declarations& declarations, const AttributeRule* rule, std::string_view value) {
  value = trimmed(value);
  if (rule == nullptr || value.empty() || !isAllowedValue(rule->kind, value)) return;
  for (Declaration& declaration : declarations) {
    if (declaration.rule != rule) continue;
    declaration.value = value;
    return;
  }
  declarations.push_back({rule, std::string(value)});
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view space = " \t\r\n";
  const std::size_t first = text.find_first_not_of(space);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

}  // namespace tern::picture
