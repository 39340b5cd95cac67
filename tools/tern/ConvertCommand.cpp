#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/AnswerLog.hpp"
#include "tools/tern/RequestCommands.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

Outcome answerConvert(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const AnswerLog log;
  const Value answer = TernAnswers(venue).answer(call.request);
  // What cannot be converted is (0, 0) and a line in the log.
  Telling told{.remark = log.text()};
  told.isFound = told.remark.empty();
  if (told.isFound) {
    const auto point = answer["point"].items();
    told.text = numberText(point[0].number()) + "," + numberText(point[1].number()) + "\n";
  }
  return outcomeOf(call, answer, told);
}

}  // namespace tern::command
