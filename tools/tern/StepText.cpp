#include "tools/tern/StepText.hpp"

#include <algorithm>
#include <new>
#include <utility>

#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

// "   2. Turn left at Coral Books, 15 m"
std::string lineOf(const TernStep& step, std::size_t number, std::string_view language) {
  const std::string count = std::to_string(number);
  std::string line = std::string(4 - std::min<std::size_t>(count.size(), 3), ' ') + count + ". ";
  line += onOneLine(step.text);
  if (step.mm >= 500) line += ", " + TernGuidance::lengthText(step.mm, language);
  return line + "\n";
}

}  // namespace

std::string stepsText(const std::vector<TernStep>& steps,
                      const std::function<std::string(std::int64_t mapId)>& floorName,
                      std::string_view language) {
  std::string text;
  std::string floor;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    std::string here = floorName(steps[i].mapId);
    if (here != floor) text += onOneLine(here) + "\n";
    floor = std::move(here);
    text += lineOf(steps[i], i + 1, language);
  }
  const bool hasScale =
      std::ranges::any_of(steps, [](const TernStep& step) { return step.mm > 0; });
  return hasScale ? text + TernGuidance::sumOf(steps, language) + "\n" : text;
}

std::vector<TernStep> stepsOf(const TernGuidance& guidance, const TernRoute& route,
                              std::string_view language) {
  auto steps = guidance.stepsOf(route, language);
  if (!steps) throw std::bad_alloc();
  return *std::move(steps);
}

std::vector<std::int64_t> landmarksOf(const std::vector<TernStep>& steps) {
  std::vector<std::int64_t> ids;
  for (const TernStep& step : steps) {
    if (step.landmark) ids.push_back(step.landmark->id);
  }
  return ids;
}

}  // namespace tern::command
