#include "tools/tern/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "TernCoreKit/Version.hpp"
#include "TernCoreKit/guidance/Misspelling.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/HelpText.hpp"
#include "tools/tern/SharedOptions.hpp"

namespace tern::command {

namespace {

// What is wrong, in one line.
using Complaint = std::optional<std::string>;

// "; do you mean --from?" for a word that nearly is one of these, else nothing. The names must
// outlive the call.
std::string meantText(std::string_view word, const std::vector<std::string_view>& names) {
  // More slips than a third of the letters, dashes apart, make another word.
  const auto dashes = static_cast<std::size_t>(std::ranges::count(word, '-'));
  std::size_t fewest = (lettersIn(word) - dashes) / 3 + 1;
  std::string_view meant;
  for (const std::string_view name : names) {
    const std::size_t slips = slipsBetween(word, name, fewest);
    if (slips >= fewest) continue;
    fewest = slips;
    meant = name;
  }
  return meant.empty() ? "" : "; do you mean " + std::string(meant) + "?";
}

bool isGiven(const CLI::App& words, const Option& option) {
  return words.count(std::string(option.name)) > 0;
}

// Adds what the texts stand for, or what counts without one, to the values under the option's name.
Complaint takeTexts(const Option& option, const std::vector<std::string>& texts, Value& values) {
  if (option.isFlag()) {
    // CLI11 gives one that stands alone so.
    if (std::ranges::count(texts, "true") != std::ssize(texts)) return " takes no value";
    values.set(option.name, !texts.empty());
    return std::nullopt;
  }
  if (texts.size() > 1) return ": stands there twice; once is enough";
  const std::string text(texts.empty() ? option.need.fallback : texts.front());
  if (text.empty() && texts.empty()) return std::nullopt;
  if (text.empty()) return ": a value is wanted, not an empty text";
  if (text.starts_with("--")) return ": a value is wanted before " + inQuotes(text);
  const Reading reading = option.read(text);
  if (const auto* wrong = std::get_if<std::string>(&reading)) return ": " + *wrong;
  values.set(option.name, std::get<Value>(reading));
  return std::nullopt;
}

Complaint firstMissing(std::span<const Option> options, const CLI::App& words) {
  for (const Option& option : options) {
    if (!option.need.isRequired || isGiven(words, option)) continue;
    std::string missing(option.name);
    return missing.append(" ").append(option.label).append(" is missing: ").append(option.meaning);
  }
  return std::nullopt;
}

Complaint complaintOfSource(const Arguments& call, const CLI::App& words) {
  if (call.service.host.empty()) {
    for (const Option& option : hostOptions) {
      if (isGiven(words, option)) return std::string(option.name) + " is for --host only";
    }
    if (!call.data.empty()) return std::nullopt;
    return "--data DIR is missing: the venue folder to read; or --host URL, a service to ask";
  }
  if (!call.data.empty()) return "--data and --host: one of them is wanted, not both";
  if (auto missing = firstMissing(hostOptions, words)) return missing;
  if (!call.service.clientSecret.empty()) return std::nullopt;
  return "the secret is missing: set TERN_CLIENT_SECRET, or name it with --client-secret S";
}

Complaint complaintOfSeveral(const Arguments& call) {
  if (call.venues.size() < 2) return std::nullopt;
  if (!joinsVenues(*call.command)) {
    return "--venue: several venues are for " + namesOfCommands(joinsVenues, " and ") +
           "; name one";
  }
  if (call.building) return "--building: of several venues every building is loaded";
  return std::nullopt;
}

// Of several rules the first that is broken.
Complaint complaintOf(const Arguments& call, const CLI::App& words) {
  const Command& command = *call.command;
  if (loadsData(command)) {
    if (auto wrong = complaintOfSource(call, words)) return wrong;
  }
  if (auto missing = firstMissing(command.options, words)) return missing;
  if (auto wrong = complaintOfSeveral(call)) return wrong;
  return command.objection != nullptr ? command.objection(call) : std::nullopt;
}

HostOptions hostOptionsOf(const Value& values) {
  const auto text = [&](std::string_view name) { return std::string(values[name].text()); };
  // Where no list of processes shows it.
  const char* const keptSecret = std::getenv("TERN_CLIENT_SECRET");
  const std::string secret = text("--client-secret");
  return {.host = text("--host"),
          .customer = values["--customer"].integer(),
          .clientId = text("--client-id"),
          .clientSecret = secret.empty() && keptSecret != nullptr ? keptSecret : secret,
          .cache = text("--cache"),
          .noReload = values["--no-reload"].flag(),
          .locale = text("--locale"),
          .geoJson = values["--geojson"].flag(),
          .timeout = std::chrono::seconds(values["--timeout"].integer()),
          .caFile = text("--ca-file"),
          .trace = values["--trace"].flag()};
}

// Each value under its key, flags that are set among them; that of "a.b" lies under "b" in a map
// under "a".
Value requestOf(const Command& command, const Value& values) {
  Value request = Value::map({{"op", command.name}});
  std::vector<Option> options = command.options;
  options.push_back(command.operand);
  for (const Option& option : options) {
    const Value* value = values.find(option.name);
    if (value == nullptr || (option.isFlag() && !value->flag())) continue;
    const std::string_view key = option.requestKey();
    const std::size_t dot = key.find('.');
    Value inner = dot == key.npos ? *value : request[key.substr(0, dot)];
    if (dot != key.npos) inner.set(key.substr(dot + 1), *value);
    request.set(key.substr(0, dot), std::move(inner));
  }
  return request;
}

Arguments argumentsOf(const Command& command, const Value& values) {
  Arguments call{.command = &command,
                 .json = values["--json"].flag(),
                 .data = std::string(values["--data"].text()),
                 .service = hostOptionsOf(values),
                 .request = requestOf(command, values),
                 .picture = std::string(values["--picture"].text())};
  for (const Value& id : values["--venue"].items()) call.venues.push_back(id.integer());
  if (const Value* id = values.find("--building")) call.building = id->integer();
  return call;
}

// Adds what stands without an option before it.
Complaint takeOperand(const Command& command, std::span<const std::string> extras, Value& values) {
  const Option& operand = command.operand;
  const bool isTaken = !operand.name.empty() && !extras.empty() && !extras.front().starts_with('-');
  if (isTaken) {
    auto wrong = takeTexts(operand, {extras.front()}, values);
    if (wrong) return std::string(operand.name) + *wrong;
  }
  if (extras.size() == (isTaken ? 1 : 0)) return std::nullopt;
  const std::string& word = extras[isTaken ? 1 : 0];
  std::vector<std::string_view> names;
  const std::vector<Option> options = optionsOf(command);
  for (const Option& option : options) names.push_back(option.name);
  return inQuotes(word) + " is not understood here" +
         meantText(std::string_view(word).substr(0, word.find('=')), names);
}

// CLI11 finds out what the words are; what they should be stands in the table.
ParsedCall parseWords(const Command& command, std::vector<std::string> words) {
  const auto failure = [&](const std::string& message) {
    return wrongWords(message + " (see tern " + std::string(command.name) + " --help)");
  };
  CLI::App app;
  app.allow_extras();
  const std::vector<Option> options = optionsOf(command);
  for (const Option& option : options) {
    app.add_option(std::string(option.name), CLI::callback_t([](const auto&) { return true; }))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->expected(option.isFlag() ? 0 : 1);
  }
  const std::string last = words.empty() ? std::string() : words.back();
  std::ranges::reverse(words);
  try {
    app.parse(std::move(words));
  } catch (const CLI::CallForHelp&) {
    return Information{helpOf(command)};
  } catch (const CLI::ParseError&) {
    // All that it can refuse here is an option without a value, with nothing behind it.
    return failure(last.substr(0, last.find('=')) + ": a value is wanted");
  }
  Value values = Value::map();
  for (const Option& option : options) {
    const std::string name(option.name);
    const auto wrong = takeTexts(option, app.get_option(name)->results(), values);
    if (wrong) return failure(name + *wrong);
  }
  if (const auto wrong = takeOperand(command, app.remaining(), values)) {
    return failure(*wrong);
  }
  Arguments call = argumentsOf(command, values);
  if (const auto wrong = complaintOf(call, app)) return failure(*wrong);
  return call;
}

bool takesTheNextWord(const std::string& word) {
  const auto isNamed = [&](const Option& option) {
    return option.name == word && !option.isFlag();
  };
  return std::ranges::any_of(sourceOptions, isNamed) ||
         std::ranges::any_of(venueOptions, isNamed) || std::ranges::any_of(hostOptions, isNamed);
}

// The word that should be a command: the first that neither is an option nor belongs to one. With a
// value only those options may stand before it that say what to load.
std::vector<std::string>::iterator placeOfCommand(std::vector<std::string>& words) {
  auto word = words.begin();
  while (word != words.end() && word->starts_with('-')) {
    if (takesTheNextWord(*word) && word + 1 != words.end()) ++word;
    ++word;
  }
  return word;
}

std::vector<std::string_view> commandNames() {
  std::vector<std::string_view> names;
  for (const Command* command : allCommands()) names.push_back(command->name);
  return names;
}

std::string whichCommands() {
  return "; there are " + namesOfCommands([](const Command&) { return true; }, ", ") +
         " (see tern --help)";
}

// Without a command only help and the version make sense.
ParsedCall parseWithoutCommand(std::span<const std::string> words) {
  const auto isThere = [&](const char* word) {
    return std::ranges::find(words, word) != words.end();
  };
  if (isThere("--help") || isThere("-h")) return Information{generalHelp()};
  if (isThere("--version")) return Information{"tern " + std::string(version()) + "\n"};
  return wrongWords("a command is missing" + whichCommands());
}

}  // namespace

ParsedCall parseArguments(std::vector<std::string> words) {
  const auto place = placeOfCommand(words);
  if (place == words.end()) return parseWithoutCommand(words);
  const std::string name = *place;
  const Command* command = findCommand(name);
  if (command == nullptr)
    return wrongWords(inQuotes(name) + " is no command" + meantText(name, commandNames()) +
                      whichCommands());
  words.erase(place);
  return parseWords(*command, std::move(words));
}

bool asksForJson(std::span<const std::string> words) {
  return std::ranges::find(words, "--json") != words.end();
}

}  // namespace tern::command
