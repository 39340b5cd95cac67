#include "tools/tern/Arguments.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/HelpText.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

using Words = std::vector<std::string>;

// The arguments of a call whose words are right.
Arguments parsed(const Words& words) {
  const ParsedCall call = parseArguments(words);
  const auto* arguments = std::get_if<Arguments>(&call);
  if (arguments != nullptr) return *arguments;
  const auto* failure = std::get_if<Failure>(&call);
  ADD_FAILURE() << (failure != nullptr ? failure->error.message : "information");
  return {};
}

// The message of a call whose words are wrong.
std::string refusalOf(const Words& words) {
  const ParsedCall call = parseArguments(words);
  const auto* failure = std::get_if<Failure>(&call);
  if (failure == nullptr) return "not refused";
  EXPECT_EQ(failure->status, ExitStatus::wrongWords);
  EXPECT_EQ(failure->error.code, "TN006");
  return failure->error.message;
}

std::string informationOf(const Words& words) {
  const ParsedCall call = parseArguments(words);
  const auto* information = std::get_if<Information>(&call);
  return information != nullptr ? information->text : "no information";
}

TEST(Arguments, routeBecomesARequest) {
  const Arguments call = parsed({"route", "--data", "mall", "--from", "12", "--to=40", "--json"});
  EXPECT_EQ(call.command, &routeCommand);
  EXPECT_EQ(call.data, "mall");
  EXPECT_TRUE(call.json);
  EXPECT_TRUE(call.venues.empty());
  EXPECT_FALSE(call.building);
  EXPECT_EQ(call.request,
            Value::map({{"op", "route"}, {"from", 12}, {"to", 40}, {"accessibility", 100}}));
}

TEST(Arguments, accessibilityGoesIntoTheRequest) {
  const Words words = {"route", "--data", "d", "--from", "1", "--to", "2", "--accessibility", "-3"};
  EXPECT_EQ(parsed(words).request["accessibility"], Value(-3));
}

TEST(Arguments, closestTakesAPointOfNegativeNumbersInEitherForm) {
  const Value request =
      Value::map({{"op", "closest"}, {"map", 3}, {"at", Value::list({-12.5, 3.0})}});
  EXPECT_EQ(parsed({"closest", "--data", "d", "--map", "3", "--at", "-12.5,3"}).request, request);
  EXPECT_EQ(parsed({"closest", "--data", "d", "--map", "3", "--at=-12.5,3"}).request, request);
}

TEST(Arguments, convertNamesTwoProjections) {
  const Arguments call = parsed({"convert", "--data", "d", "--point", "13.4,52.5", "--from",
                                 "EPSG:4326", "--to", "tern:local"});
  EXPECT_EQ(call.request, Value::map({{"op", "convert"},
                                      {"point", Value::list({13.4, 52.5})},
                                      {"from", "EPSG:4326"},
                                      {"to", "tern:local"}}));
}

TEST(Arguments, optionsMayStandBeforeTheCommand) {
  const Arguments call =
      parsed({"--data", "info", "--json", "--venue", "2", "info", "--building=7"});
  EXPECT_EQ(call.command, &infoCommand);
  EXPECT_EQ(call.data, "info");
  EXPECT_EQ(call.venues, std::vector<std::int64_t>{2});
  EXPECT_EQ(call.building, 7);
  EXPECT_TRUE(call.json);
}

TEST(Arguments, optionOfTwoWordsIsOneInTheRequest) {
  const Arguments call =
      parsed({"nearest", "--data", "d", "--map", "1", "--at", "2,3", "--path-type", "4"});
  EXPECT_EQ(call.request["pathType"], Value(4));
}

TEST(Arguments, everyOptionOfAServiceHasItsPlace) {
  const Arguments call =
      parsed({"venues",      "--host",      "http://h:1/",     "--customer", "7",
              "--client-id", "id",          "--client-secret", "secret",     "--cache",
              "cache",       "--no-reload", "--locale",        "de-DE",      "--geojson",
              "--timeout",   "9",           "--ca-file",       "file",       "--trace"});
  EXPECT_EQ(call.data, "");
  EXPECT_EQ(call.service.host, "http://h:1");
  EXPECT_EQ(call.service.customer, 7);
  EXPECT_EQ(call.service.clientId, "id");
  EXPECT_EQ(call.service.clientSecret, "secret");
  EXPECT_EQ(call.service.cache, "cache");
  EXPECT_TRUE(call.service.noReload);
  EXPECT_EQ(call.service.locale, "de-DE");
  EXPECT_TRUE(call.service.geoJson);
  EXPECT_EQ(call.service.timeout, std::chrono::seconds(9));
  EXPECT_EQ(call.service.caFile, "file");
  EXPECT_TRUE(call.service.trace);
}

TEST(Arguments, missingOptionIsNamedWithItsMeaning) {
  EXPECT_EQ(refusalOf({"route", "--from", "1", "--to", "2"}),
            "--data DIR is missing: the venue folder to read; or --host URL, a service to ask "
            "(see tern route --help)");
  EXPECT_EQ(refusalOf({"route", "--data", "d", "--to", "2"}),
            "--from W is missing: where to start: a waypoint, or a place by its name "
            "(see tern route --help)");
  EXPECT_EQ(refusalOf({"route", "--data", "d", "--from"}),
            "--from W: a value is wanted: where to start: a waypoint, or a place by its name "
            "(see tern route --help)");
  EXPECT_THAT(refusalOf({"route", "--data", "--json", "--from", "1"}),
              StartsWith("--data DIR: a value is wanted before \"--json\": the venue folder"));
  EXPECT_THAT(refusalOf({"generate"}), StartsWith("--out DIR is missing"));
}

TEST(Arguments, wrongValueIsNamedWithWhatWouldBeRight) {
  EXPECT_EQ(refusalOf({"closest", "--data", "d", "--map", "one", "--at", "1,2"}),
            "--map: \"one\" must be a whole number, such as 12 (see tern closest --help)");
  EXPECT_THAT(refusalOf({"closest", "--data", "d", "--map", "1.5", "--at", "1,2"}),
              StartsWith("--map: \"1.5\""));
  EXPECT_THAT(refusalOf({"tour", "--data", "d", "--from", "1", "--visit", "7,,9"}),
              StartsWith("--visit: \"7,,9\" must be ids or names"));
  EXPECT_THAT(refusalOf({"route", "--data", "d", "--from=", "--to", "2"}),
              StartsWith("--from W: a value is wanted, not an empty text"));
  EXPECT_THAT(refusalOf({"info", "--data=", "mall"}), StartsWith("--data DIR: a value is wanted"));
  for (const char* text : {"1,", ",1", "1,,2", "1 2", "1,two", "1,2,1"}) {
    EXPECT_THAT(refusalOf({"batch", "--data", "d", "--venue", text}),
                StartsWith("--venue: \"" + std::string(text)));
  }
  EXPECT_THAT(refusalOf({"closest", "--data", "d", "--map", "3", "--at", "10"}),
              StartsWith("--at: \"10\" must be two numbers"));
  EXPECT_THAT(refusalOf({"route", "--data", "d", "--from", "1", "--to", "2", "--picture", "a.pdf"}),
              StartsWith("--picture: \"a.pdf\" must end in .svg, .html or .geojson"));
}

TEST(Arguments, projectionsAreNamedWhenOneIsWrong) {
  const auto convert = [](const char* from, const char* to) {
    return refusalOf({"convert", "--data", "d", "--point", "1,2", "--from", from, "--to", to});
  };
  EXPECT_THAT(convert("EPSG:1", "EPSG:3857"),
              StartsWith("--from: \"EPSG:1\" must be EPSG:4326, EPSG:3857 or tern:local"));
  EXPECT_THAT(convert("EPSG:3857", "epsg:4326"),
              StartsWith("--to: \"epsg:4326\" must be EPSG:4326"));
  EXPECT_THAT(convert("EPSG:4326", "EPSG:4326"),
              StartsWith("--from and --to: two different projections are wanted"));
}

TEST(Arguments, unknownWordIsNamedBeforeWhatIsMissing) {
  EXPECT_EQ(refusalOf({"route", "--form", "1"}),
            "\"--form\" is not understood here; do you mean --from? (see tern route --help)");
  EXPECT_THAT(refusalOf({"info", "--data", "d", "more"}), StartsWith("\"more\" is not understood"));
  EXPECT_THAT(refusalOf({"info", "--data", "d", "--from", "1"}), StartsWith("\"--from\""));
  EXPECT_THAT(refusalOf({"info", "--data", "d", "--json=yes"}),
              StartsWith("--json takes no value"));
}

TEST(Arguments, textOfSeveralWordsWantsQuotes) {
  EXPECT_EQ(refusalOf({"route", "--data", "d", "--from", "Everly", "Toys", "--to", "1"}),
            "\"Toys\" is not understood here; a text of several words stands in quotes "
            "(see tern route --help)");
}

TEST(Arguments, namesStandInTheRequestUntilTheVenueIsThere) {
  const Arguments route = parsed({"route", "--data", "d", "--from", "Coral Books", "--to", "007"});
  EXPECT_EQ(route.request["from"], Value("Coral Books"));
  EXPECT_EQ(route.request["to"], Value("007"));
  const Arguments tour = parsed({"tour", "--data", "d", "--from", "1", "--visit", "7,Bread, Co"});
  EXPECT_EQ(tour.request["destinations"], Value::list({7, "Bread", " Co"}));
}

TEST(Arguments, operandThatIsNeededIsAskedFor) {
  EXPECT_EQ(refusalOf({"completion"}),
            "SHELL is missing: the shell: bash, zsh or fish (see tern completion --help)");
  EXPECT_EQ(refusalOf({"completion", "ksh"}),
            "SHELL: \"ksh\" must be bash, zsh or fish (see tern completion --help)");
  EXPECT_EQ(parsed({"completion", "zsh"}).request["shell"], Value("zsh"));
}

TEST(Arguments, operandStandsAnywhereBehindTheCommand) {
  for (const Words& words : {Words{"places", "coral books", "--data", "d"},
                             Words{"places", "--data", "d", "--json", "coral books"},
                             Words{"--data", "d", "places", "coral books"}}) {
    EXPECT_EQ(parsed(words).request, Value::map({{"op", "places"}, {"text", "coral books"}}));
  }
  EXPECT_EQ(parsed({"places", "--data", "d"}).request, Value::map({{"op", "places"}}));
}

TEST(Arguments, moreThanOneOperandIsNotUnderstood) {
  EXPECT_THAT(refusalOf({"places", "coral", "books", "more", "--data", "d"}),
              StartsWith("\"books\" is not understood here"));
  EXPECT_THAT(refusalOf({"places", "--books", "--data", "d"}),
              StartsWith("\"--books\" is not understood here"));
  EXPECT_THAT(refusalOf({"places", "", "--data", "d"}), StartsWith("TEXT: a value is wanted"));
}

TEST(Arguments, repeatedOptionIsRefused) {
  EXPECT_THAT(refusalOf({"route", "--data", "d", "--from", "1", "--from", "2", "--to", "3"}),
              StartsWith("--from: stands there twice; once is enough"));
  EXPECT_TRUE(parsed({"info", "--data", "d", "--json", "--json"}).json);
}

TEST(Arguments, severalVenuesAreForRouteAndBatch) {
  const Arguments call =
      parsed({"route", "--data", "d", "--venue", "1,2", "--from", "1", "--to", "2"});
  EXPECT_EQ(call.venues, (std::vector<std::int64_t>{1, 2}));
  EXPECT_THAT(refusalOf({"info", "--data", "d", "--venue", "1,2"}),
              StartsWith("--venue: several venues are for route, batch, explore, serve; name one"));
  EXPECT_THAT(refusalOf({"batch", "--data", "d", "--venue", "1,2", "--building", "1"}),
              StartsWith("--building: of several venues"));
}

TEST(Arguments, ratiosOfAlternativesBecomeOptions) {
  const Arguments call = parsed({"alternatives", "--data", "d", "--from", "1", "--to", "2",
                                 "--match", "0.3", "--distance", "1.5"});
  EXPECT_EQ(encodeJson(call.request, JsonLayout::compact),
            R"({"op":"alternatives","from":1,"to":2,"accessibility":100,)"
            R"("options":{"optimalPathMatchRatio":0.3,"optimalPathDistanceRatio":1.5}})");
  EXPECT_THAT(
      refusalOf({"alternatives", "--data", "d", "--from", "1", "--to", "2", "--match", "x"}),
      StartsWith("--match: \"x\" must be a finite number"));
}

TEST(Arguments, unknownCommandIsNamedWithThoseThereAre) {
  EXPECT_EQ(refusalOf({"fly"}),
            "\"fly\" is no command; there are venues, info, floors, places, route, nearest, "
            "alternatives, tour, matrix, reach, "
            "closest, convert, batch, explore, serve, generate, check, import, completion, man "
            "(see tern --help)");
}

TEST(Arguments, whatIsNearlyACommandOrAnOptionIsNamed) {
  EXPECT_THAT(refusalOf({"ruote"}),
              StartsWith("\"ruote\" is no command; do you mean route?; there are venues"));
  EXPECT_THAT(
      refusalOf({"route", "--acessibilty=3", "--data", "d"}),
      StartsWith("\"--acessibilty=3\" is not understood here; do you mean --accessibility?"));
  EXPECT_EQ(refusalOf({"route", "--fast", "--data", "d"}),
            "\"--fast\" is not understood here (see tern route --help)");
}

TEST(Arguments, commandIsTheFirstWordThatIsNoOption) {
  EXPECT_THAT(refusalOf({"--data=mall", "fly"}), StartsWith("\"fly\" is no command"));
  EXPECT_THAT(refusalOf({"--json", "fly"}), StartsWith("\"fly\" is no command"));
  EXPECT_THAT(refusalOf({"--data", "info", "--venue", "1", "fly"}), StartsWith("\"fly\" is no"));
  EXPECT_THAT(refusalOf({"--data"}), StartsWith("a command is missing"));
}

TEST(Arguments, commandIsNeeded) {
  EXPECT_THAT(refusalOf({}), StartsWith("a command is missing; there are venues"));
  EXPECT_THAT(refusalOf({"--data", "d"}), StartsWith("a command is missing"));
}

TEST(Arguments, helpComesBeforeComplaints) {
  EXPECT_THAT(informationOf({"--help"}), HasSubstr("tern COMMAND"));
  EXPECT_THAT(informationOf({"-h"}), HasSubstr("tern COMMAND"));
  EXPECT_THAT(informationOf({"--help", "route"}), HasSubstr("tern route --data mall"));
  EXPECT_EQ(informationOf({"route", "--help"}), helpOf(routeCommand, {}));
  EXPECT_EQ(informationOf({"route", "--from", "x", "-h"}), helpOf(routeCommand, {}));
}

TEST(Arguments, versionIsThatOfTheLibrary) {
  EXPECT_THAT(informationOf({"--version"}),
              testing::MatchesRegex("tern [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Arguments, jsonIsSeenInWordsThatAreWrong) {
  EXPECT_TRUE(asksForJson(Words{"fly", "--json"}));
  EXPECT_FALSE(asksForJson(Words{"fly", "--jsonx"}));
  EXPECT_FALSE(asksForJson(Words{}));
}

// Every way in which each option of each command can be wrong.
class WrongOptionTest : public testing::TestWithParam<const Command*> {
 protected:
  // What is said of these words, without the help that it names.
  static std::string said(Words words) {
    words.insert(words.begin(), std::string(GetParam()->name));
    const std::string refusal = refusalOf(words);
    const std::string help = " (see tern " + std::string(GetParam()->name) + " --help)";
    EXPECT_TRUE(refusal.ends_with(help)) << refusal;
    return refusal.substr(0, refusal.size() - std::min(refusal.size(), help.size()));
  }
  static std::vector<Option> valued() {
    std::vector<Option> options = optionsOf(*GetParam());
    std::erase_if(options, [](const Option& option) { return option.isFlag(); });
    return options;
  }
  static std::string nameOf(const Option& option) { return std::string(option.name); }
  static std::string titleOf(const Option& option) {
    return nameOf(option) + " " + std::string(option.label);
  }
  static std::string meaningOf(const Option& option) { return ": " + std::string(option.meaning); }
  static std::optional<std::string> complaintOf(const Option& option, const std::string& text) {
    const Reading reading = option.read(text);
    const auto* complaint = std::get_if<std::string>(&reading);
    return complaint != nullptr ? std::optional(*complaint) : std::nullopt;
  }
  // A value that is right.
  static std::string valueFor(const Option& option) {
    for (const char* text : {"1", "1,2", "http://h", "a.svg", "EPSG:4326", "bash"}) {
      if (!complaintOf(option, text)) return text;
    }
    ADD_FAILURE() << "nothing is right for " << option.name;
    return "";
  }
};

TEST_P(WrongOptionTest, missingValueIsTold) {
  for (const Option& option : valued()) {
    EXPECT_EQ(said({nameOf(option)}), titleOf(option) + ": a value is wanted" + meaningOf(option));
    EXPECT_EQ(said({nameOf(option), "--json"}),
              titleOf(option) + ": a value is wanted before \"--json\"" + meaningOf(option));
  }
}

TEST_P(WrongOptionTest, emptyValueIsTold) {
  for (const Option& option : valued()) {
    const std::string expected =
        titleOf(option) + ": a value is wanted, not an empty text" + meaningOf(option);
    EXPECT_EQ(said({nameOf(option), ""}), expected);
    EXPECT_EQ(said({nameOf(option) + "=", "1"}), expected);
  }
}

TEST_P(WrongOptionTest, valueOfTheWrongKindIsTold) {
  for (const Option& option : valued()) {
    bool isRefused = false;
    for (const char* text : {"x", "1.5", "-1", "99999999999999999999", "1e999", "1,,2", "nan"}) {
      const auto complaint = complaintOf(option, text);
      if (!complaint) continue;
      isRefused = true;
      EXPECT_EQ(said({nameOf(option), text}), nameOf(option) + ": " + *complaint);
      EXPECT_EQ(said({nameOf(option) + "=" + text}), nameOf(option) + ": " + *complaint);
    }
    const bool takesAnything = option.read == readText || option.read == readPlace;
    EXPECT_NE(isRefused, takesAnything) << option.name;
  }
}

TEST_P(WrongOptionTest, optionThatStandsThereTwiceIsTold) {
  for (const Option& option : valued()) {
    EXPECT_EQ(said({nameOf(option), valueFor(option), nameOf(option) + "=" + valueFor(option)}),
              nameOf(option) + ": stands there twice; once is enough");
  }
}

TEST_P(WrongOptionTest, flagWithAValueIsTold) {
  for (const Option& option : optionsOf(*GetParam())) {
    if (!option.isFlag()) continue;
    EXPECT_EQ(said({nameOf(option) + "=true"}), nameOf(option) + " takes no value");
    EXPECT_EQ(said({nameOf(option) + "="}), nameOf(option) + " takes no value");
  }
}

TEST_P(WrongOptionTest, misspelledOptionIsTold) {
  for (const Option& option : optionsOf(*GetParam())) {
    EXPECT_EQ(
        said({nameOf(option) + "x"}),
        "\"" + nameOf(option) + "x\" is not understood here; do you mean " + nameOf(option) + "?");
  }
}

TEST_P(WrongOptionTest, missingOptionIsTold) {
  for (const Option& missing : GetParam()->options) {
    if (!missing.need.isRequired) continue;
    Words words;
    if (loadsData(*GetParam())) words = {"--data", "d"};
    const Option& operand = GetParam()->operand;
    if (operand.need.isRequired) words.push_back(valueFor(operand));
    for (const Option& option : GetParam()->options) {
      if (!option.need.isRequired || option.name == missing.name) continue;
      words.insert(words.end(), {nameOf(option), valueFor(option)});
    }
    EXPECT_EQ(said(words), titleOf(missing) + " is missing" + meaningOf(missing));
  }
}

TEST_P(WrongOptionTest, wordTooManyIsTold) {
  EXPECT_EQ(said({"bash", "more"}).find("\"bash\" is not"),
            GetParam()->operand.name.empty() ? 0U : std::string::npos);
  EXPECT_THAT(said({"bash", "more"}), HasSubstr("is not understood here; a text of several words"));
}

INSTANTIATE_TEST_SUITE_P(Arguments, WrongOptionTest,
                         testing::ValuesIn(allCommands().begin(), allCommands().end()),
                         [](const auto& tested) { return std::string(tested.param->name); });

}  // namespace
}  // namespace tern::command
