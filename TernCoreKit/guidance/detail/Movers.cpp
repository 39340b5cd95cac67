#include "TernCoreKit/guidance/detail/Movers.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "TernCoreKit/guidance/detail/PhraseBook.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr std::array<std::string_view, 7> kindNames = {
    "lift", "escalator", "stairs", "ramp", "movingWalkway", "gate", "other"};

// Metres a second, free walking on the level and the horizontal share on stairs: U. Weidmann,
// Transporttechnik der Fussgaenger, ETH Zuerich 1993.
constexpr double walkingSpeed = 1.34;
constexpr double stairsUpSpeed = 0.61;
constexpr double stairsDownSpeed = 0.69;
// What escalators and moving walkways usually run at; EN 115-1 allows 0.75.
constexpr double escalatorSpeed = 0.5;
constexpr double walkwaySpeed = 0.65;
// A lift: the interval that office buildings are planned for, doors, and the way between floors
// (CIBSE Guide D, Transportation systems in buildings).
constexpr double liftWait = 30;
constexpr double liftDoors = 8;
constexpr double liftSpeed = 1.0;
// A floor's height, and how far stairs and escalators of 30 degrees go for it.
constexpr double floorHeight = 4;
constexpr double stairsRun = 6.9;
constexpr double escalatorRun = 8;

// The path type's own speed, where it can be one in metres a second.
double speedOf(const TernPathType* pathType, double otherwise) {
  const double own = pathType != nullptr ? pathType->speed.number() : 0;
  return own >= 0.1 && own <= 10 ? own : otherwise;
}

}  // namespace

MoverKind moverKindOf(const TernPathType* pathType) {
  if (pathType == nullptr) return MoverKind::other;
  const std::string_view known = PhraseBook::moverKind(pathType->name.text());
  const auto found = std::ranges::find(kindNames, known);
  return found != kindNames.end() ? static_cast<MoverKind>(found - kindNames.begin())
                                  : MoverKind::other;
}

std::string_view moverName(MoverKind kind) { return kindNames[static_cast<std::size_t>(kind)]; }

std::shared_ptr<const TernPathType> pathTypeOf(const MapPlace& place, std::int64_t id) {
  if (place.venue == nullptr || !place.venue->pathTypes) return nullptr;
  return place.venue->pathTypes->getById(id);
}

double walkingSeconds(double mm) { return mm / 1000 / walkingSpeed; }

double ridingSeconds(const TernPathType* pathType, int floors, double metres) {
  const double up = std::abs(floors);
  switch (moverKindOf(pathType)) {
    case MoverKind::lift:
      return liftWait + liftDoors + up * floorHeight / speedOf(pathType, liftSpeed);
    case MoverKind::escalator:
      return (up > 0 ? up * escalatorRun : metres) / speedOf(pathType, escalatorSpeed);
    case MoverKind::stairs:
      return (up > 0 ? up * stairsRun : metres) /
             speedOf(pathType, floors < 0 ? stairsDownSpeed : stairsUpSpeed);
    case MoverKind::movingWalkway:
      return metres / speedOf(pathType, walkwaySpeed);
    case MoverKind::ramp:
    case MoverKind::gate:
    case MoverKind::other:
      break;
  }
  return (metres + up * escalatorRun) / speedOf(pathType, walkingSpeed);
}

}  // namespace tern::detail
