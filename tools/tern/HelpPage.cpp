#include "tools/tern/HelpPage.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/SharedOptions.hpp"

namespace tern::command {

namespace {

using Kind = HelpPart::Kind;

// Adds the lines of a text one by one.
class PageReader {
 public:
  void add(std::string_view line) {
    if (line.empty()) {
      block_ = Kind::paragraph;
    } else if (line == "Examples:" || line == "Exit status:") {
      page_.push_back({Kind::heading, std::string(line.substr(0, line.size() - 1))});
      block_ = line == "Examples:" ? Kind::example : Kind::entry;
    } else if (line.starts_with(' ')) {
      addIndented(line);
    } else {
      addProse(line);
    }
    isGoingOn_ = !line.empty();
  }
  HelpPage take() { return std::move(page_); }

 private:
  void addIndented(std::string_view line) {
    const std::string_view words = line.substr(line.find_first_not_of(' '));
    if (block_ == Kind::example) {
      addExample(words);
    } else if (block_ == Kind::entry) {
      const std::size_t gap = words.find("  ");
      page_.push_back(
          {Kind::entry, std::string(words.substr(0, gap)), std::string(words.substr(gap + 2))});
    } else {
      page_.push_back({Kind::code, std::string(line)});
    }
  }

  // A backslash at the end joins the next line.
  void addExample(std::string_view words) {
    std::string& before = page_.back().text;
    if (before.ends_with('\\')) {
      before.replace(before.size() - 1, 1, words);
    } else {
      page_.push_back({Kind::example, std::string(words)});
    }
  }

  void addProse(std::string_view line) {
    const bool isMore = isGoingOn_ && page_.back().kind == Kind::paragraph;
    if (isMore) {
      page_.back().text.append(" ").append(line);
    } else {
      page_.push_back({Kind::paragraph, std::string(line)});
    }
  }

  HelpPage page_;
  // What indented lines are until an empty one comes.
  Kind block_ = Kind::paragraph;
  // Whether no empty line stands before the next one.
  bool isGoingOn_ = false;
};

void append(HelpPage& page, HelpPage more) {
  page.insert(page.end(), std::make_move_iterator(more.begin()),
              std::make_move_iterator(more.end()));
}

}  // namespace

HelpPage partsOf(std::string_view text) {
  PageReader reader;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1);
    reader.add(text.substr(0, text[end] == '\n' ? end : end + 1));
    text.remove_prefix(end + 1);
  }
  return reader.take();
}

std::string_view generalText() {
  return R"(Each command says more with --help, e.g. tern route --help.

Wherever --data stands, --host with --customer and --client-id may stand too:
the venues then come from a mapping service. Its answers are kept below the
user's data folder, or in --cache DIR, and are what there is when the service
cannot be reached. --no-reload asks for nothing that is kept.

A venue folder holds the documents of a mapping service: full.json,
venue/1/full.json, venue/1/building/1/full.json and so on. With --json every
command that answers prints one JSON object.

TERN_CLIENT_SECRET in the environment holds the secret of a mapping service.
NO_COLOR, set to anything, keeps colours out of a terminal, and COLUMNS says how
wide one is that does not say it itself.

Examples:
  tern generate --out mall
  tern info --data mall
  tern route --data mall --from 22001 --to 14016 --picture route.html
  echo '{"op":"places","text":"books"}' | tern batch --data mall
  tern serve --data mall --port 8080
  TERN_CLIENT_SECRET=local tern info --host http://127.0.0.1:8080 \
      --customer 1 --client-id local

Exit status:
  0  answered
  1  answered, and there is nothing to be found
  2  the words of the call are wrong
  3  the data could not be loaded
  4  the answer could not be written
)";
}

HelpPart entryOf(const Option& option) {
  HelpPart entry{Kind::entry, std::string(option.name), std::string(option.meaning)};
  if (!option.isFlag()) entry.text.append(" ").append(option.label);
  const std::string_view fallback = option.need.fallback;
  if (!fallback.empty()) entry.meaning.append(" (default ").append(fallback).append(")");
  return entry;
}

std::string usageOf(const Command& command) {
  std::string usage = "tern " + std::string(command.name);
  const Option& operand = command.operand;
  if (!operand.name.empty()) {
    const bool isRequired = operand.need.isRequired;
    usage.append(isRequired ? " " : " [").append(operand.name).append(isRequired ? "" : "]");
  }
  for (const Option& option : command.options) {
    if (option.need.isRequired)
      usage.append(" ").append(option.name).append(" ").append(option.label);
  }
  return usage + " [OPTIONS]";
}

HelpPage generalPage() {
  HelpPage page{{Kind::paragraph, "Indoor maps and wayfinding"},
                {Kind::usage, "tern COMMAND [OPTIONS]"},
                {Kind::heading, "Commands"}};
  for (const Command* command : allCommands()) {
    page.push_back({Kind::entry, std::string(command->name), std::string(command->summary)});
  }
  append(page, partsOf(generalText()));
  return page;
}

HelpPage pageOf(const Command& command) {
  HelpPage page{{Kind::paragraph, std::string(command.summary)},
                {Kind::usage, usageOf(command)},
                {Kind::heading, "Options"}};
  const Option& operand = command.operand;
  if (!operand.name.empty()) {
    page.push_back({Kind::entry, std::string(operand.name), std::string(operand.meaning)});
  }
  page.push_back({Kind::entry, "-h, --help", "print this help"});
  for (const Option& option : optionsOf(command)) {
    if (option.name == hostOptions.front().name && loadsData(command)) {
      page.push_back({Kind::heading, "Beside --host"});
    }
    page.push_back(entryOf(option));
  }
  append(page, partsOf(command.help));
  return page;
}

}  // namespace tern::command
