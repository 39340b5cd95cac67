#include "tools/tern/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "TernCoreKit/Version.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/HelpText.hpp"
#include "tools/tern/SharedOptions.hpp"

namespace tern::command {

namespace {

using Complaint = std::optional<std::string>;

// What CLI11 gives as the text of a flag.
constexpr std::string_view flagText = "true";

// Sets a value of the map, or with "a.b" one of the map within it.
void setAt(Value& values, std::string_view key, const Value& value) {
  const std::size_t dot = key.find('.');
  if (dot == std::string_view::npos) return values.set(key, value);
  Value within = values[key.substr(0, dot)];
  within.set(key.substr(dot + 1), value);
  values.set(key.substr(0, dot), std::move(within));
}

// What is wrong with the texts that stand for one option; what is right goes to the values.
Complaint take(const Option& option, const std::vector<std::string>& texts, Value& values) {
  const std::string_view key = option.key.empty() ? option.name.substr(2) : option.key;
  if (option.isFlag()) {
    if (std::ranges::any_of(texts, [](const auto& text) { return text != flagText; })) {
      return " takes no value";
    }
    values.set(key, !texts.empty());
    return std::nullopt;
  }
  if (texts.size() > 1) return ": stands there twice; once is enough";
  const std::string text(texts.empty() ? option.need.fallback : texts.front());
  if (texts.empty() && text.empty()) return std::nullopt;
  if (text.empty()) return ": a value is wanted, not an empty text";
  if (text.starts_with("--")) return ": a value is wanted before " + inQuotes(text);
  const Reading reading = option.read(text);
  if (const auto* wrong = std::get_if<std::string>(&reading)) return ": " + *wrong;
  setAt(values, key, std::get<Value>(reading));
  return std::nullopt;
}

// The secret may stand in the environment, where no list of processes shows it.
std::string secretOf(std::string_view given) {
  const char* const kept = std::getenv("TERN_CLIENT_SECRET");
  return std::string(given.empty() && kept != nullptr ? kept : given);
}

HostOptions hostOptionsOf(const Value& given) {
  const auto text = [&](std::string_view name) { return std::string(given[name].text()); };
  return {.host = text("host"),
          .customer = given["customer"].integer(),
          .clientId = text("client-id"),
          .clientSecret = secretOf(given["client-secret"].text()),
          .cache = text("cache"),
          .noReload = given["no-reload"].flag(),
          .locale = text("locale"),
          .geoJson = given["geojson"].flag(),
          .timeout = std::chrono::seconds(given["timeout"].integer()),
          .caFile = text("ca-file"),
          .trace = given["trace"].flag()};
}

Arguments argumentsOf(const Command& command, Value request, const Value& given) {
  Arguments call{.command = &command,
                 .json = given["json"].flag(),
                 .data = std::string(given["data"].text()),
                 .service = hostOptionsOf(given),
                 .picture = std::string(request["picture"].text())};
  for (const Value& id : given["venue"].items()) call.venues.push_back(id.integer());
  if (const Value* id = given.find("building")) call.building = id->integer();
  call.request = std::move(request);
  return call;
}

// The words of one command: what they are is for CLI11 to find out, what they should be stands in
// the table.
class CommandWords {
 public:
  explicit CommandWords(const Command& command);

  ParsedCall parse(std::vector<std::string> words);

 private:
  bool isGiven(const Option& option) const { return app_.count(std::string(option.name)) > 0; }
  Complaint takeAll(std::span<const Option> options, Value& values) const;
  // Of several rules the first that is broken.
  Complaint complaintOf(const Arguments& call) const;
  Complaint complaintOfSource(const Arguments& call) const;
  Complaint complaintOfSeveral(const Arguments& call) const;
  Complaint firstMissing(std::span<const Option> options) const;
  Failure failure(const std::string& message) const;

  const Command& command_;
  const std::vector<Option> shared_ = sharedOptionsOf(command_);
  CLI::App app_;
};

CommandWords::CommandWords(const Command& command) : command_(command) {
  app_.allow_extras();
  const auto add = [&](const Option& option) {
    const auto taken = [](const CLI::results_t&) { return true; };
    app_.add_option(std::string(option.name), CLI::callback_t(taken))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->expected(option.isFlag() ? 0 : 1);
  };
  std::ranges::for_each(command.options, add);
  std::ranges::for_each(shared_, add);
}

ParsedCall CommandWords::parse(std::vector<std::string> words) {
  const std::string last = words.empty() ? std::string() : words.back();
  std::ranges::reverse(words);
  try {
    app_.parse(std::move(words));
  } catch (const CLI::CallForHelp&) {
    return Information{helpOf(command_)};
  } catch (const CLI::ParseError&) {
    // All that it can refuse here is an option without a value, with nothing behind it.
    return failure(last.substr(0, last.find('=')) + ": a value is wanted");
  }
  Value request = Value::map({{"op", command_.name}});
  if (const auto wrong = takeAll(command_.options, request)) return failure(*wrong);
  Value given = Value::map();
  if (const auto wrong = takeAll(shared_, given)) return failure(*wrong);
  Arguments call = argumentsOf(command_, std::move(request), given);
  if (const auto wrong = complaintOf(call)) return failure(*wrong);
  return call;
}

Complaint CommandWords::takeAll(std::span<const Option> options, Value& values) const {
  for (const Option& option : options) {
    const std::string name(option.name);
    if (const auto wrong = take(option, app_.get_option(name)->results(), values)) {
      return name + *wrong;
    }
  }
  return std::nullopt;
}

Complaint CommandWords::complaintOf(const Arguments& call) const {
  const std::vector<std::string> extras = app_.remaining();
  if (!extras.empty()) return inQuotes(extras.front()) + " is not understood here";
  if (loadsData(command_)) {
    if (auto wrong = complaintOfSource(call)) return wrong;
  }
  if (auto missing = firstMissing(command_.options)) return missing;
  if (auto wrong = complaintOfSeveral(call)) return wrong;
  return command_.objection != nullptr ? command_.objection(call) : std::nullopt;
}

Complaint CommandWords::complaintOfSource(const Arguments& call) const {
  if (call.service.host.empty()) {
    for (const Option& option : hostOptions) {
      if (isGiven(option)) return std::string(option.name) + " is for --host only";
    }
    if (!call.data.empty()) return std::nullopt;
    return "--data DIR is missing: the venue folder to read; or --host URL, a service to ask";
  }
  if (!call.data.empty()) return "--data and --host: one of them is wanted, not both";
  if (auto missing = firstMissing(hostOptions)) return missing;
  if (!call.service.clientSecret.empty()) return std::nullopt;
  return "the secret is missing: set TERN_CLIENT_SECRET, or name it with --client-secret S";
}

Complaint CommandWords::complaintOfSeveral(const Arguments& call) const {
  if (call.venues.size() < 2) return std::nullopt;
  if (!joinsVenues(command_)) {
    return "--venue: several venues are for " + namesOfCommands(joinsVenues, " and ") +
           "; name one";
  }
  if (call.building) return "--building: of several venues every building is loaded";
  return std::nullopt;
}

Complaint CommandWords::firstMissing(std::span<const Option> options) const {
  for (const Option& option : options) {
    if (!option.need.isRequired || isGiven(option)) continue;
    std::string missing(option.name);
    return missing.append(" ").append(option.label).append(" is missing: ").append(option.meaning);
  }
  return std::nullopt;
}

Failure CommandWords::failure(const std::string& message) const {
  return wrongWords(message + " (see tern " + std::string(command_.name) + " --help)");
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
  if (command == nullptr) return wrongWords(inQuotes(name) + " is no command" + whichCommands());
  words.erase(place);
  return CommandWords(*command).parse(std::move(words));
}

bool asksForJson(std::span<const std::string> words) {
  return std::ranges::find(words, "--json") != words.end();
}

}  // namespace tern::command
