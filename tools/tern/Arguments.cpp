#include "tools/tern/Arguments.hpp"

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

// An option as it stands among the words.
struct Given {
  const Option* option;
  // Absent without one: of a flag, or at the end of the words.
  std::optional<std::string> text;
};

struct SortedWords {
  std::vector<Given> given;
  // What belongs to no option, in order.
  std::vector<std::string> others;

  std::vector<const Given*> of(const Option& option) const {
    std::vector<const Given*> found;
    for (const Given& each : given) {
      if (each.option->name == option.name) found.push_back(&each);
    }
    return found;
  }
  bool has(const Option& option) const { return !of(option).empty(); }
};

// "--from 12" and "--from=12" are the same. The options must outlive what is returned.
SortedWords sorted(std::span<const Option> options, std::span<const std::string> words) {
  SortedWords all;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::size_t sign = words[i].find('=');
    const auto option = std::ranges::find(options, words[i].substr(0, sign), &Option::name);
    if (option == options.end()) {
      all.others.push_back(words[i]);
    } else if (sign != std::string::npos) {
      all.given.push_back({&*option, words[i].substr(sign + 1)});
    } else if (option->isFlag() || i + 1 == words.size()) {
      all.given.push_back({&*option, std::nullopt});
    } else {
      all.given.push_back({&*option, words[++i]});
    }
  }
  return all;
}

std::string titleOf(const Option& option) {
  const bool hasLabel = option.label != option.name && !option.isFlag();
  return std::string(option.name) + (hasLabel ? " " + std::string(option.label) : "");
}

// Adds what the text stands for to the values under the option's name.
Complaint takeText(const Option& option, const std::optional<std::string>& text, Value& values) {
  const std::string meaning = ": " + std::string(option.meaning);
  if (!text) return titleOf(option) + ": a value is wanted" + meaning;
  if (text->empty()) return titleOf(option) + ": a value is wanted, not an empty text" + meaning;
  if (text->starts_with("--")) {
    return titleOf(option) + ": a value is wanted before " + inQuotes(*text) + meaning;
  }
  const Reading reading = option.read(*text);
  if (const auto* wrong = std::get_if<std::string>(&reading)) {
    return std::string(option.name) + ": " + *wrong;
  }
  values.set(option.name, std::get<Value>(reading));
  return std::nullopt;
}

// The same of all that stands there, or of what counts when nothing does.
Complaint takeGiven(const Option& option, const std::vector<const Given*>& given, Value& values) {
  const std::string name(option.name);
  if (option.isFlag()) {
    const bool hasText = std::ranges::any_of(given, [](auto* each) { return bool(each->text); });
    values.set(option.name, !given.empty());
    return hasText ? Complaint(name + " takes no value") : std::nullopt;
  }
  if (given.size() > 1) return name + ": stands there twice; once is enough";
  if (given.size() == 1) return takeText(option, given.front()->text, values);
  const std::string fallback(option.need.fallback);
  return fallback.empty() ? std::nullopt : takeText(option, fallback, values);
}

std::string missingText(const Option& option) {
  return titleOf(option) + " is missing: " + std::string(option.meaning);
}

Complaint firstMissing(std::span<const Option> options, const SortedWords& words) {
  for (const Option& option : options) {
    if (!option.need.isRequired || words.has(option)) continue;
    return missingText(option);
  }
  return std::nullopt;
}

Complaint complaintOfSource(const Arguments& call, const SortedWords& words) {
  if (call.service.host.empty()) {
    for (const Option& option : hostOptions) {
      if (words.has(option)) return std::string(option.name) + " is for --host only";
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
    return "--venue: several venues are for " + namesOfCommands(joinsVenues, ", ") + "; name one";
  }
  if (call.building) return "--building: of several venues every building is loaded";
  return std::nullopt;
}

// Of several rules the first that is broken.
Complaint complaintOf(const Arguments& call, const SortedWords& words) {
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

std::string notUnderstood(const Command& command, const std::string& word) {
  std::string text = inQuotes(word) + " is not understood here";
  if (!word.starts_with('-')) return text + "; a text of several words stands in quotes";
  std::vector<std::string_view> names;
  const std::vector<Option> options = optionsOf(command);
  for (const Option& option : options) names.push_back(option.name);
  return text + meantText(std::string_view(word).substr(0, word.find('=')), names);
}

// Adds what stands without an option before it.
Complaint takeOperand(const Command& command, std::span<const std::string> others, Value& values) {
  const Option& operand = command.operand;
  if (!operand.name.empty() && !others.empty() && !others.front().starts_with('-')) {
    if (auto wrong = takeText(operand, others.front(), values)) return wrong;
    others = others.subspan(1);
  }
  if (!others.empty()) return notUnderstood(command, others.front());
  const bool isMissing = operand.need.isRequired && values.find(operand.name) == nullptr;
  return isMissing ? Complaint(missingText(operand)) : std::nullopt;
}

bool asksForHelp(std::span<const std::string> words) {
  return std::ranges::any_of(words,
                             [](const auto& word) { return word == "--help" || word == "-h"; });
}

ParsedCall parseWords(const Command& command, std::span<const std::string> words,
                      const Look& look) {
  if (asksForHelp(words)) return Information{helpOf(command, look)};
  const auto failure = [&](const std::string& message) {
    return wrongWords(message + " (see tern " + std::string(command.name) + " --help)");
  };
  const std::vector<Option> options = optionsOf(command);
  const SortedWords all = sorted(options, words);
  Value values = Value::map();
  for (const Option& option : options) {
    if (const auto wrong = takeGiven(option, all.of(option), values)) return failure(*wrong);
  }
  if (const auto wrong = takeOperand(command, all.others, values)) return failure(*wrong);
  Arguments call = argumentsOf(command, values);
  if (const auto wrong = complaintOf(call, all)) return failure(*wrong);
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
ParsedCall parseWithoutCommand(std::span<const std::string> words, const Look& look) {
  if (asksForHelp(words)) return Information{generalHelp(look)};
  if (std::ranges::find(words, "--version") != words.end())
    return Information{"tern " + std::string(version()) + "\n"};
  return wrongWords("a command is missing" + whichCommands());
}

}  // namespace

ParsedCall parseArguments(std::vector<std::string> words, const Look& look) {
  const auto place = placeOfCommand(words);
  if (place == words.end()) return parseWithoutCommand(words, look);
  const std::string name = *place;
  const Command* command = findCommand(name);
  if (command == nullptr)
    return wrongWords(inQuotes(name) + " is no command" + meantText(name, commandNames()) +
                      whichCommands());
  words.erase(place);
  return parseWords(*command, words, look);
}

bool asksForJson(std::span<const std::string> words) {
  return std::ranges::find(words, "--json") != words.end();
}

}  // namespace tern::command
