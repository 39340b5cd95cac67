#include "tools/tern/picture/SvgTags.hpp"

#include <algorithm>

namespace tern::picture {

namespace {

void skipBlanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(svgBlanks), rest.size()));
}

bool isTagEnd(std::string_view rest) { return rest.starts_with('>') || rest.starts_with("/>"); }

std::string_view withoutPrefix(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == nowhere ? name : name.substr(colon + 1);
}

}  // namespace

std::optional<SvgAttribute> takeAttribute(std::string_view& rest) {
  const std::string_view from = rest;
  const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n=<>/\"'"));
  rest.remove_prefix(name.size());
  skipBlanks(rest);
  if (name.empty() || !rest.starts_with('=')) return std::nullopt;
  rest.remove_prefix(1);
  skipBlanks(rest);
  if (!rest.starts_with('"') && !rest.starts_with('\'')) return std::nullopt;
  const std::size_t end = rest.find(rest.front(), 1);
  if (end == nowhere) return std::nullopt;
  const std::string_view value = rest.substr(1, end - 1);
  rest.remove_prefix(end + 1);
  return SvgAttribute{name, value, from.substr(0, from.size() - rest.size())};
}

bool takeAttributes(std::string_view& rest, std::vector<SvgAttribute>& attributes) {
  while (!isTagEnd(rest)) {
    if (rest.empty() || svgBlanks.find(rest.front()) == nowhere) return false;
    skipBlanks(rest);
    if (isTagEnd(rest)) return true;
    const auto attribute = takeAttribute(rest);
    if (!attribute) return false;
    attributes.push_back(*attribute);
  }
  return true;
}

std::string_view SvgTags::valueOf(std::string_view attribute) const {
  for (const SvgAttribute& each : attributes_) {
    if (each.name == attribute) return each.value;
  }
  return {};
}

bool SvgTags::skipPast(std::string_view mark) {
  const std::size_t found = rest_.find(mark);
  if (found == nowhere) return false;
  rest_.remove_prefix(found + mark.size());
  return true;
}

bool SvgTags::next() {
  while (!rest_.empty()) {
    if (!rest_.starts_with('<')) {
      kind_ = Kind::text;
      text_ = rest_.substr(0, rest_.find('<'));
      rest_.remove_prefix(text_.size());
      return true;
    }
    if (rest_.starts_with("<![CDATA[")) {
      rest_.remove_prefix(9);
      kind_ = Kind::text;
      text_ = rest_.substr(0, rest_.find("]]>"));
      return skipPast("]]>");
    }
    if (!rest_.starts_with("<!") && !rest_.starts_with("<?")) return readTag();
    if (!readSpecial()) return false;
  }
  return false;
}

// What stands between tags and is none: a comment, an instruction, a document type.
bool SvgTags::readSpecial() {
  if (rest_.starts_with("<!--")) return skipPast("-->");
  if (rest_.starts_with("<?")) return skipPast("?>");
  const std::size_t stop = rest_.find_first_of("[>");
  if (stop == nowhere || (rest_[stop] == '[' && !skipPast("]"))) return false;
  return skipPast(">");
}

bool SvgTags::readTag() {
  rest_.remove_prefix(1);
  kind_ = rest_.starts_with('/') ? Kind::closing : Kind::opening;
  if (kind_ == Kind::closing) rest_.remove_prefix(1);
  const std::string_view name = rest_.substr(0, rest_.find_first_of(" \t\r\n<>/"));
  rest_.remove_prefix(name.size());
  name_ = withoutPrefix(name);
  attributes_.clear();
  if (name_.empty() || !takeAttributes(rest_, attributes_)) return false;
  isEmpty_ = rest_.starts_with('/');
  rest_.remove_prefix(isEmpty_ ? 2 : 1);
  return true;
}

}  // namespace tern::picture
