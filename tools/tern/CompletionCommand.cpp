// The command that has a shell complete the words of all commands.
#include <string>
#include <string_view>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Completion.hpp"

namespace tern::command {

namespace {

constexpr std::string_view shells = "bash zsh fish";

std::string scriptFor(std::string_view shell) {
  if (shell == "bash") return bashCompletion();
  return shell == "zsh" ? zshCompletion() : fishCompletion();
}

Outcome printScript(const Arguments& call, Console&) {
  const std::string script = scriptFor(call.request["shell"].text());
  return Answer{.text = call.json ? jsonLine(Value::map({{"script", script}})) : script,
                .remark = {}};
}

}  // namespace

const Command completionCommand{
    .name = "completion",
    .summary = "print a script that completes words in a shell",
    .operand = {"SHELL", "SHELL", "the shell: bash, zsh or fish", readOneOf<shells>, required,
                "shell", Naming::none, shells},
    .about = printScript,
    .help = R"(Examples:
  tern completion bash
  tern completion zsh | tee _tern
  tern completion fish | tee tern.fish

An installed tern has these scripts where the shells look for them. By hand:
bash reads one with "source", fish from ~/.config/fish/completions/tern.fish,
and zsh from a file _tern in a folder of its $fpath.
)"};

}  // namespace tern::command
