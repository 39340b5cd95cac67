#include "tools/tern/Telling.hpp"

#include <utility>

#include "tools/tern/RouteFile.hpp"

namespace tern::command {

Outcome outcomeOf(const Arguments& call, const Value& answer, const Telling& told) {
  const bool isDrawn = told.picture || told.features;
  if (isDrawn && !call.picture.empty()) {
    auto failure = told.features ? writeFeatures(call.picture, *told.features)
                                 : writePicture(call.picture, *told.picture);
    if (failure) return *std::move(failure);
  }
  Answer shown{.status = told.isFound ? ExitStatus::answered : ExitStatus::nothingFound,
               .text = call.json ? jsonLine(answer) : told.text,
               .remark = told.remark};
  if (told.isFound && !isDrawn && !call.picture.empty()) {
    shown.remark += shown.remark.empty() ? "" : "; ";
    shown.remark += "--picture: there is no way to draw";
  }
  return shown;
}

}  // namespace tern::command
