// What a page of help says, before it is laid out for a terminal or as a page of the manual.
//
// Threads: any. Fails: never.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/tern/Option.hpp"

namespace tern::command {

struct Command;

struct HelpPart {
  enum class Kind {
    usage,      // "tern route --from W --to W [OPTIONS]"
    heading,    // "Options", without a colon
    paragraph,  // prose
    entry,      // an option or command, with its meaning
    example,    // a line for a shell
    code,       // a line as it stands, with its indentation
  };
  Kind kind;
  std::string text;
  // That of an entry.
  std::string meaning = {};
};

using HelpPage = std::vector<HelpPart>;

// That of the whole program.
HelpPage generalPage();
HelpPage pageOf(const Command& command);

// Of that page what needs no list of options or commands: what a text says that is written like
// this:
//
//   Examples:
//     tern generate --out mall
//
//   Exit status:
//     0  answered
//
//   Prose, whose lines are one paragraph
//   up to an empty line.
//     {"indented":"lines below it stand as they are"}
HelpPage partsOf(std::string_view text);
// What stands behind the lists of the whole program's page.
std::string_view generalText();

std::string usageOf(const Command& command);
HelpPart entryOf(const Option& option);

}  // namespace tern::command
