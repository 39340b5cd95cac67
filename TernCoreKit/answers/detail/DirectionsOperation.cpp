// A route told in steps. Fails: by std::bad_alloc, which becomes the answer.
#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/guidance/TernGuidance.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr std::array<std::string_view, 5> kinds = {"depart", "turn", "mover", "crossing", "arrive"};
constexpr std::array<std::string_view, 7> directions = {
    "left", "right", "slight left", "slight right", "sharp left", "sharp right", "around"};

template <class Number>
Value numberOrNull(const std::optional<Number>& number) {
  return number ? Value(*number) : Value(nullptr);
}

Value stepPart(const TernStep& step) {
  const auto direction = [&]() -> Value {
    if (!step.direction) return nullptr;
    return directions[static_cast<std::size_t>(*step.direction)];
  };
  const auto landmark = [&]() -> Value {
    if (!step.landmark) return nullptr;
    return Value::map({{"kind", "destination"}, {"id", step.landmark->id}});
  };
  return Value::map({{"kind", kinds[static_cast<std::size_t>(step.kind)]},
                     {"direction", direction()},
                     {"mapId", step.mapId},
                     {"at", step.at},
                     {"mm", step.mm},
                     {"seconds", step.seconds},
                     {"mover", numberOrNull(step.mover)},
                     {"toMapId", numberOrNull(step.toMapId)},
                     {"landmark", landmark()},
                     {"text", step.text}});
}

}  // namespace

Value answerDirections(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.level();
  const std::string_view language = fields.has("language") ? fields.text("language") : "en";
  if (fields.error()) return {};
  const auto grid = venue.globalASGrid();
  const auto start = grid->getWPById(from);
  const auto end = grid->getWPById(to);
  const TernRoute route = start && end ? venue.wayfind(start, end, level) : TernRoute();
  // The venue outlives the question.
  const std::shared_ptr<const TernVenueData> shared(std::shared_ptr<void>(), &venue);
  double mm = 0;
  double seconds = 0;
  std::vector<Value> steps;
  const auto told = TernGuidance({shared}, grid).stepsOf(route, language);
  if (!told) breakOffAttempt();
  for (const TernStep& step : *told) {
    mm += step.mm;
    seconds += step.seconds;
    steps.push_back(stepPart(step));
  }
  Value answer = answerOf("route", routePart(route));
  answer.set("steps", Value::listOf(steps));
  answer.set("mm", mm);
  answer.set("seconds", seconds);
  return answer;
}

}  // namespace tern::detail
