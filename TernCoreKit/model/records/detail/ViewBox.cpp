#include "TernCoreKit/model/records/detail/ViewBox.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::inline v5::detail {

namespace {

std::string_view viewBoxText(std::string_view svg) {
  constexpr std::string_view marker = "viewBox=\"";
  const std::size_t start = svg.find(marker);
  if (start == std::string_view::npos) return {};
  const std::string_view rest = svg.substr(start + marker.size());
  return rest.substr(0, rest.find('"'));
}

// A number's text as from_chars reads it, which knows no plus sign; empty for "inf" and "nan".
std::string_view readableNumber(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  constexpr std::string_view numberStarts = ".0123456789";
  if (first >= text.size() || numberStarts.find(text[first]) == std::string_view::npos) return {};
  return text;
}

}  // namespace

Value leadingNumber(std::string_view text) {
  text = readableNumber(text);
  const char* end = text.data() + text.size();
  std::int64_t integer = 0;
  const auto whole = std::from_chars(text.data(), end, integer);
  if (whole.ec == std::errc() && whole.ptr == end) return integer;
  double number = 0;
  readDouble(text.data(), end, number);
  return number;
}

std::optional<DrawingSize> sizeOfViewBox(std::string_view svg) {
  std::string_view box = viewBoxText(svg);
  if (std::count(box.begin(), box.end(), ' ') != 3) return std::nullopt;
  std::array<std::string_view, 4> parts;
  for (std::string_view& part : parts) {
    part = box.substr(0, box.find(' '));
    box.remove_prefix(std::min(part.size() + 1, box.size()));
  }
  return DrawingSize{leadingNumber(parts[2]), leadingNumber(parts[3])};
}

}  // namespace tern::detail
