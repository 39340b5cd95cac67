#include "tools/tern/HelpText.hpp"

#include <algorithm>

#include "tools/tern/HelpPage.hpp"
#include "tools/tern/Wording.hpp"
#include "tools/tern/Wrapping.hpp"

namespace tern::command {

namespace {

using Kind = HelpPart::Kind;

// Where meanings begin: behind the longest name, or below each where that leaves them no room.
std::size_t columnOf(const HelpPage& page, std::size_t width) {
  std::size_t longest = 0;
  for (const HelpPart& part : page) {
    if (part.kind == Kind::entry) longest = std::max(longest, part.text.size());
  }
  const std::size_t column = longest + 4;
  return column <= width / 2 ? column : 6;
}

std::string entryText(const HelpPart& entry, std::size_t column, std::size_t width) {
  const std::string name = "  " + entry.text;
  const Wrap wrap{.width = width, .first = column, .further = column};
  const std::string meaning = wrapped(entry.meaning, wrap);
  if (name.size() + 2 > column) return name + "\n" + meaning;
  return name + meaning.substr(name.size());
}

std::string codeText(const HelpPart& code, std::size_t width) {
  const std::size_t indent = code.text.find_first_not_of(' ');
  return wrapped(
      code.text.substr(indent),
      {.width = width, .first = indent, .further = indent + 1, .breaks = Breaks::atCommas});
}

class Layout {
 public:
  Layout(const HelpPage& page, const Look& look)
      : look_(look), column_(columnOf(page, look.width)) {}

  std::string textOf(const HelpPart& part) const {
    switch (part.kind) {
      case Kind::usage:
        return wrapped("Usage: " + part.text, {.width = look_.width, .further = 4});
      case Kind::heading:
        return look_.bold(part.text + ":") + "\n";
      case Kind::entry:
        return entryText(part, column_, look_.width);
      case Kind::example:
        return wrapped(part.text,
                       {.width = look_.width, .first = 2, .further = 4, .breaks = Breaks::inShell});
      case Kind::code:
        return codeText(part, look_.width);
      case Kind::paragraph:
        break;
    }
    return wrapped(part.text, {.width = look_.width});
  }

 private:
  const Look& look_;
  std::size_t column_;
};

// Parts of one kind stand close, and so do a heading or a line of prose with the lines below it.
bool isApart(const HelpPart& before, const HelpPart& part) {
  if (part.kind == Kind::heading) return true;
  if (part.kind == Kind::paragraph) return true;
  return before.kind == Kind::entry && part.kind != Kind::entry;
}

std::string laidOut(const HelpPage& page, const Look& look) {
  const Layout layout(page, look);
  std::string text;
  const HelpPart* before = nullptr;
  for (const HelpPart& part : page) {
    if (before != nullptr && isApart(*before, part)) text += "\n";
    text += layout.textOf(part);
    before = &part;
  }
  return text;
}

}  // namespace

std::string generalHelp(const Look& look) { return laidOut(generalPage(), look); }

std::string helpOf(const Command& command, const Look& look) {
  return laidOut(pageOf(command), look);
}

}  // namespace tern::command
