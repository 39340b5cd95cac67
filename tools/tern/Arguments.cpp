#include "tools/tern/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <utility>

#include "tools/tern/CommandWords.hpp"
#include "tools/tern/HelpText.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

constexpr std::string_view projections = "EPSG:4326, EPSG:3857 and tern:local";

// The options of one command, and the arguments that they fill.
class CommandOptions {
 public:
  explicit CommandOptions(const CommandWord& word);
  CommandOptions(const CommandOptions&) = delete;
  CommandOptions& operator=(const CommandOptions&) = delete;

  ParsedCall parse(const std::vector<std::string>& words);

 private:
  using TakeText = std::function<void(const std::string&)>;
  using TakeWhole = std::function<void(std::int64_t)>;
  enum class Need { required, optional };

  void addOptionsOf(std::string_view command);
  void addVenue();
  void addRoute();
  void addClosest();
  void addConvert();
  void addGenerate();

  void addText(const std::string& name, const std::string& label, const std::string& meaning,
               Need need, const TakeText& take);
  void addWhole(const std::string& name, const std::string& label, const std::string& meaning,
                Need need, const TakeWhole& take);
  void addWholeOf(const std::string& request, const std::string& label, const std::string& meaning,
                  Need need = Need::required);
  void addPointOf(const std::string& request, const std::string& meaning);
  void addProjectionOf(const std::string& request, const std::string& meaning);
  void addCount(const std::string& name, const std::string& meaning, std::int64_t& count);

  // What CLI11 cannot tell of the words as a whole.
  std::optional<std::string> complaint() const;
  Failure failure(const std::string& message) const;

  struct Needed {
    const CLI::Option* option;
    std::string label;
    std::string meaning;
  };

  CLI::App app_;
  Arguments arguments_;
  std::vector<Needed> needed_;
};

std::string inQuotes(const std::string& text) { return "\"" + shortened(text) + "\""; }

CommandOptions::CommandOptions(const CommandWord& word)
    : app_(std::string(word.summary), "tern " + std::string(word.name)) {
  arguments_.command = word.name;
  app_.allow_extras();
  app_.get_formatter()->column_width(26);
  app_.footer(std::string(examplesOf(word.name)));
  addOptionsOf(word.name);
  app_.add_flag("--json", arguments_.json,
                word.name == "batch" ? "print an error as a JSON object too"
                                     : "print the answer as one JSON object")
      ->disable_flag_override();
}

void CommandOptions::addOptionsOf(std::string_view command) {
  if (command == "generate") {
    addGenerate();
    return;
  }
  addText("--data", "DIR", "the venue folder to read", Need::required,
          [this](const std::string& folder) { arguments_.data = folder; });
  if (command != "venues") addVenue();
  if (command == "route") addRoute();
  if (command == "closest") addClosest();
  if (command == "convert") addConvert();
}

void CommandOptions::addVenue() {
  addWhole("--venue", "V", "the venue; may be left out when the data has only one", Need::optional,
           [this](std::int64_t id) { arguments_.venue = id; });
  addWhole("--building", "B", "load this building only", Need::optional,
           [this](std::int64_t id) { arguments_.building = id; });
}

void CommandOptions::addRoute() {
  arguments_.request = Value::map({{"op", "route"}});
  addWholeOf("from", "W", "the waypoint where the route begins");
  addWholeOf("to", "W", "the waypoint where it ends");
  addWholeOf("accessibility", "N", "take only paths of this level or below (default 100)",
             Need::optional);
  addText("--picture", "FILE", "draw the route to FILE.svg or FILE.html", Need::optional,
          [this](const std::string& file) {
            if (!file.ends_with(".svg") && !file.ends_with(".html")) {
              throw CLI::ValidationError("--picture",
                                         inQuotes(file) + " must end in .svg or .html");
            }
            arguments_.picture = file;
          });
}

void CommandOptions::addClosest() {
  arguments_.request = Value::map({{"op", "closest"}});
  addWholeOf("map", "M", "the map to search");
  addPointOf("at", "a point of the map, in map units");
}

void CommandOptions::addConvert() {
  arguments_.request = Value::map({{"op", "convert"}});
  addPointOf("point", "the point to convert");
  addProjectionOf("from", "the projection of the point");
  addProjectionOf("to", "the projection that is wanted");
}

void CommandOptions::addGenerate() {
  generate::GenerateOptions& options = arguments_.generate;
  addText("--out", "DIR", "the folder to write to; it is made when it is missing", Need::required,
          [this](const std::string& folder) { arguments_.out = folder; });
  addWhole("--seed", "S", "chooses names and shapes (default 1)", Need::optional,
           [&options](std::int64_t seed) { options.seed = static_cast<std::uint64_t>(seed); });
  addCount("--buildings", "how many buildings", options.buildings);
  addCount("--floors", "how many floors the first building has", options.floors);
  addCount("--shops", "how many shops the venue has", options.shops);
  addWhole("--waypoints", "N", "about as many waypoints, in place of --shops", Need::optional,
           [&options](std::int64_t count) { options.waypoints = count; });
  addCount("--spacing", "widest gap between waypoints of a corridor, metres", options.spacing);
  addCount("--customer", "the customer's id", options.customer);
  addCount("--venue", "the venue's id", options.venue);
}

void CommandOptions::addText(const std::string& name, const std::string& label,
                             const std::string& meaning, Need need, const TakeText& take) {
  CLI::Option* option = app_.add_option_function<std::string>(
      name,
      [name, take](const std::string& text) {
        if (text.empty()) throw CLI::ValidationError(name, "a value is wanted, not an empty text");
        take(text);
      },
      meaning);
  option->type_name(label);
  if (need == Need::required) needed_.push_back({option, label, meaning});
}

void CommandOptions::addWhole(const std::string& name, const std::string& label,
                              const std::string& meaning, Need need, const TakeWhole& take) {
  addText(name, label, meaning, need, [name, take](const std::string& text) {
    const auto whole = parseWhole(text);
    if (!whole) {
      throw CLI::ValidationError(name, inQuotes(text) + " must be a whole number, such as 12");
    }
    take(*whole);
  });
}

void CommandOptions::addWholeOf(const std::string& request, const std::string& label,
                                const std::string& meaning, Need need) {
  addWhole("--" + request, label, meaning, need,
           [this, request](std::int64_t whole) { arguments_.request.set(request, whole); });
}

void CommandOptions::addPointOf(const std::string& request, const std::string& meaning) {
  const std::string name = "--" + request;
  addText(name, "X,Y", meaning, Need::required, [this, name, request](const std::string& text) {
    const auto point = parsePoint(text);
    if (!point) {
      throw CLI::ValidationError(
          name,
          inQuotes(text) + " must be two numbers with a comma between them, such as 120.5,88");
    }
    arguments_.request.set(request, Value::list({point->x, point->y}));
  });
}

void CommandOptions::addProjectionOf(const std::string& request, const std::string& meaning) {
  const std::string name = "--" + request;
  addText(name, "PROJ", meaning, Need::required, [this, name, request](const std::string& text) {
    if (text != "EPSG:4326" && text != "EPSG:3857" && text != "tern:local") {
      throw CLI::ValidationError(
          name, inQuotes(text) + " is no projection; there are " + std::string(projections));
    }
    arguments_.request.set(request, Value(text));
  });
}

void CommandOptions::addCount(const std::string& name, const std::string& meaning,
                              std::int64_t& count) {
  addWhole(name, "N", meaning + " (default " + std::to_string(count) + ")", Need::optional,
           [&count](std::int64_t whole) { count = whole; });
}

std::optional<std::string> CommandOptions::complaint() const {
  const std::vector<std::string> extras = app_.remaining();
  if (!extras.empty()) return inQuotes(extras.front()) + " is not understood here";
  for (const Needed& needed : needed_) {
    if (needed.option->count() > 0) continue;
    return needed.option->get_name() + " " + needed.label + " is missing: " + needed.meaning;
  }
  const Value& request = arguments_.request;
  if (arguments_.command == "convert" && request["from"] == request["to"]) {
    return "--from and --to must be two different ones of " + std::string(projections);
  }
  if (arguments_.command == "generate") return generate::validate(arguments_.generate);
  return std::nullopt;
}

Failure CommandOptions::failure(const std::string& message) const {
  return wrongWords(message + " (see " + app_.get_name() + " --help)");
}

// CLI11 does not spell a flag's name as the user does.
std::string mismatch(std::span<const std::string> words, const char* message) {
  const auto givesJsonAValue = [](const std::string& word) { return word.starts_with("--json="); };
  return std::ranges::any_of(words, givesJsonAValue) ? "--json takes no value" : message;
}

ParsedCall CommandOptions::parse(const std::vector<std::string>& words) {
  try {
    app_.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::CallForHelp&) {
    return Information{app_.help()};
  } catch (const CLI::ArgumentMismatch& error) {
    return failure(mismatch(words, error.what()));
  } catch (const CLI::ParseError& error) {
    return failure(error.what());
  }
  if (const auto wrong = complaint()) return failure(*wrong);
  return std::move(arguments_);
}

bool isHelp(const std::string& word) { return word == "--help" || word == "-h"; }

// Without a command only help and the version make sense.
ParsedCall parseWithoutCommand(const std::vector<std::string>& words) {
  if (std::ranges::any_of(words, isHelp)) return Information{generalHelp()};
  if (std::ranges::find(words, "--version") != words.end()) {
    return Information{"tern " TERN_VERSION "\n"};
  }
  return wrongWords("a command is missing; there are " + namesOfCommands() + " (see tern --help)");
}

}  // namespace

ParsedCall parseArguments(std::vector<std::string> words) {
  const auto place = placeOfCommand(words);
  if (!place) return parseWithoutCommand(words);
  const std::string name = words[*place];
  const CommandWord* word = findCommand(name);
  if (word == nullptr) {
    return wrongWords(inQuotes(name) + " is no command; there are " + namesOfCommands() +
                      " (see tern --help)");
  }
  words.erase(words.begin() + static_cast<std::ptrdiff_t>(*place));
  return CommandOptions(*word).parse(withNegativesJoined(words));
}

bool asksForJson(std::span<const std::string> words) {
  return std::ranges::find(words, "--json") != words.end();
}

}  // namespace tern::command
