#include "tools/tern/ManualPage.hpp"

#include <array>
#include <cstdint>
#include <iomanip>
#include <span>
#include <sstream>
#include <utility>
#include <vector>

#include "TernCoreKit/Version.hpp"
#include "TernCoreKit/platform/Utf8.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/HelpPage.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Wrapping.hpp"

namespace tern::command {

namespace {

using Kind = HelpPart::Kind;

// The letter as itself, where roff would have another meaning for it.
std::string literal(char letter) {
  switch (letter) {
    case '\\':
      return "\\e";
    case '-':
      return "\\-";
    case '\'':
      return "\\(aq";
    case '"':
      return "\\(dq";
    case '`':
      return "\\(ga";
    case '^':
      return "\\(ha";
    case '~':
      return "\\(ti";
    default:
      return {letter};
  }
}

// A letter beyond ASCII by its number, of at least four digits.
std::string numbered(char32_t code) {
  std::ostringstream name;
  name << "\\[u" << std::hex << std::uppercase << std::setw(4) << std::setfill('0')
       << static_cast<std::uint32_t>(code) << ']';
  return std::move(name).str();
}

// A line that begins with a point would be a request, so no word begins with one.
std::string literal(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const Utf8Character letter = firstUtf8Character(text);
    const bool isFirst = escaped.empty() || escaped.back() == ' ';
    if (letter.code == '.' && isFirst) escaped += "\\&";
    escaped += letter.code < 0x80 ? literal(static_cast<char>(letter.code)) : numbered(letter.code);
    text.remove_prefix(letter.size);
  }
  return escaped;
}

std::string line(std::string_view text) { return literal(text) + "\n"; }
std::string prose(std::string_view text) { return wrapped(literal(text), {}); }

std::string section(std::string_view title) {
  std::string capitals(title);
  for (char& letter : capitals) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  }
  return ".SH \"" + capitals + "\"\n";
}

// "--from W": the name in bold, what stands for its value in italics.
std::string entry(const HelpPart& part) {
  const std::string_view text = part.text;
  const std::size_t space = text.starts_with("--") ? text.find(' ') : text.npos;
  std::string name = "\\fB" + literal(text.substr(0, space)) + "\\fR";
  if (space != text.npos) name += " \\fI" + literal(text.substr(space + 1)) + "\\fR";
  return ".TP\n" + name + "\n" + prose(part.meaning);
}

std::string entries(std::span<const Option> options) {
  std::string text;
  for (const Option& option : options) text += entry(entryOf(option));
  return text;
}

bool isVerbatim(const HelpPart& part) {
  return part.kind == Kind::example || part.kind == Kind::code;
}

// Lines that stand as they are form one block. A heading begins a section, or a paragraph of one.
std::string body(const HelpPage& page, bool hasSections) {
  std::string text;
  bool isBlock = false;
  for (const HelpPart& part : page) {
    if (isVerbatim(part) && !isBlock) text += text.ends_with("\"\n") ? ".EX\n" : ".PP\n.EX\n";
    if (isBlock && !isVerbatim(part)) text += ".EE\n";
    isBlock = isVerbatim(part);
    if (isBlock) text += line(part.text);
    if (part.kind == Kind::heading) {
      text += hasSections ? section(part.text) : ".PP\n" + prose(part.text + ":");
    }
    const bool isFirst = text.empty() && hasSections;
    if (part.kind == Kind::paragraph) text += (isFirst ? "" : ".PP\n") + prose(part.text);
    if (part.kind == Kind::entry) text += entry(part);
  }
  return isBlock ? text + ".EE\n" : text;
}

std::string partOf(const Command& command) {
  std::string text = ".SS \"" + literal(usageOf(command)) + "\"\n" + prose(command.summary);
  const Option& operand = command.operand;
  if (!operand.name.empty()) {
    text += entry({Kind::entry, std::string(operand.name), std::string(operand.meaning)});
  }
  return text + entries(command.options) + body(partsOf(command.help), false);
}

}  // namespace

std::string manualPage() {
  std::string page = ".TH TERN 1 \"\" \"TernCoreKit " + std::string(version()) + "\"\n" +
                     section("Name") + "tern \\- indoor maps and wayfinding\n" +
                     section("Synopsis") + "\\fBtern\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR]\n" +
                     section("Description") + body(partsOf(generalText()), true) +
                     section("Commands");
  for (const Command* command : allCommands()) page += partOf(*command);
  page += section("Options of every command") +
          entry({Kind::entry, "-h, --help", "print the help of the command"}) +
          entries(std::array{jsonOption});
  page += section("Options of commands that load data") + entries(sourceOptions) +
          entries(venueOptions);
  return page + section("Options beside \\-\\-host") + entries(hostOptions);
}

}  // namespace tern::command
