// Reads a drawing tag by tag, as far as that can be done without understanding it: entities stay as
// they are written, names lose their prefix.
//
// Ownership: borrows the text. Threads: a plain value. Fails: never; what is not well-formed ends
// the reading.
//
//   SvgTags tags(svg);
//   while (tags.next()) {
//     if (tags.kind() == SvgTags::Kind::opening && tags.name() == "rect") ...tags.valueOf("fill")
//   }
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace tern::picture {

struct SvgAttribute {
  std::string_view name;
  std::string_view value;
  // Both, with the quotes.
  std::string_view written;
};

// What a search in a text gives that finds nothing.
inline constexpr auto nowhere = std::string_view::npos;
inline constexpr std::string_view svgBlanks = " \t\r\n";

// Takes the attribute that stands in front; none when there is none.
std::optional<SvgAttribute> takeAttribute(std::string_view& rest);

// Takes all that stands before the end of a tag, with the blanks; false when something else does.
bool takeAttributes(std::string_view& rest, std::vector<SvgAttribute>& attributes);

class SvgTags {
 public:
  enum class Kind { opening, closing, text };

  explicit SvgTags(std::string_view svg) : rest_(svg) {}

  // Goes on to the next tag or text; false behind the last.
  bool next();

  Kind kind() const { return kind_; }
  // Of a tag.
  std::string_view name() const { return name_; }
  // Whether an opening tag closes its element, too.
  bool isEmpty() const { return isEmpty_; }
  // Of an opening tag; empty when there is none of that name.
  std::string_view valueOf(std::string_view attribute) const;
  std::string_view text() const { return text_; }

 private:
  bool readTag();
  bool readSpecial();
  bool skipPast(std::string_view mark);

  std::string_view rest_;
  Kind kind_ = Kind::text;
  std::string_view name_;
  std::string_view text_;
  bool isEmpty_ = false;
  std::vector<SvgAttribute> attributes_;
};

}  // namespace tern::picture
