#include "tools/tern/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <utility>

#include "TernCoreKit/Version.hpp"
#include "TernCoreKit/answers/ErrorAnswer.hpp"
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
  // Those for the host may only stand beside --host.
  enum class Need { required, optional, requiredForHost, optionalForHost };

  void addOptionsOf(std::string_view command);
  void addSource();
  void addHost();
  void addVenue();
  void takeVenues(const std::string& text);
  void addRoute(std::string_view operation);
  void addAlternatives();
  void addTour();
  void addPicture();
  void addNearest();
  void addClosest();
  void addConvert();
  void addServe();
  void addGenerate();

  void addText(const std::string& name, const std::string& label, const std::string& meaning,
               Need need, const TakeText& take);
  void addText(const std::string& name, const std::string& label, const std::string& meaning,
               Need need, std::string& text);
  void addWhole(const std::string& name, const std::string& label, const std::string& meaning,
                Need need, const TakeWhole& take);
  void addWholeOf(const std::string& request, const std::string& label, const std::string& meaning,
                  Need need = Need::required);
  void addNumberOf(const std::string& word, const std::string& option, const std::string& meaning);
  void addPointOf(const std::string& request, const std::string& meaning);
  void addProjectionOf(const std::string& request, const std::string& meaning);
  void addCount(const std::string& name, const std::string& meaning, std::int64_t& count);
  void addWholeWithin(std::int64_t least, std::int64_t most, const std::string& name,
                      const std::string& label, const std::string& meaning, Need need,
                      const TakeWhole& take);
  CLI::Option* addFlag(const std::string& name, const std::string& meaning, bool& flag);

  // What CLI11 cannot tell of the words as a whole.
  std::optional<std::string> complaint() const;
  std::optional<std::string> complaintOfSource() const;
  Failure failure(const std::string& message) const;

  struct Needed {
    const CLI::Option* option;
    std::string label;
    std::string meaning;
  };

  static std::optional<std::string> firstMissing(const std::vector<Needed>& options);
  void takeEnvironment();

  CLI::App app_;
  Arguments arguments_;
  std::vector<Needed> needed_;
  std::vector<Needed> neededForHost_;
  std::vector<const CLI::Option*> hostOptions_;
};

std::string inQuotes(const std::string& text) { return "\"" + shortened(text) + "\""; }

CommandOptions::CommandOptions(const CommandWord& word)
    : app_(std::string(word.summary), "tern " + std::string(word.name)) {
  arguments_.command = word.name;
  app_.allow_extras();
  app_.get_formatter()->column_width(26);
  app_.footer(std::string(examplesOf(word.name)));
  addOptionsOf(word.name);
  addFlag("--json",
          word.name == "batch" ? "print an error as a JSON object too"
                               : "print the answer as one JSON object",
          arguments_.json);
}

void CommandOptions::addOptionsOf(std::string_view command) {
  if (command == "generate") {
    addGenerate();
    return;
  }
  if (command == "serve") {
    addServe();
    return;
  }
  addSource();
  if (command != "venues") addVenue();
  if (command == "route") addRoute("route");
  if (command == "alternatives") addAlternatives();
  if (command == "tour") addTour();
  if (command == "nearest") addNearest();
  if (command == "closest") addClosest();
  if (command == "convert") addConvert();
}

void CommandOptions::addSource() {
  addText("--data", "DIR", "the venue folder to read", Need::optional, arguments_.data);
  addText("--host", "URL", "the mapping service to ask, in place of a folder", Need::optional,
          [this](const std::string& url) {
            if (!url.starts_with("http://") && !url.starts_with("https://")) {
              throw CLI::ValidationError("--host",
                                         inQuotes(url) + " must begin with http:// or https://");
            }
            arguments_.service.host = url.substr(0, url.find_last_not_of('/') + 1);
          });
  addHost();
}

void CommandOptions::addHost() {
  HostOptions& host = arguments_.service;
  addWhole("--customer", "N", "the customer's id", Need::requiredForHost,
           [&host](std::int64_t id) { host.customer = id; });
  addText("--client-id", "ID", "who asks the service", Need::requiredForHost, host.clientId);
  addText("--client-secret", "S", "the secret; better in the environment: TERN_CLIENT_SECRET",
          Need::optionalForHost, host.clientSecret);
  addText("--cache", "DIR", "the folder to keep the service's answers in", Need::optionalForHost,
          host.cache);
  hostOptions_.push_back(
      addFlag("--no-reload", "do not ask the service for what is cached", host.noReload));
  addText("--locale", "L", "the language of the names (default en-US)", Need::optionalForHost,
          host.locale);
  hostOptions_.push_back(addFlag("--geojson", "ask for shapes as GeoJSON", host.geoJson));
  addWholeWithin(1, 86'400, "--timeout", "S",
                 "the longest silence of a request in seconds (default 30)", Need::optionalForHost,
                 [&host](std::int64_t seconds) { host.timeout = std::chrono::seconds(seconds); });
  addText("--ca-file", "FILE", "certificates to trust in place of the system's",
          Need::optionalForHost, host.caFile);
  hostOptions_.push_back(addFlag("--trace", "show each request on standard error", host.trace));
}

void CommandOptions::addVenue() {
  addText("--venue", "V,...", "the venue, or several to join; may be left out when there is one",
          Need::optional, [this](const std::string& text) { takeVenues(text); });
  addWhole("--building", "B", "load this building only", Need::optional,
           [this](std::int64_t id) { arguments_.building = id; });
}

void CommandOptions::takeVenues(const std::string& text) {
  auto ids = parseWholes(text);
  if (!ids) {
    throw CLI::ValidationError(
        "--venue", inQuotes(text) + " must be a whole number, such as 12, or several: 1,2");
  }
  auto sorted = *ids;
  std::ranges::sort(sorted);
  if (std::ranges::adjacent_find(sorted) != sorted.end()) {
    throw CLI::ValidationError("--venue", inQuotes(text) + " names a venue twice");
  }
  arguments_.venue.reset();
  arguments_.venues.clear();
  if (ids->size() == 1)
    arguments_.venue = ids->front();
  else
    arguments_.venues = *std::move(ids);
}

void CommandOptions::addAlternatives() {
  addRoute("alternatives");
  addNumberOf("match", "optimalPathMatchRatio",
              "the share of the route that it may share, up to 1 (default 0.6)");
  addNumberOf("distance", "optimalPathDistanceRatio",
              "how many times as long it may be (default 2)");
}

void CommandOptions::addNumberOf(const std::string& word, const std::string& option,
                                 const std::string& meaning) {
  const std::string name = "--" + word;
  addText(name, "R", meaning, Need::optional, [this, name, option](const std::string& text) {
    const auto number = parseNumber(text);
    if (!number)
      throw CLI::ValidationError(name, inQuotes(text) + " must be a number, such as 0.5");
    Value options = arguments_.request["options"];
    if (!options.isMap()) options = Value::map();
    options.set(option, *number);
    arguments_.request.set("options", std::move(options));
  });
}

void CommandOptions::addRoute(std::string_view operation) {
  arguments_.request = Value::map({{"op", operation}});
  addWholeOf("from", "W", "the waypoint where the route begins");
  addWholeOf("to", "W", "the waypoint where it ends");
  addWholeOf("accessibility", "N", "take only paths of this level or below (default 100)",
             Need::optional);
  addPicture();
}

void CommandOptions::addTour() {
  arguments_.request = Value::map({{"op", "tour"}});
  addWholeOf("from", "W", "the waypoint where the tour begins");
  addText("--visit", "D,...", "the destinations to visit, in any order", Need::required,
          [this](const std::string& text) {
            const auto ids = parseWholes(text);
            if (!ids) {
              throw CLI::ValidationError("--visit",
                                         inQuotes(text) + " must be whole numbers, such as 7,9,30");
            }
            Value list = Value::list();
            for (const std::int64_t id : *ids) list.append(id);
            arguments_.request.set("destinations", std::move(list));
          });
  addWholeOf("accessibility", "N", "take only paths of this level or below (default 100)",
             Need::optional);
  addPicture();
}

void CommandOptions::addPicture() {
  addText("--picture", "FILE", "draw the route to FILE.svg or FILE.html", Need::optional,
          [this](const std::string& file) {
            if (!file.ends_with(".svg") && !file.ends_with(".html")) {
              throw CLI::ValidationError("--picture",
                                         inQuotes(file) + " must end in .svg or .html");
            }
            arguments_.picture = file;
          });
}

void CommandOptions::addNearest() {
  arguments_.request = Value::map({{"op", "nearest"}});
  addWholeOf("map", "M", "the map to start from");
  addPointOf("at", "a point of the map, in map units");
  addWholeOf("destination", "D", "the destination to look for", Need::optional);
  addWholeOf("amenity", "A", "the amenity to look for", Need::optional);
  addWhole("--path-type", "P", "the path type to look for, such as lifts", Need::optional,
           [this](std::int64_t id) { arguments_.request.set("pathType", id); });
  addPicture();
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

void CommandOptions::addServe() {
  addText("--data", "DIR", "the venue folder to serve", Need::required, arguments_.data);
  addWholeWithin(0, 65'535, "--port", "P", "where to listen (default 0: any that is free)",
                 Need::optional,
                 [this](std::int64_t port) { arguments_.port = static_cast<int>(port); });
  addText("--listen", "ADDR", "the address to listen on (default 127.0.0.1)", Need::optional,
          arguments_.listen);
  arguments_.service.clientId = "local";
  addText("--client-id", "ID", "who may ask (default local)", Need::optional,
          arguments_.service.clientId);
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
  addCount("--venues", "how many venues, joined by their exits", options.venues);
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
  if (need == Need::requiredForHost) neededForHost_.push_back({option, label, meaning});
  if (need == Need::requiredForHost || need == Need::optionalForHost)
    hostOptions_.push_back(option);
}

void CommandOptions::addText(const std::string& name, const std::string& label,
                             const std::string& meaning, Need need, std::string& text) {
  addText(name, label, meaning, need, [&text](const std::string& given) { text = given; });
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

void CommandOptions::addWholeWithin(std::int64_t least, std::int64_t most, const std::string& name,
                                    const std::string& label, const std::string& meaning, Need need,
                                    const TakeWhole& take) {
  addWhole(name, label, meaning, need, [=](std::int64_t whole) {
    if (whole < least || whole > most) {
      throw CLI::ValidationError(name, std::to_string(whole) + " is out of range, " +
                                           std::to_string(least) + " to " + std::to_string(most));
    }
    take(whole);
  });
}

CLI::Option* CommandOptions::addFlag(const std::string& name, const std::string& meaning,
                                     bool& flag) {
  return app_.add_flag(name, flag, meaning)->disable_flag_override();
}

std::optional<std::string> CommandOptions::firstMissing(const std::vector<Needed>& options) {
  for (const Needed& needed : options) {
    if (needed.option->count() > 0) continue;
    return needed.option->get_name() + " " + needed.label + " is missing: " + needed.meaning;
  }
  return std::nullopt;
}

// The secret stands there so that no list of processes shows it.
void CommandOptions::takeEnvironment() {
  std::string& secret = arguments_.service.clientSecret;
  const char* const kept = std::getenv("TERN_CLIENT_SECRET");
  if (secret.empty() && kept != nullptr) secret = kept;
  if (secret.empty() && arguments_.command == "serve") secret = "local";
}

// Of several rules the first that is broken.
std::optional<std::string> CommandOptions::complaintOfSource() const {
  const HostOptions& host = arguments_.service;
  if (host.host.empty()) {
    for (const CLI::Option* option : hostOptions_) {
      if (option->count() > 0) return option->get_name() + " is for --host only";
    }
    if (!arguments_.data.empty()) return std::nullopt;
    return "--data DIR is missing: the venue folder to read; or --host URL, a service to ask";
  }
  if (!arguments_.data.empty()) return "--data and --host: one of them is wanted, not both";
  if (const auto missing = firstMissing(neededForHost_)) return missing;
  if (!host.clientSecret.empty()) return std::nullopt;
  return "the secret is missing: set TERN_CLIENT_SECRET, or name it with --client-secret S";
}

std::optional<std::string> CommandOptions::complaint() const {
  const std::vector<std::string> extras = app_.remaining();
  if (!extras.empty()) return inQuotes(extras.front()) + " is not understood here";
  const bool asksForVenues = arguments_.command != "generate" && arguments_.command != "serve";
  if (asksForVenues) {
    if (const auto wrong = complaintOfSource()) return wrong;
  }
  if (const auto missing = firstMissing(needed_)) return missing;
  if (!arguments_.venues.empty()) {
    if (arguments_.command != "route" && arguments_.command != "batch") {
      return "--venue: several venues are for route and batch; name one";
    }
    if (arguments_.building) return "--building: of several venues every building is loaded";
  }
  const Value& request = arguments_.request;
  if (arguments_.command == "nearest" && request.size() != 4) {
    return "one of --destination D, --amenity A and --path-type P is wanted";
  }
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
  for (const std::string& word : words) {
    for (const std::string flag : {"--json", "--no-reload", "--geojson", "--trace"}) {
      if (word.starts_with(flag + "=")) return flag + " takes no value";
    }
  }
  return message;
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
  takeEnvironment();
  if (const auto wrong = complaint()) return failure(*wrong);
  return std::move(arguments_);
}

bool isHelp(const std::string& word) { return word == "--help" || word == "-h"; }

// Without a command only help and the version make sense.
ParsedCall parseWithoutCommand(const std::vector<std::string>& words) {
  if (std::ranges::any_of(words, isHelp)) return Information{generalHelp()};
  if (std::ranges::find(words, "--version") != words.end()) {
    return Information{"tern " + std::string(version()) + "\n"};
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
