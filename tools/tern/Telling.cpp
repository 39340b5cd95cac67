#include "tools/tern/Telling.hpp"

#include <utility>

#include "tools/tern/RouteFile.hpp"

namespace tern::command {

Outcome outcomeOf(const Arguments& call, const Value& answer, const Telling& told) {
  if (told.picture && !call.picture.empty()) {
    if (auto failure = writePicture(call.picture, *told.picture)) return *std::move(failure);
  }
  return Answer{.status = told.isFound ? ExitStatus::answered : ExitStatus::nothingFound,
                .text = call.json ? jsonLine(answer) : told.text,
                .remark = told.remark};
}

}  // namespace tern::command
