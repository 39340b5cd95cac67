// Requests: a list of them, each a JSON document or a text of any bytes, to one venue and to joined
// ones.
#include <algorithm>
#include <memory>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "fuzz/SeedDocuments.hpp"
#include "fuzz/Target.hpp"
#include "fuzz/VenueChecks.hpp"

namespace tern::fuzz {
namespace {

std::shared_ptr<TernActiveVenue> built(const Value& documents) {
  auto venue = venueOf(documents);
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

// An exact order of many stops takes its time, on purpose.
bool isLong(const Value& request) {
  constexpr std::size_t fewStops = 10;
  return request["matrix"].size() > fewStops || request["destinations"].size() > fewStops;
}

void checkAnswer(const TernAnswers& answers, const Value& request) {
  const std::string text =
      request.isText() ? std::string(request.text()) : encodeJson(request, JsonLayout::compact);
  const std::string line = answers.answerText(text);
  require(line.find('\n') == std::string::npos, "an answer is one line");
  const JsonResult answer = decodeJson(line);
  require(!answer.error && answer.value.isMap() && answer.value.size() > 0, "an answer is a map");
  const Value* id = request.find("id");
  if (id != nullptr) {
    require(answer.value.entries().front().key == Value("id"), "an answer begins with the id");
    require(
        encodeJson(answer.value["id"], JsonLayout::compact) == encodeJson(*id, JsonLayout::compact),
        "which is the request's");
  }
  if (const Value* error = answer.value.find("error"); error != nullptr && error->isMap()) {
    require(!(*error)["code"].text().empty(), "an error has a code");
  }
}

void run(const std::string& text) {
  const JsonResult requests = decodeJson(text);
  if (requests.error) return;
  const TernAnswers one(built(smallVenue()));
  for (const Value& request : requests.value.items()) {
    if (!isLong(request)) checkAnswer(one, request);
  }
  static const auto joined =
      TernMultiActiveVenues::initWithActiveVenues({built(exitVenue(1, 2)), built(exitVenue(2, 1))});
  const TernAnswers several(joined);
  for (const Value& request : requests.value.items()) {
    if (!isLong(request)) checkAnswer(several, request);
  }
}

std::vector<std::string> seeds() {
  std::vector<std::string> texts;
  Value all = Value::list();
  for (const Value& request : smallRequests()) {
    all.append(request);
    texts.push_back(encodeJson(Value::list({request}), JsonLayout::compact));
  }
  texts.push_back(encodeJson(all, JsonLayout::compact));
  texts.push_back(R"([{"op":"route","venue":1,"from":101,"to":203},"{\"op\":","\ud83d\ude00"])");
  return texts;
}

}  // namespace

extern const Target requestsTarget{
    .name = "requests", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
