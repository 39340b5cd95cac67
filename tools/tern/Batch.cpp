#include "tools/tern/Batch.hpp"

#include <string>
#include <string_view>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Failure.hpp"

namespace tern::command {

namespace {

bool isBlank(const LineReader::Line& line) {
  return !line.tooLong && line.text.find_first_not_of(" \t\r") == std::string_view::npos;
}

Value tooLongAnswer(std::size_t longestBytes) {
  return notUnderstoodAnswer("the line is longer than " + std::to_string(longestBytes) + " bytes");
}

}  // namespace

void answerLines(LineReader& lines, Requests& requests, Output& output) {
  while (output.error() == 0) {
    if (!lines.hasLine()) output.flush();
    const auto line = lines.next();
    if (!line) return;
    if (isBlank(*line)) continue;
    const Value answer = line->tooLong ? tooLongAnswer(lines.longestBytes())
                                       : requests.answerText(std::string(line->text));
    output.write(encodeJson(answer, JsonLayout::compact));
    output.write("\n");
  }
}

}  // namespace tern::command
