// The command that prints the page of the manual.
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/ManualPage.hpp"

namespace tern::command {

namespace {

Outcome printManual(const Arguments& call, Console&) {
  const std::string page = manualPage();
  return Answer{.text = call.json ? jsonLine(Value::map({{"manual", page}})) : page, .remark = {}};
}

}  // namespace

const Command manCommand{.name = "man",
                         .summary = "print the page of the manual",
                         .about = printManual,
                         .help = R"(Examples:
  tern man
  tern man | tee tern.1

An installed tern has this page where man looks for it.
)"};

}  // namespace tern::command
