#include "tools/tern/picture/DrawingImage.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/SvgNumbers.hpp"
#include "tools/tern/picture/SvgTags.hpp"

namespace tern::picture {

namespace {

std::string base64(std::string_view bytes) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::string_view three = bytes.substr(i, 3);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      bits = bits << 8U | (k < three.size() ? static_cast<unsigned char>(three[k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k, bits <<= 6U) {
      out += k <= three.size() ? digits[bits >> 18U & 0x3FU] : '=';
    }
  }
  return out;
}

std::optional<Box> boxOf(double left, double top, double width, double height) {
  if (width <= 0 || height <= 0) return std::nullopt;
  return Box{left, top, left + width, top + height};
}

std::optional<Box> viewBoxOf(std::string_view text) {
  std::array<double, 4> numbers{};
  for (double& number : numbers) {
    const auto taken = takeNumber(text);
    if (!taken) return std::nullopt;
    number = *taken;
  }
  return boxOf(numbers[0], numbers[1], numbers[2], numbers[3]);
}

// A length in units of the drawing; 0 for one that depends on where the drawing is shown.
double lengthOf(std::string_view text) {
  constexpr std::pair<std::string_view, double> units[] = {
      {"", 1},    {"px", 1},         {"pt", 96.0 / 72}, {"pc", 16},
      {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}};
  const double number = takeNumber(text).value_or(0);
  text = text.substr(0, text.find_last_not_of(svgBlanks) + 1);
  for (const auto& [unit, length] : units) {
    if (text == unit) return number * length;
  }
  return 0;
}

// Reads a drawing up to the end of its first tag.
class FirstTag {
 public:
  explicit FirstTag(std::string_view svg) : rest_(svg) {}

  // False for what does not begin as an SVG does.
  bool read() {
    take("\xEF\xBB\xBF");
    return skipToTag() && take("<svg") && takeAttributes(rest_, attributes_);
  }

  std::optional<Box> frame() const {
    const std::optional<Box> viewBox = viewBoxOf(valueOf("viewBox"));
    return viewBox ? viewBox : boxOf(0, 0, lengthOf(valueOf("width")), lengthOf(valueOf("height")));
  }

  // The whole drawing, with the first tag written anew.
  std::string documentWith(const Box& frame) const {
    std::string out(documentType_);
    out += "<svg";
    for (const SvgAttribute& attribute : attributes_) {
      if (!isReplaced(attribute.name)) out.append(" ").append(attribute.written);
    }
    addUnlessThere(out, "xmlns", "http://www.w3.org/2000/svg");
    addUnlessThere(out, "xmlns:xlink", "http://www.w3.org/1999/xlink");
    out += " viewBox=\"" + significant(frame.left) + " " + significant(frame.top) + " " +
           significant(frame.width()) + " " + significant(frame.height()) +
           "\" preserveAspectRatio=\"none\"";
    return out.append(rest_);
  }

 private:
  static bool isReplaced(std::string_view name) {
    return name == "viewBox" || name == "preserveAspectRatio" || name == "width" ||
           name == "height" || name == "x" || name == "y";
  }

  // Empty when there is none of that name.
  std::string_view valueOf(std::string_view name) const {
    for (const SvgAttribute& attribute : attributes_) {
      if (attribute.name == name) return attribute.value;
    }
    return {};
  }

  void addUnlessThere(std::string& out, std::string_view name, std::string_view value) const {
    if (valueOf(name).empty())
      out.append(" ").append(name).append("=\"").append(value).append("\"");
  }

  bool take(std::string_view mark) {
    if (!rest_.starts_with(mark)) return false;
    rest_.remove_prefix(mark.size());
    return true;
  }

  bool skipPast(std::string_view mark) {
    const std::size_t found = rest_.find(mark);
    if (found == std::string_view::npos) return false;
    rest_.remove_prefix(found + mark.size());
    return true;
  }

  // A text comes to us as UTF-8, so an XML declaration that names another encoding would be wrong.
  bool skipToTag() {
    while (true) {
      rest_.remove_prefix(std::min(rest_.find_first_not_of(svgBlanks), rest_.size()));
      if (take("<!--")) {
        if (!skipPast("-->")) return false;
      } else if (take("<?")) {
        if (!skipPast("?>")) return false;
      } else if (!rest_.starts_with("<!DOCTYPE")) {
        return true;
      } else if (!takeDocumentType()) {
        return false;
      }
    }
  }

  // It is kept: the drawing may use entities that it declares.
  bool takeDocumentType() {
    const std::string_view from = rest_;
    const std::size_t stop = rest_.find_first_of("[>");
    if (stop == std::string_view::npos) return false;
    if (rest_[stop] == '[' && !skipPast("]")) return false;
    if (!skipPast(">")) return false;
    documentType_ = from.substr(0, from.size() - rest_.size());
    return true;
  }

  std::string_view rest_;
  std::string_view documentType_;
  std::vector<SvgAttribute> attributes_;
};

}  // namespace

DrawingImage imageOf(std::string_view svg, const std::optional<Box>& stated) {
  if (svg.size() > mostDrawingBytes) return {{}, {}, "it is too large"};
  FirstTag tag(svg);
  if (!tag.read()) return {{}, {}, "it is not an SVG"};
  const std::optional<Box> own = tag.frame();
  if (!own && !stated) return {{}, {}, "it says no size"};
  const Box frame = own ? *own : *stated;
  return {"data:image/svg+xml;base64," + base64(tag.documentWith(frame)), frame, {}};
}

}  // namespace tern::picture
