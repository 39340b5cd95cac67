#include "tools/tern/Telling.hpp"

#include <utility>

#include "tools/tern/RouteFile.hpp"

namespace tern::command {

Outcome outcomeOf(const Arguments& call, const Value& answer, const Telling& told) {
  if (told.picture && !call.picture.empty()) {
    if (auto failure = writePicture(call.picture, *told.picture)) return *std::move(failure);
  }
  Answer shown{.status = told.isFound ? ExitStatus::answered : ExitStatus::nothingFound,
               .text = call.json ? jsonLine(answer) : told.text,
               .remark = told.remark};
  if (told.isFound && !told.picture && !call.picture.empty()) {
    shown.remark += shown.remark.empty() ? "" : "; ";
    shown.remark += "--picture: there is no way to draw";
  }
  return shown;
}

}  // namespace tern::command
