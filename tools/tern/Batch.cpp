#include "tools/tern/Batch.hpp"

#include <string>
#include <string_view>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::command {

namespace {

bool isBlank(const LineReader::Line& line) {
  return !line.tooLong && line.text.find_first_not_of(" \t\r") == std::string_view::npos;
}

std::string tooLongAnswer(std::size_t longestBytes) {
  const Value answer =
      refusal("the line is longer than " + std::to_string(longestBytes) + " bytes");
  return encodeJson(answer, JsonLayout::compact);
}

}  // namespace

void answerLines(LineReader& lines, TernAnswers& answers, Output& output) {
  while (output.error() == 0) {
    if (!lines.hasLine()) output.flush();
    const auto line = lines.next();
    if (!line) return;
    if (isBlank(*line)) continue;
    output.write(line->tooLong ? tooLongAnswer(lines.longestBytes())
                               : answers.answerText(std::string(line->text)));
    output.write("\n");
  }
}

}  // namespace tern::command
