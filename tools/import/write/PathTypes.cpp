#include "tools/import/write/PathTypes.hpp"

#include <vector>

namespace tern::imports {

namespace {

enum Id {
  walkway = walkwayType,
  stepFreeLift,
  lift,
  escalator,
  stairs,
  ramp,
  movingWalkway,
  gate,
  unknown,
  walkwayWithSteps,
  movingRamp
};

Names named(const char* en, const char* de, const char* fr, const char* es, const char* ja) {
  return {{"en", en}, {"de", de}, {"fr", fr}, {"es", es}, {"ja", ja}};
}

// In metres of walking: a lift is 15 m at its door, 15 m within and 5 m for each floor; a floor on
// an escalator is 17 m and on stairs 30 m, on a ramp 50 m. So one floor up people take the
// escalator, several floors up the lift.
const std::vector<PathTypeRow>& rows() {
  static const std::vector<PathTypeRow> all{
      {walkway, "walkway", 0, 1, -1, 1.34, inOnePiece,
       named("Walking", "Fußweg", "Marche", "A pie", "徒歩")},
      {stepFreeLift, "stepFreeLift", 0, 15, 299, 1.0, inOnePiece,
       named("Lift (step-free)", "Aufzug (stufenlos)", "Ascenseur (sans marches)",
             "Ascensor (sin escalones)", "エレベーター（バリアフリー）")},
      {lift, "lift", 20, 15, 299, 1.0, inOnePiece,
       named("Lift", "Aufzug", "Ascenseur", "Ascensor", "エレベーター")},
      {escalator, "escalator", 60, 3, 20, 0.5, 3,
       named("Escalator", "Rolltreppe", "Escalier mécanique", "Escalera mecánica",
             "エスカレーター")},
      {stairs, "stairs", 100, 3, 10, 0.65, 2,
       named("Stairs", "Treppe", "Escalier", "Escaleras", "階段")},
      {ramp, "ramp", 0, 5, 10, 1.2, 4, named("Ramp", "Rampe", "Rampe", "Rampa", "スロープ")},
      {movingWalkway, "movingWalkway", 0, 5, 14, 0.65, 5,
       named("Moving walkway", "Fahrsteig", "Trottoir roulant", "Pasillo rodante", "動く歩道")},
      {gate, "gate", 0, 5, 10, 1.0, inOnePiece,
       named("Gate", "Sperre", "Portillon", "Torniquete", "改札")},
      {unknown, "unknown", 80, 30, 99, 1.0, 25,
       named("Way of unknown kind", "Weg unbekannter Art", "Voie de type inconnu",
             "Vía de tipo desconocido", "種別不明の経路")},
      {walkwayWithSteps, "walkwayWithSteps", 100, 5, 19, 1.2, 4,
       named("Walkway with steps", "Weg mit Stufen", "Passage avec marches", "Paso con escalones",
             "段差のある通路")},
      {movingRamp, "movingRamp", 60, 5, 14, 0.65, 5,
       named("Moving ramp", "Fahrsteig zwischen Stockwerken", "Tapis roulant incliné",
             "Rampa rodante", "動く歩道（傾斜）")},
  };
  return all;
}

int walkedTypeOf(const DraftLink& link, bool changesFloor) {
  if (link.hasSteps) return walkwayWithSteps;
  const bool isRamp = link.kind == LinkKind::ramp && (changesFloor || link.isSteep);
  return isRamp ? ramp : walkway;
}

}  // namespace

std::span<const PathTypeRow> pathTypeRows() { return rows(); }

const PathTypeRow& pathTypeRow(int id) { return rows()[static_cast<std::size_t>(id) - 1]; }

int pathTypeOf(const DraftLink& link, bool changesFloor) {
  switch (link.kind) {
    case LinkKind::walkway:
    case LinkKind::ramp:
      return walkedTypeOf(link, changesFloor);
    case LinkKind::stairs:
      return stairs;
    case LinkKind::escalator:
      return escalator;
    case LinkKind::lift:
      return lift;
    case LinkKind::stepFreeLift:
      return stepFreeLift;
    case LinkKind::movingWalkway:
      return changesFloor ? movingRamp : movingWalkway;
    case LinkKind::gate:
      return gate;
    case LinkKind::unknown:
      break;
  }
  return unknown;
}

}  // namespace tern::imports
