#include "tools/check/CheckVenue.hpp"

#include <algorithm>
#include <span>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

constexpr std::size_t shownAtMost = 5;

std::string counted(std::size_t count, std::string_view plural) {
  std::string text = std::to_string(count) + " " + std::string(plural);
  if (count == 1) text.pop_back();
  return text;
}

// "Harbour Plaza (venue 1): 2 buildings, 7 floors, 812 waypoints, 900 paths, 60 destinations"
std::string sizesText(const Subject& subject) {
  const TernActiveVenue& venue = subject.venue;
  const std::size_t buildings = venue.buildings ? venue.buildings->getCount() : 0;
  const std::size_t floors = venue.buildings ? venue.buildings->getAllFloors().size() : 0;
  const std::size_t places = venue.destinations ? venue.destinations->getCount() : 0;
  return std::string(venue.name.text()) + " (venue " + venue.id.printed() +
         "): " + counted(buildings, "buildings") + ", " + counted(floors, "floors") + ", " +
         counted(subject.network.nodes().size(), "waypoints") + ", " +
         counted(venue.globalASGrid()->paths().size(), "paths") + ", " +
         counted(places, "destinations") + "\n";
}

// 3 islands: join them to the rest with a path, or take them out
//   waypoints 4 and 5 on Ground Floor are joined to nothing else, 2 of 812 in all
std::string kindText(std::span<const Finding> findings) {
  const KindText& words = textOf(findings.front().kind);
  std::string text = "\n" + std::to_string(findings.size()) + " " +
                     std::string(findings.size() == 1 ? words.singular : words.plural) + ": " +
                     std::string(words.advice) + "\n";
  const std::size_t shown = findings.size() > shownAtMost + 1 ? shownAtMost : findings.size();
  for (const Finding& finding : findings.first(shown)) text += "  " + finding.message + "\n";
  if (shown < findings.size()) {
    text += "  and " + std::to_string(findings.size() - shown) + " more\n";
  }
  return text;
}

}  // namespace

Findings checkVenue(const Subject& subject) {
  Findings findings;
  for (const auto check :
       {checkIslands, checkTraps, checkPlaces, checkMovers, checkReferences, checkRepeats,
        checkLengths, checkWalls, checkParts, checkNames, checkPlacement}) {
    check(subject, findings);
  }
  std::ranges::stable_sort(findings, {}, &Finding::kind);
  return findings;
}

bool hasFailure(const Findings& findings) {
  return std::ranges::any_of(findings, isFailure, &Finding::kind);
}

Value reportOf(const Findings& findings) {
  Value list = Value::list();
  for (const Finding& finding : findings) {
    Value ids = Value::list();
    for (const std::int64_t id : finding.ids) ids.append(id);
    list.append(Value::map({{"kind", textOf(finding.kind).name},
                            {"ids", std::move(ids)},
                            {"map", finding.map ? Value(*finding.map) : Value(nullptr)},
                            {"message", finding.message}}));
  }
  return Value::map({{"findings", std::move(list)}});
}

std::string reportText(const Subject& subject, const Findings& findings) {
  std::string text = sizesText(subject);
  for (auto first = findings.begin(); first != findings.end();) {
    const auto last = std::find_if(
        first, findings.end(), [&](const Finding& finding) { return finding.kind != first->kind; });
    text += kindText(std::span(first, last));
    first = last;
  }
  if (findings.empty()) text += "Nothing found.\n";
  return text;
}

}  // namespace tern::check
