#include "tools/tern/picture/DrawingMarks.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

#include "tools/drawing/TextWidth.hpp"
#include "tools/tern/picture/SvgNumbers.hpp"
#include "tools/tern/picture/SvgShapes.hpp"
#include "tools/tern/picture/SvgStyle.hpp"
#include "tools/tern/picture/SvgTags.hpp"

namespace tern::picture {

namespace {

// Of two colours that are closer, one is not seen on the other.
constexpr double leastSeen = 1.1;
// What fills more of the drawing is the ground that all stands on.
constexpr double ofGround = 0.95;
constexpr std::size_t mostBlank = 3;
// No drawing of a person goes deeper.
constexpr std::size_t deepest = 256;

// How much of a drawing has each colour.
class Tally {
 public:
  void add(const Colour& colour, double amount) {
    const auto part = [](double value) {
      return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    Entry& entry = entries_[part(colour.red) << 16U | part(colour.green) << 8U | part(colour.blue)];
    entry.colour = colour;
    entry.amount += amount;
  }

  // The one that there is most of, of those that are seen on `ground`.
  std::optional<Colour> most(const std::optional<Colour>& ground = std::nullopt) const {
    const Entry* best = nullptr;
    for (const auto& [bits, entry] : entries_) {
      if (ground && contrast(entry.colour, *ground) < leastSeen) continue;
      if (best == nullptr || entry.amount > best->amount) best = &entry;
    }
    return best != nullptr ? std::optional(best->colour) : std::nullopt;
  }

 private:
  struct Entry {
    Colour colour;
    double amount = 0;
  };
  std::map<std::uint32_t, Entry> entries_;
};

bool isUnseenPart(std::string_view name) {
  constexpr std::array names{"defs",   "symbol", "clipPath", "mask",   "pattern",
                             "marker", "filter", "metadata", "script", "linearGradient"};
  return std::ranges::find(names, name) != names.end();
}

// The words with one blank between them, and the references that XML itself knows read.
std::string wordsOf(std::string_view text) {
  constexpr std::pair<std::string_view, char> references[] = {
      {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
  std::string words;
  while (!text.empty()) {
    char letter = text.front();
    std::size_t size = 1;
    for (const auto& [written, meant] : references) {
      if (!text.starts_with(written)) continue;
      letter = meant;
      size = written.size();
    }
    text.remove_prefix(size);
    const bool isBlank = svgBlanks.find(letter) != std::string_view::npos;
    if (!isBlank) words += letter;
    if (isBlank && !words.empty() && words.back() != ' ') words += ' ';
  }
  if (words.ends_with(' ')) words.pop_back();
  return words;
}

class MarksReader {
 public:
  MarksReader(std::string_view svg, const Box& frame) : svg_(svg), frame_(frame) {}

  DrawingMarks read() {
    readSheet();
    SvgTags tags(svg_);
    while (tags.next()) {
      switch (tags.kind()) {
        case SvgTags::Kind::opening:
          open(tags);
          if (tags.isEmpty()) close();
          break;
        case SvgTags::Kind::closing:
          close();
          break;
        case SvgTags::Kind::text:
          write(tags.text());
          break;
      }
    }
    marks_.floor = areas_.most();
    if (!marks_.floor) marks_.floor = ground_.most();
    if (marks_.floor) {
      marks_.lines = lines_.most(marks_.floor);
      marks_.areas = areas_.most(marks_.floor);
    }
    return std::move(marks_);
  }

 private:
  struct Element {
    SvgStyle style;
    Affine placing;
    bool isText = false;
    Point at;
  };

  void readSheet() {
    bool isStyle = false;
    SvgTags tags(svg_);
    while (tags.next()) {
      if (tags.kind() == SvgTags::Kind::text) {
        if (isStyle) sheet_.add(tags.text());
      } else {
        isStyle = tags.kind() == SvgTags::Kind::opening && tags.name() == "style";
      }
    }
  }

  void open(const SvgTags& tag) {
    if (depth_++ >= deepest) return;
    const Element outer = elements_.empty() ? Element{} : elements_.back();
    Element element{styleOf(tag, outer.style, sheet_), outer.placing, outer.isText, outer.at};
    const std::string_view transform = tag.valueOf("transform");
    if (!transform.empty()) element.placing = outer.placing.after(readTransform(transform));
    if (isUnseenPart(tag.name())) element.style.isShown = false;
    if (tag.name() == "text") {
      element.isText = true;
      element.at = {};
    }
    if (element.isText) placeText(tag, element.at);
    if (element.style.isShown && element.style.opacity > 0) takeShape(tag, element);
    elements_.push_back(std::move(element));
  }

  void close() {
    if (depth_ == 0) return;
    if (--depth_ < elements_.size()) elements_.pop_back();
  }

  static void placeText(const SvgTags& tag, Point& at) {
    for (const auto& [name, axis] : {std::pair{"x", &Point::x}, {"y", &Point::y}}) {
      std::string_view value = tag.valueOf(name);
      if (const auto number = takeNumber(value)) at.*axis = *number;
    }
  }

  // As it comes out on white.
  static std::optional<Colour> seen(const std::optional<Paint>& paint, double opacity) {
    if (!paint || paint->opacity * opacity <= 0.02) return std::nullopt;
    return mixed(white, paint->colour, paint->opacity * opacity);
  }

  void takeShape(const SvgTags& tag, const Element& element) {
    const std::string_view name = tag.name();
    const bool isImage = name == "use" || name == "image" || name == "foreignObject";
    marks_.hasImages = marks_.hasImages || isImage;
    const auto box = boxOfShape(tag, element.placing);
    if (!box || !box->meets(frame_.grownBy(1))) return;
    const SvgStyle& style = element.style;
    const auto fill = seen(style.fill, style.fillOpacity * style.opacity);
    const auto stroke = seen(style.stroke, style.strokeOpacity * style.opacity);
    if (fill || stroke) marks_.shapes.push_back(*box);
    if (fill) tallyFor(*box).add(*fill, box->width() * box->height());
    if (stroke) lines_.add(*stroke, box->width() + box->height());
  }

  Tally& tallyFor(const Box& box) {
    const double whole = frame_.width() * frame_.height();
    return box.overlap(frame_) > ofGround * whole ? ground_ : areas_;
  }

  void write(std::string_view text) {
    if (elements_.empty() || !elements_.back().isText || !elements_.back().style.isShown) return;
    const Element& element = elements_.back();
    std::string words = wordsOf(text);
    const double size = element.style.fontSize;
    if (words.empty() || !(size > 0)) return;
    const double width = drawing::textWidth(words, size);
    const double left = element.at.x - width * (element.style.anchor + 1) / 2;
    const Box box{left, element.at.y - size * 0.8, left + width, element.at.y + size * 0.25};
    marks_.texts.push_back(
        {std::move(words), movedBy(element.placing, box), size * element.placing.scale()});
  }

  std::string_view svg_;
  Box frame_;
  SvgSheet sheet_;
  std::vector<Element> elements_;
  std::size_t depth_ = 0;
  Tally ground_;
  Tally areas_;
  Tally lines_;
  DrawingMarks marks_;
};

}  // namespace

bool DrawingMarks::isBlankIn(const Box& part) const {
  if (hasImages) return false;
  const auto isMark = [&](const Box& box) {
    const bool fillsIt =
        box.contains({part.left, part.top}) && box.contains({part.right, part.bottom});
    return !fillsIt && box.left <= part.right && part.left <= box.right && box.top <= part.bottom &&
           part.top <= box.bottom;
  };
  std::size_t marksThere = 0;
  for (const Box& box : shapes) {
    if (isMark(box) && ++marksThere > mostBlank) return false;
  }
  for (const DrawnText& text : texts) {
    if (isMark(text.box) && ++marksThere > mostBlank) return false;
  }
  return true;
}

DrawingMarks marksOf(std::string_view svg, const Box& frame) {
  return MarksReader(svg, frame).read();
}

}  // namespace tern::picture
