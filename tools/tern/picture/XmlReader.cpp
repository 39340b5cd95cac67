#include "tools/tern/picture/XmlReader.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include "tools/tern/picture/Markup.hpp"

namespace tern::picture {

namespace {

constexpr std::string_view space = " \t\r\n";

bool isNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
         (c & 0x80) != 0;
}

bool isNamePart(char c) { return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

}  // namespace

XmlReader::XmlReader(std::string_view text) : text_(text) {
  if (looksAt("\xEF\xBB\xBF")) at_ = 3;
}

std::string XmlReader::problem() const {
  const auto end = text_.begin() + static_cast<std::ptrdiff_t>(std::min(at_, text_.size()));
  return std::string(problem_) + " on line " +
         std::to_string(1 + std::count(text_.begin(), end, '\n'));
}

XmlReader::Token XmlReader::fail(std::string_view problem) {
  if (problem_.empty()) problem_ = problem;
  return Token::error;
}

bool XmlReader::skipPast(std::string_view mark) {
  const std::size_t found = text_.find(mark, at_);
  if (found == std::string_view::npos) return false;
  at_ = found + mark.size();
  return true;
}

void XmlReader::skipSpace() { at_ = std::min(text_.find_first_not_of(space, at_), text_.size()); }

std::string_view XmlReader::takeName() {
  const std::size_t from = at_;
  if (atEnd() || !isNameStart(text_[at_])) return {};
  while (!atEnd() && isNamePart(text_[at_])) ++at_;
  return text_.substr(from, at_ - from);
}

XmlReader::Token XmlReader::next() {
  if (!problem_.empty()) return Token::error;
  if (std::exchange(endPending_, false)) return readEnd();
  while (true) {
    if (open_.empty()) skipSpace();
    if (atEnd()) break;
    if (text_[at_] != '<') return readText();
    if (looksAt("<!--")) {
      at_ += 4;
      if (!skipPast("-->")) return fail("a comment does not end");
    } else if (looksAt("<?")) {
      if (!skipPast("?>")) return fail("a processing instruction does not end");
    } else if (looksAt("<![CDATA[")) {
      return readCData();
    } else if (looksAt("<!")) {
      if (!skipDocumentType()) return fail("a declaration that is not read here");
    } else {
      return looksAt("</") ? readStop() : readStart();
    }
  }
  if (!open_.empty()) return fail("an element is not closed");
  return rootSeen_ ? Token::end : fail("no element");
}

bool XmlReader::skipDocumentType() {
  if (rootSeen_ || !looksAt("<!DOCTYPE")) return false;
  const std::size_t stop = text_.find_first_of("[>", at_);
  if (stop == std::string_view::npos || text_[stop] == '[') return false;
  at_ = stop + 1;
  return true;
}

XmlReader::Token XmlReader::readEnd() {
  name_ = open_.back();
  open_.pop_back();
  return Token::endElement;
}

XmlReader::Token XmlReader::readText() {
  if (open_.empty()) return fail("text outside the outermost element");
  content_.clear();
  while (!atEnd() && text_[at_] != '<') {
    const std::size_t stop = std::min(text_.find_first_of("<&", at_), text_.size());
    content_ += text_.substr(at_, stop - at_);
    at_ = stop;
    if (looksAt("&") && !appendReference(content_)) return fail("an unknown reference");
  }
  return Token::text;
}

XmlReader::Token XmlReader::readCData() {
  if (open_.empty()) return fail("text outside the outermost element");
  const std::size_t from = at_ + 9;
  if (!skipPast("]]>")) return fail("a CDATA section does not end");
  content_ = text_.substr(from, at_ - 3 - from);
  return Token::text;
}

XmlReader::Token XmlReader::readStart() {
  ++at_;
  name_ = takeName();
  attributes_.clear();
  if (name_.empty()) return fail("a < that begins no element");
  if (open_.empty() && std::exchange(rootSeen_, true)) return fail("a second outermost element");
  if (open_.size() == deepest) return fail("elements nest too deeply");
  for (skipSpace(); !atEnd() && isNameStart(text_[at_]); skipSpace()) {
    if (!readAttribute()) return fail("an attribute that cannot be read");
  }
  endPending_ = looksAt("/>");
  if (!endPending_ && !looksAt(">")) return fail("an element that cannot be read");
  at_ += endPending_ ? 2 : 1;
  open_.push_back(name_);
  return Token::startElement;
}

XmlReader::Token XmlReader::readStop() {
  at_ += 2;
  const std::string_view stopped = takeName();
  skipSpace();
  if (open_.empty() || open_.back() != stopped || !looksAt(">"))
    return fail("an end without a start");
  ++at_;
  return readEnd();
}

bool XmlReader::readAttribute() {
  if (attributes_.size() == mostAttributes) return false;
  XmlAttribute attribute{takeName(), {}};
  for (const XmlAttribute& other : attributes_) {
    if (other.name == attribute.name) return false;
  }
  skipSpace();
  if (!looksAt("=")) return false;
  ++at_;
  skipSpace();
  if (!looksAt("\"") && !looksAt("'")) return false;
  const char quote = text_[at_++];
  while (!atEnd() && text_[at_] != quote) {
    const char marks[] = {quote, '&', '<'};
    const std::size_t stop =
        std::min(text_.find_first_of(std::string_view(marks, 3), at_), text_.size());
    attribute.value += text_.substr(at_, stop - at_);
    at_ = stop;
    if (looksAt("<") || (looksAt("&") && !appendReference(attribute.value))) return false;
  }
  if (atEnd()) return false;
  ++at_;
  attributes_.push_back(std::move(attribute));
  return true;
}

bool XmlReader::appendReference(std::string& to) {
  // The longest reference that means anything is a code point in decimal with some leading zeros.
  const std::size_t stop = rest().substr(0, 16).find(';');
  if (stop == std::string_view::npos) return false;
  std::string_view name = rest().substr(1, stop - 1);
  at_ += stop + 1;
  constexpr std::pair<std::string_view, char> named[] = {
      {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
  for (const auto& [known, character] : named) {
    if (name != known) continue;
    to += character;
    return true;
  }
  if (name.empty() || name[0] != '#') return false;
  const bool hex = name.size() > 1 && name[1] == 'x';
  name.remove_prefix(hex ? 2 : 1);
  std::uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, hex ? 16 : 10);
  if (error != std::errc() || end != name.data() + name.size()) return false;
  return appendUtf8(to, code);
}

}  // namespace tern::picture
