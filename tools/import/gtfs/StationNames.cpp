#include "tools/import/gtfs/StationNames.hpp"

#include <string>

namespace tern::imports {

namespace {

// A longer description is prose.
constexpr std::size_t mostNameBytes = 100;

DraftCategory category(const char* id, const char* en, const char* de, const char* fr,
                       const char* es, const char* ja) {
  return {id, {{"en", en}, {"de", de}, {"fr", fr}, {"es", es}, {"ja", ja}}};
}

Names codeNames(const std::string& code) {
  return {{"en", "Platform " + code},
          {"de", "Gleis " + code},
          {"fr", "Quai " + code},
          {"es", "Andén " + code},
          {"ja", code + "番線"}};
}

// What the description says beyond the stop's own name, "Red Line - North" of "Park Street - Red
// Line - North"; empty where it is anything else.
std::string beyondName(const GtfsStop& stop) {
  const std::string head = stop.name + " - ";
  const bool isOne = !stop.name.empty() && stop.description.size() <= mostNameBytes &&
                     stop.description.starts_with(head);
  return isOne ? stop.description.substr(head.size()) : std::string();
}

Names namesLikeOthers(const GtfsFeed& feed, const GtfsStop& station, const GtfsStop& stop) {
  const std::string beyond = beyondName(stop);
  if (!beyond.empty()) return {{feed.language(), beyond}};
  if (!stop.platformName.empty()) return {{feed.language(), stop.platformName}};
  if (stop.platformCode.empty()) return feed.stopNames(stop);
  if (stop.name.empty() || stop.name == station.name) return codeNames(stop.platformCode);
  Names names = feed.stopNames(stop);
  for (Name& name : names) name.text += " " + stop.platformCode;
  return names;
}

}  // namespace

DraftCategory platformCategory() {
  return category("platform", "Platform", "Bahnsteig", "Quai", "Andén", "乗り場");
}

DraftCategory boardingAreaCategory() {
  return category("boarding-area", "Boarding area", "Einstiegsbereich", "Zone d’embarquement",
                  "Zona de embarque", "乗車位置");
}

DraftCategory entranceCategory() {
  return category("entrance", "Entrance", "Eingang", "Entrée", "Entrada", "出入口");
}

DraftCategory gateCategory() {
  return category("ticket-gate", "Ticket gate", "Fahrkartensperre", "Portillon", "Torniquete",
                  "改札口");
}

DraftCategory liftCategory() {
  return category("lift", "Lift", "Aufzug", "Ascenseur", "Ascensor", "エレベーター");
}

Names placeNames(const GtfsFeed& feed, const GtfsStop& station, const GtfsStop& stop,
                 bool isShared) {
  const bool isStations = stop.name.empty() || stop.name == station.name;
  return isStations || isShared ? namesLikeOthers(feed, station, stop) : feed.stopNames(stop);
}

}  // namespace tern::imports
