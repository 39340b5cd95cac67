#include "TernCoreKit/answers/TernAnswers.hpp"

#include <cstdint>
#include <string_view>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/answers/detail/KnownPlaces.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/answers/detail/RequestFields.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5 {

namespace {

using detail::Operation;
using detail::RequestFields;

Value notBuiltYet() {
  return errorAnswer(TernError::initWithErrorType(TernErrorTypeObjectNotFound,
                                                  "what routes are searched in is not built yet"));
}

Value outOfMemoryAnswer() {
  return errorAnswer(TernError::initWithErrorType(TernErrorTypeUndefined, detail::outOfMemory,
                                                  detail::outOfMemory));
}

Value unknownOperation(std::string_view name) {
  std::string message = "\"op\" is \"" + shortened(name) + "\", which is not known; there are ";
  std::string_view gap;
  for (const Operation& operation : detail::operations()) {
    message.append(std::exchange(gap, ", ")).append(operation.name);
  }
  return refusal(std::move(message));
}

// What is asked: one venue or several that are joined, and the names in them.
struct Asked {
  TernActiveVenue* venue;
  const TernMultiActiveVenues* venues;
  detail::KnownPlaces& places;
};

Value ask(TernActiveVenue* venue, detail::KnownPlaces& places, const Operation& operation,
          RequestFields& fields) {
  const bool isBuilt = venue != nullptr && venue->globalASGrid() && venue->nearestElement();
  if (!isBuilt) return notBuiltYet();
  return operation.answerPlaces != nullptr ? operation.answerPlaces(*places.of(*venue), fields)
                                           : operation.answer(*venue, fields);
}

Value askAmong(const Asked& asked, const Operation& operation, RequestFields& fields) {
  const TernMultiActiveVenues& venues = *asked.venues;
  if (operation.answerJoined != nullptr) {
    return venues.globalASGrid() ? operation.answerJoined(venues, fields) : notBuiltYet();
  }
  const std::int64_t id = fields.integer("venue");
  if (fields.error()) return {};
  if (const auto venue = venues.getVenueById(id)) {
    return ask(venue.get(), asked.places, operation, fields);
  }
  return refusal(std::string(operation.name) + ": \"venue\" is " + std::to_string(id) +
                 ", which is not loaded");
}

Value answerToMap(const Asked& asked, const Value& request) {
  RequestFields fields(request);
  const std::string_view name = fields.text("op");
  if (fields.error()) return refusal(*fields.error());
  const Operation* operation = detail::findOperation(name);
  if (operation == nullptr) return unknownOperation(name);
  Value answer = asked.venues != nullptr ? askAmong(asked, *operation, fields)
                                         : ask(asked.venue, asked.places, *operation, fields);
  return fields.error() ? refusal(std::string(name) + ": " + *fields.error()) : answer;
}

Value behindId(const Value& id, Value answer) {
  Value result = Value::map({{"id", id}});
  for (Value::Entry& entry : answer.entries()) result.set(entry.key.text(), std::move(entry.value));
  return result;
}

}  // namespace

TernAnswers::TernAnswers(std::shared_ptr<TernActiveVenue> venue)
    : venue_(std::move(venue)), places_(std::make_shared<detail::KnownPlaces>()) {}

TernAnswers::TernAnswers(std::shared_ptr<TernMultiActiveVenues> venues)
    : venues_(std::move(venues)), places_(std::make_shared<detail::KnownPlaces>()) {}

Value TernAnswers::answer(const Value& request) const {
  Value answered;
  const auto ask = [&] { answered = answerOf(request); };
  return detail::attempt(ask) ? answered : outOfMemoryAnswer();
}

Value TernAnswers::answerOf(const Value& request) const {
  if (!request.isMap()) return refusal("a request is a JSON object with an \"op\"");
  Value answer = answerToMap({venue_.get(), venues_.get(), *places_}, request);
  const Value* id = request.find("id");
  return id != nullptr ? behindId(*id, std::move(answer)) : answer;
}

std::string TernAnswers::answerText(std::string request) const {
  std::string text;
  const auto answerIt = [&] {
    const JsonResult decoded = decodeJson(std::move(request));
    const Value answered =
        decoded.error ? refusal("not JSON: " + *decoded.error) : answer(decoded.value);
    text = encodeJson(answered, JsonLayout::compact);
  };
  return detail::attempt(answerIt) ? text : encodeJson(outOfMemoryAnswer(), JsonLayout::compact);
}

}  // namespace tern
