#include "tests/support/ScannedMarkup.hpp"

#include <algorithm>
#include <cctype>
#include <optional>
#include <set>

namespace tern::test {

namespace {

constexpr auto npos = std::string_view::npos;

bool areReferencesWritten(std::string_view text) {
  for (std::size_t at = text.find('&'); at != npos; at = text.find('&', at + 1)) {
    const std::size_t stop = text.find(';', at);
    if (stop == npos) return false;
    const std::string_view name = text.substr(at + 1, stop - at - 1);
    const bool isNumber = name.size() > 1 && name[0] == '#' &&
                          std::all_of(name.begin() + 1, name.end(),
                                      [](unsigned char c) { return std::isdigit(c) != 0; });
    const std::set<std::string_view> known{"lt", "gt", "amp", "quot", "apos"};
    if (!isNumber && known.count(name) == 0) return false;
  }
  return text.find('<') == npos;
}

// How many bytes the character at the front takes; none when it is not UTF-8 or XML forbids it.
std::optional<std::size_t> characterSize(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) {
    const bool isAllowed = byte(0) >= 0x20 || std::string_view("\t\n\r").find(text[0]) != npos;
    return isAllowed ? std::optional<std::size_t>(1) : std::nullopt;
  }
  const std::size_t size = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
  if (byte(0) < 0xC2 || byte(0) > 0xF4 || text.size() < size) return std::nullopt;
  for (std::size_t i = 1; i < size; ++i) {
    if (byte(i) < 0x80 || byte(i) > 0xBF) return std::nullopt;
  }
  const std::string_view first = text.substr(0, size);
  const bool isTooLong = (byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xF0 && byte(1) < 0x90);
  const bool isTooLarge = byte(0) == 0xF4 && byte(1) > 0x8F;
  const bool isSurrogate = byte(0) == 0xED && byte(1) > 0x9F;
  if (isTooLong || isTooLarge || isSurrogate) return std::nullopt;
  if (first == "\xEF\xBF\xBE" || first == "\xEF\xBF\xBF") return std::nullopt;
  return size;
}

bool areCharactersAllowed(std::string_view text) {
  while (!text.empty()) {
    const auto size = characterSize(text);
    if (!size) return false;
    text.remove_prefix(*size);
  }
  return true;
}

class Scanner {
 public:
  explicit Scanner(std::string_view markup) : rest_(markup) {}

  ScannedMarkup scan() {
    if (!areCharactersAllowed(rest_)) fail("a character that XML does not allow");
    if (rest_.substr(0, 5) == "<?xml") rest_.remove_prefix(rest_.find("?>") + 2);
    if (rest_.substr(0, 15) == "<!DOCTYPE html>") rest_.remove_prefix(15);
    while (scanned_.problem.empty() && !rest_.empty()) step();
    if (!open_.empty()) fail("not closed: " + open_.back());
    if (scanned_.elements.empty()) fail("no element");
    return std::move(scanned_);
  }

 private:
  void fail(const std::string& problem) {
    if (scanned_.problem.empty()) scanned_.problem = problem;
  }

  void step() {
    const std::size_t tag = std::min(rest_.find('<'), rest_.size());
    const std::string_view text = rest_.substr(0, tag);
    if (!areReferencesWritten(text)) fail("a reference: " + std::string(text));
    if (open_.empty() && text.find_first_not_of(" \n") != npos) fail("text outside");
    scanned_.text += text;
    rest_.remove_prefix(tag);
    if (!rest_.empty()) scanTag();
  }

  void scanTag() {
    rest_.remove_prefix(1);
    if (!rest_.empty() && rest_[0] == '/') return scanEnd();
    const std::string name = takeName();
    if (name.empty()) return fail("a tag without a name");
    if (open_.empty() && !scanned_.elements.empty()) fail("a second root: " + name);
    scanned_.elements.push_back(name);
    std::set<std::string> seen;
    while (scanned_.problem.empty() && !rest_.empty() && rest_[0] == ' ') {
      scanAttribute(seen);
    }
    if (rest_.substr(0, 2) == "/>") {
      rest_.remove_prefix(2);
    } else if (!rest_.empty() && rest_[0] == '>') {
      rest_.remove_prefix(1);
      open_.push_back(name);
    } else {
      fail("a tag that does not end: " + name);
    }
  }

  void scanEnd() {
    rest_.remove_prefix(1);
    const std::string name = takeName();
    if (open_.empty() || open_.back() != name || rest_.empty() || rest_[0] != '>') {
      return fail("a wrong end: " + name);
    }
    open_.pop_back();
    rest_.remove_prefix(1);
  }

  std::string takeName() {
    const auto end = std::find_if(rest_.begin(), rest_.end(), [](unsigned char c) {
      return std::isalnum(c) == 0 && c != '-' && c != ':' && c != '_';
    });
    std::string name(rest_.begin(), end);
    rest_.remove_prefix(name.size());
    return name;
  }

  void scanAttribute(std::set<std::string>& seen) {
    rest_.remove_prefix(1);
    const std::string name = takeName();
    if (name.empty() || !seen.insert(name).second) return fail("an attribute: " + name);
    if (rest_.substr(0, 2) != "=\"") return fail("an attribute without a value: " + name);
    rest_.remove_prefix(2);
    const std::size_t quote = rest_.find('"');
    if (quote == npos) return fail("a value that does not end: " + name);
    const std::string_view value = rest_.substr(0, quote);
    if (!areReferencesWritten(value)) fail("a value: " + std::string(value));
    scanned_.attributes.emplace_back(name, value);
    rest_.remove_prefix(quote + 1);
  }

  std::string_view rest_;
  ScannedMarkup scanned_;
  std::vector<std::string> open_;
};

// An image that the file holds itself, in letters that mean nothing in markup.
bool isEnclosedImage(std::string_view value) {
  constexpr std::string_view start = "data:image/svg+xml;base64,";
  return value.rfind(start, 0) == 0 &&
         std::all_of(value.begin() + start.size(), value.end(), [](unsigned char c) {
           return std::isalnum(c) != 0 || c == '+' || c == '/' || c == '=';
         });
}

std::string idReferredTo(const std::string& name, const std::string& value) {
  if (value.rfind("url(#", 0) == 0) return value.substr(5, value.size() - 6);
  return name == "href" && !value.empty() ? value.substr(1) : std::string();
}

}  // namespace

std::vector<std::string> ScannedMarkup::valuesOf(std::string_view attribute) const {
  std::vector<std::string> values;
  for (const auto& [name, value] : attributes) {
    if (name == attribute) values.push_back(value);
  }
  return values;
}

bool ScannedMarkup::has(std::string_view element) const {
  return std::find(elements.begin(), elements.end(), element) != elements.end();
}

ScannedMarkup scanMarkup(std::string_view markup) { return Scanner(markup).scan(); }

std::string reachOf(const ScannedMarkup& scanned) {
  const std::set<std::string> allowed{
      "body", "circle", "clipPath",      "defs",   "desc",  "div",    "g",    "h1",
      "h2",   "h3",     "feColorMatrix", "filter", "head",  "header", "html", "image",
      "li",   "main",   "meta",          "ol",     "p",     "path",   "rect", "section",
      "span", "style",  "svg",           "text",   "title", "use"};
  for (const std::string& element : scanned.elements) {
    if (allowed.count(element) == 0) return "element " + element;
  }
  std::set<std::string> ids;
  for (const std::string& id : scanned.valuesOf("id")) {
    if (!ids.insert(id).second) return "id twice: " + id;
  }
  for (const auto& [name, value] : scanned.attributes) {
    if (name == "href" && isEnclosedImage(value)) continue;
    const bool isHandler = name.rfind("on", 0) == 0;
    const bool isSource = name == "src" || name == "style" || name.find(':') != std::string::npos;
    const bool isOutside = value.find("//") != std::string::npos && name != "xmlns";
    const bool isOddUrl = value.find("url(") != std::string::npos && value.rfind("url(#", 0) != 0;
    const bool isOddLink = name == "href" && (value.empty() || value[0] != '#');
    const std::string id = idReferredTo(name, value);
    const bool isDangling = !id.empty() && ids.count(id) == 0;
    if (isHandler || isSource || isOutside || isOddUrl || isOddLink || isDangling) {
      return name + "=" + value;
    }
  }
  return {};
}

}  // namespace tern::test
