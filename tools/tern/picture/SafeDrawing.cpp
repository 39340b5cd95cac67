#include "tools/tern/picture/SafeDrawing.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <unordered_map>

#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/StyleSheet.hpp"
#include "tools/tern/picture/XmlReader.hpp"

namespace tern::picture {

namespace {

// What all `use` elements of a drawing may add to it together.
constexpr std::size_t mostUsed = 200'000;

// A short rule of a style sheet may give long values to many elements.
constexpr std::size_t mostAttributeBytes = 128U << 20U;

// Smaller texts, in pixels of the picture, are specks.
constexpr double smallestText = 8;
constexpr double usualFontSize = 16;
constexpr double largestSize = 1e7;

// The numbers in front of the first thing that is none, at most `N` of them.
template <std::size_t N>
std::pair<std::array<double, N>, std::size_t> numbersOf(std::string_view text) {
  std::array<double, N> numbers{};
  std::size_t count = 0;
  while (count < N) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n,+"), text.size()));
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), numbers[count]);
    if (error != std::errc()) break;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    ++count;
  }
  return {numbers, count};
}

std::string_view valueOf(const std::vector<XmlAttribute>& attributes, std::string_view name) {
  for (const XmlAttribute& attribute : attributes) {
    if (attribute.name == name) return attribute.value;
  }
  return {};
}

std::optional<Box> frameOf(const std::vector<XmlAttribute>& attributes) {
  auto [box, count] = numbersOf<4>(valueOf(attributes, "viewBox"));
  if (count != 4) {
    box = {0, 0, numbersOf<1>(valueOf(attributes, "width")).first[0],
           numbersOf<1>(valueOf(attributes, "height")).first[0]};
  }
  for (double number : box) {
    if (!(std::abs(number) <= largestSize)) return std::nullopt;
  }
  if (box[2] <= 0 || box[3] <= 0) return std::nullopt;
  return Box{box[0], box[1], box[0] + box[2], box[1] + box[3]};
}

// How much larger a transform makes things, over all directions.
double scaleOf(std::string_view transform) {
  double scale = 1;
  while (true) {
    const std::size_t open = transform.find('(');
    if (open == std::string_view::npos) return scale;
    const std::string_view name = trimmed(transform.substr(0, open));
    transform.remove_prefix(open + 1);
    const auto [n, count] = numbersOf<4>(transform);
    if (name.ends_with("scale")) scale *= std::sqrt(std::abs(n[0] * (count > 1 ? n[1] : n[0])));
    if (name.ends_with("matrix")) scale *= std::sqrt(std::abs(n[0] * n[3] - n[1] * n[2]));
  }
}

// The attributes that a group has too; the rest of the outermost element's say how it is placed.
bool isForGroups(const AttributeRule& rule) {
  return rule.isProperty && rule.kind != ValueKind::clip;
}

std::string styleSheetTextOf(std::string_view svg) {
  XmlReader reader(svg);
  std::string css;
  bool inStyle = false;
  for (auto token = reader.next(); token != XmlReader::Token::end; token = reader.next()) {
    if (token == XmlReader::Token::error) return css;
    if (token == XmlReader::Token::text && inStyle) css += reader.text();
    if (token != XmlReader::Token::text) {
      inStyle = token == XmlReader::Token::startElement && reader.name() == "style";
    }
  }
  return css;
}

}  // namespace

// Reads the elements one after another, then settles what refers to what.
class DrawingReader {
 public:
  explicit DrawingReader(std::string_view svg) : reader_(svg) {
    if (svg.find("<style") != std::string_view::npos) sheet_.add(styleSheetTextOf(svg));
  }

  ReadDrawing read() {
    for (auto token = reader_.next(); token != XmlReader::Token::end; token = reader_.next()) {
      switch (token) {
        case XmlReader::Token::error:
          return {{}, reader_.problem()};
        case XmlReader::Token::startElement:
          start();
          break;
        case XmlReader::Token::endElement:
          stop();
          break;
        default:
          addText();
      }
      if (!problem_.empty()) return {{}, problem_};
    }
    measure();
    settleReferences();
    return {std::move(drawing_), {}};
  }

 private:
  using Node = SafeDrawing::Node;
  static constexpr std::uint32_t none = SafeDrawing::none;

  std::vector<Node>& nodes() { return drawing_.nodes_; }

  void start() {
    if (dropped_ > 0) {
      ++dropped_;
      return;
    }
    const std::string_view element = allowedElement(reader_.name());
    if (nodes().empty()) {
      startDrawing();
    } else if (element.empty()) {
      dropped_ = 1;
    } else {
      add(element);
    }
  }

  void startDrawing() {
    if (reader_.name() != "svg") {
      problem_ = "it is not an SVG";
      return;
    }
    drawing_.frame_ = frameOf(reader_.attributes());
    add("svg");
    Node& root = nodes().front();
    root.element = "g";
    std::erase_if(root.attributes,
                  [](const Declaration& declaration) { return !isForGroups(*declaration.rule); });
  }

  std::uint32_t append(Node node) {
    const auto place = static_cast<std::uint32_t>(nodes().size());
    if (place == SafeDrawing::mostElements) problem_ = "it has too many elements";
    node.parent = current_;
    if (current_ != none) nodes()[current_].children.push_back(place);
    nodes().push_back(std::move(node));
    return place;
  }

  void add(std::string_view element) {
    Node node;
    node.element = element;
    const std::string_view id = valueOf(reader_.attributes(), "id");
    for (const XmlAttribute& attribute : reader_.attributes()) {
      declare(node.attributes, ruleFor(attribute.name), attribute.value);
    }
    sheet_.applyTo(node.attributes, reader_.name(), id, valueOf(reader_.attributes(), "class"));
    StyleSheet::declareAll(node.attributes, valueOf(reader_.attributes(), "style"));
    for (const Declaration& declaration : node.attributes) {
      attributeBytes_ += sizeof declaration + declaration.value.size();
    }
    if (attributeBytes_ > mostAttributeBytes) problem_ = "it has too many styles";
    current_ = append(std::move(node));
    if (!id.empty()) places_.emplace(id, current_);
  }

  void addText() {
    if (dropped_ > 0 || current_ == none) return;
    const std::string_view element = nodes()[current_].element;
    if (element != "text" && element != "tspan") return;
    Node node;
    node.text = reader_.text();
    append(std::move(node));
  }

  void stop() {
    if (dropped_ > 0) {
      --dropped_;
    } else {
      current_ = nodes()[current_].parent;
    }
  }

  void measure() {
    for (std::size_t i = nodes().size(); i-- > 1;) {
      const Node& node = nodes()[i];
      Node& parent = nodes()[node.parent];
      parent.size += node.size;
      parent.hasUse = parent.hasUse || node.hasUse || node.element == "use";
    }
  }

  bool isWithin(const Node& node, std::string_view element) {
    for (const Node* at = &node;; at = &nodes()[at->parent]) {
      if (at->element == element) return true;
      if (at->parent == none) return false;
    }
  }

  static bool isGradient(const Node& node) {
    return node.element == "linearGradient" || node.element == "radialGradient";
  }

  // Whether the drawing stays bounded when the attribute of `from` shows `to` once more.
  bool mayRefer(ValueKind kind, const Node& from, const Node& to) {
    if (kind == ValueKind::paint) return isGradient(to);
    if (kind == ValueKind::clip) return to.element == "clipPath" && !isWithin(from, "clipPath");
    if (isGradient(from)) return isGradient(to);
    if (from.element != "use" || to.hasUse || to.element == "use") return false;
    if (isWithin(from, "clipPath") || used_ + to.size > mostUsed) return false;
    used_ += to.size;
    return true;
  }

  void settleReferences() {
    for (Node& node : nodes()) {
      for (std::size_t i = 0; i < node.attributes.size(); ++i) {
        Declaration& attribute = node.attributes[i];
        if (attribute.rule->kind == ValueKind::plain) continue;
        const auto id = referredId(attribute.value);
        const bool isColour =
            attribute.value.front() == '#' && attribute.rule->kind == ValueKind::paint;
        if (!id || isColour) continue;
        const auto found = places_.find(std::string(*id));
        const bool allowed =
            found != places_.end() && mayRefer(attribute.rule->kind, node, nodes()[found->second]);
        node.targets.emplace_back(i, allowed ? found->second : none);
        if (allowed) nodes()[found->second].isReferredTo = true;
      }
    }
  }

  XmlReader reader_;
  StyleSheet sheet_;
  SafeDrawing drawing_;
  std::string problem_;
  std::unordered_map<std::string, std::uint32_t> places_;
  std::uint32_t current_ = none;
  // How deep the reader is inside a dropped element.
  std::size_t dropped_ = 0;
  std::size_t used_ = 0;
  std::size_t attributeBytes_ = 0;
};

// Writes the elements from the outside in; nesting is bounded by the reader.
class SafeDrawing::Writer {
 public:
  Writer(const std::vector<Node>& nodes, std::string_view idPrefix)
      : nodes_(nodes), idPrefix_(idPrefix) {}

  void write(std::uint32_t place, double scale, double fontSize) {
    const Node& node = nodes_[place];
    if (node.element.empty()) {
      if (fontSize * scale >= smallestText) out_ += escaped(node.text);
      return;
    }
    if (node.element == "use" && !leadsSomewhere(node)) return;
    out_ += '<';
    out_ += node.element;
    if (node.isReferredTo) writeAttribute("id", idOf(place));
    for (std::size_t i = 0; i < node.attributes.size(); ++i) {
      const auto& [rule, value] = node.attributes[i];
      if (rule->name == "transform") scale *= scaleOf(value);
      if (rule->name == "font-size") fontSize = fontSizeOf(value, fontSize);
      writeDeclaration(node, i);
    }
    writeInside(node, scale, fontSize);
  }

  std::string take() { return std::move(out_); }

 private:
  static bool leadsSomewhere(const Node& node) {
    return std::any_of(node.targets.begin(), node.targets.end(), [&](const auto& target) {
      return target.second != none && node.attributes[target.first].rule->kind == ValueKind::link;
    });
  }

  static double fontSizeOf(std::string_view value, double inherited) {
    const auto [size, count] = numbersOf<1>(value);
    const bool isRelative = value.ends_with("em") || value.ends_with('%') || value.ends_with("ex");
    return count == 1 && !isRelative ? size[0] : inherited;
  }

  std::string idOf(std::uint32_t place) const { return idPrefix_ + std::to_string(place); }

  void writeAttribute(std::string_view name, std::string_view value) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    out_ += escaped(value);
    out_ += '"';
  }

  void writeDeclaration(const Node& node, std::size_t i) {
    const auto& [rule, value] = node.attributes[i];
    const auto target = std::find_if(node.targets.begin(), node.targets.end(),
                                     [i](const auto& candidate) { return candidate.first == i; });
    if (target == node.targets.end()) {
      writeAttribute(rule->name, value);
    } else if (target->second == none) {
      // An unknown gradient paints nothing; without the attribute it would paint black.
      if (rule->kind == ValueKind::paint) writeAttribute(rule->name, "none");
    } else {
      const std::string reference = "#" + idOf(target->second);
      writeAttribute(rule->name,
                     rule->kind == ValueKind::link ? reference : "url(" + reference + ")");
    }
  }

  void writeInside(const Node& node, double scale, double fontSize) {
    if (node.children.empty()) {
      out_ += "/>";
      return;
    }
    out_ += '>';
    for (std::uint32_t child : node.children) write(child, scale, fontSize);
    out_ += "</";
    out_ += node.element;
    out_ += '>';
  }

  const std::vector<Node>& nodes_;
  std::string idPrefix_;
  std::string out_;
};

ReadDrawing SafeDrawing::read(std::string_view svg) {
  if (svg.size() > mostBytes) return {{}, "it is too large"};
  return DrawingReader(svg).read();
}

std::string SafeDrawing::markup(std::string_view idPrefix, double scale) const {
  if (nodes_.empty()) return {};
  Writer writer(nodes_, idPrefix);
  writer.write(0, scale, usualFontSize);
  return writer.take();
}

}  // namespace tern::picture
