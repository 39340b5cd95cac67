// The command's words, a JSON list of texts: they are a call, a page of help, or a complaint in one
// line; a call about a venue is answered.
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/SeedDocuments.hpp"
#include "fuzz/Target.hpp"
#include "fuzz/VenueChecks.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/PlaceNames.hpp"

namespace tern::fuzz {
namespace {

using command::AboutVenue;
using command::Answer;
using command::Arguments;
using command::ExitStatus;
using command::Failure;
using command::Information;

void checkOutcome(const Arguments& call, const command::Outcome& outcome) {
  if (const auto* failure = std::get_if<Failure>(&outcome)) {
    require(!failure->error.message.empty(), "a failure says why");
    return;
  }
  const auto& answer = std::get<Answer>(outcome);
  require(answer.status == ExitStatus::answered || answer.status == ExitStatus::nothingFound,
          "a question is answered, or there is nothing");
  if (!call.json) return;
  require(answer.text.find('\n') + 1 == answer.text.size(), "with --json an answer is one line");
  require(!decodeJson(answer.text).error, "of JSON");
}

// Only what neither reads, writes nor sends.
void ask(const Arguments& call) {
  static const std::shared_ptr<TernActiveVenue> venue = [] {
    auto made = venueOf(smallVenue());
    made->loadGridData();
    made->loadKDTree();
    return made;
  }();
  const auto* about = std::get_if<AboutVenue>(&call.command->about);
  const bool isLong = call.request["destinations"].size() > 10 || call.request["visit"].size() > 10;
  if (about == nullptr || !call.picture.empty() || isLong) return;
  checkOutcome(call, command::answerAbout(*about, call, venue));
}

void run(const std::string& text) {
  const JsonResult decoded = decodeJson(text);
  if (decoded.error) return;
  std::vector<std::string> words;
  for (const Value& word : decoded.value.items()) words.push_back(word.printed());
  const command::ParsedCall call = command::parseArguments(words);
  if (const auto* failure = std::get_if<Failure>(&call)) {
    require(failure->status == ExitStatus::wrongWords, "wrong words end with their own status");
    require(!failure->error.message.empty() && failure->error.code == "TN006",
            "a complaint says what is wrong");
  } else if (const auto* information = std::get_if<Information>(&call)) {
    require(!information->text.empty(), "a page says something");
  } else {
    const auto& arguments = std::get<Arguments>(call);
    require(arguments.request["op"] == Value(arguments.command->name), "a call names its command");
    require(arguments.data.empty() || arguments.service.host.empty(), "there is one source");
    ask(arguments);
  }
  static_cast<void>(command::asksForJson(words));
}

std::vector<std::string> seeds() {
  return {
      R"(["route","--data","d","--from","1","--to=8","--accessibility","0","--json"])",
      R"(["alternatives","--data","d","--from","1","--to","4","--match","0.3","--distance","2"])",
      R"(["tour","--data","d","--from","1","--visit","7,8,9","--json"])",
      R"(["route","--data","d","--from","1","--to","toilets"])",
      R"(["nearest","--data","d","--map","1","--at","-12.5,3","--amenity","8"])",
      R"(["closest","--json","--data","d","--map","1","--at=4e2,300"])",
      R"(["convert","--data","d","--point","400,300","--from","tern:local","--to","EPSG:4326"])",
      R"(["--data","d","--venue","1,2","info","--building=1","--json"])",
      R"(["venues","--host","http://h:1/","--customer","7","--client-id","i","--client-secret","s",)"
      R"("--cache","c","--no-reload","--locale","de","--geojson","--timeout","9","--trace"])",
      R"(["generate","--out","o","--shops","300","--floors","5","--seed","7","--buildings","2"])",
      R"(["serve","--data","d","--port","8080"])",
      R"(["route","--help"])",
      R"(["--version"])",
      R"([])"};
}

}  // namespace

extern const Target wordsTarget{.name = "words", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
