#include "tools/import/network/NetworkCodes.hpp"

#include <array>
#include <map>
#include <utility>
#include <vector>

namespace tern::imports {

namespace {

constexpr int unstated = 99;

// The word at the code's place, from 1 on; nothing for a code without one.
template <std::size_t count>
void describe(Value& details, std::string_view key, const std::array<const char*, count>& words,
              int code) {
  if (code < 1 || static_cast<std::size_t>(code) > count) return;
  const char* const word = words[static_cast<std::size_t>(code) - 1];
  if (word != nullptr) details.set(key, word);
}

PlaceRow row(std::string_view id, const char* en, const char* de, const char* fr, const char* es,
             const char* ja) {
  return {id, {{"ja", ja}, {"en", en}, {"de", de}, {"fr", fr}, {"es", es}}};
}

const std::vector<PlaceRow>& placeRows() {
  static const std::vector<PlaceRow> rows{
      row("toilets", "Toilets", "Toiletten", "Toilettes", "Aseos", "トイレ"),
      row("accessible-toilets", "Accessible toilets", "Barrierefreie Toiletten",
          "Toilettes accessibles", "Aseos accesibles", "多目的トイレ"),
      row("stairs", "Stairs", "Treppe", "Escalier", "Escaleras", "階段"),
      row("lift", "Lift", "Aufzug", "Ascenseur", "Ascensor", "エレベーター"),
      row("escalator", "Escalator", "Rolltreppe", "Escalier mécanique", "Escalera mecánica",
          "エスカレーター"),
      row("ramp", "Ramp", "Rampe", "Rampe", "Rampa", "スロープ"),
      row("entrance", "Entrance", "Eingang", "Entrée", "Entrada", "出入口"),
      row("exit", "Station exit", "Bahnhofsausgang", "Sortie de la gare", "Salida de la estación",
          "出口"),
      row("ticket-gate", "Ticket gate", "Fahrkartensperre", "Portillon", "Torniquete", "改札口"),
      row("defibrillator", "Defibrillator (AED)", "Defibrillator", "Défibrillateur",
          "Desfibrilador", "AED"),
      row("telephone", "Public telephone", "Telefon", "Téléphone public", "Teléfono público",
          "公衆電話"),
      row("cash-machine", "Cash machine", "Geldautomat", "Distributeur de billets",
          "Cajero automático", "ATM"),
      row("bench", "Bench", "Sitzbank", "Banc", "Banco", "ベンチ"),
      row("information", "Information board", "Wegweiser", "Panneau d’information",
          "Panel informativo", "案内板"),
      row("fire-extinguisher", "Fire extinguisher", "Feuerlöscher", "Extincteur", "Extintor",
          "消火器"),
      row("fire-hydrant", "Fire hydrant", "Wandhydrant", "Bouche d’incendie", "Boca de incendios",
          "消火栓"),
      row("fire-alarm", "Fire alarm", "Feuermelder", "Alarme incendie", "Alarma de incendios",
          "火災報知器"),
      row("emergency-light", "Emergency exit light", "Notausgangsleuchte", "Éclairage de secours",
          "Luz de emergencia", "非常誘導灯"),
      row("currency-exchange", "Currency exchange", "Geldwechsel", "Bureau de change",
          "Cambio de moneda", "両替所"),
      row("waiting-room", "Waiting room", "Warteraum", "Salle d’attente", "Sala de espera",
          "待合室"),
      row("shop", "Shop", "Geschäft", "Magasin", "Tienda", "店舗"),
      row("room", "Room", "Raum", "Salle", "Sala", "部屋"),
  };
  return rows;
}

const PlaceRow* placeRow(std::string_view id) {
  for (const PlaceRow& row : placeRows()) {
    if (row.id == id) return &row;
  }
  return nullptr;
}

template <class Table>
const PlaceRow* lookUp(const Table& table, std::string_view code) {
  const auto found = table.find(code);
  return found == table.end() ? nullptr : placeRow(found->second);
}

// Without what follows on a bracket, and without "の範囲", the extent of.
std::string_view core(std::string_view name) {
  constexpr std::string_view extent = "の範囲";
  name = name.substr(0, std::min(name.find('('), name.find("（")));
  if (name.ends_with(extent)) name.remove_suffix(extent.size());
  return name;
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  for (const std::string_view other : words) {
    if (word == other) return true;
  }
  return false;
}

}  // namespace

LinkKind linkKindOf(const NetworkRecord& link) {
  switch (link.code("route_type")) {
    case 1:  // nothing in particular
    case 3:  // over a railway line
      return LinkKind::walkway;
    case 2:
      return LinkKind::movingWalkway;
    case 4:
      return LinkKind::lift;
    case 5:
      return LinkKind::escalator;
    case 6:
      return LinkKind::stairs;
    case 7:
      return LinkKind::ramp;
    default:
      return LinkKind::unknown;
  }
}

Direction directionOf(const NetworkRecord& link) {
  switch (link.code("direction")) {
    case 2:
      return Direction::forward;
    case 3:
      return Direction::backward;
    default:
      return Direction::both;
  }
}

LiftStatement liftStatementOf(const NetworkRecord& link) {
  switch (link.code("elevator")) {
    case 3:  // for wheelchairs
    case 5:  // for wheelchairs and for the blind
      return LiftStatement::stepFree;
    case 2:  // for neither
    case 4:  // for the blind
      return LiftStatement::notStepFree;
    default:
      return LiftStatement::nothing;
  }
}

bool hasSteps(const NetworkRecord& link) { return link.code("lev_diff") == 2; }

bool isSteep(const NetworkRecord& link) {
  const int slope = link.code("vtcl_slope");
  return slope != 1 && slope != unstated && slope > 0;
}

Value detailsOf(const NetworkRecord& link) {
  Value details = Value::map();
  describe<4>(details, "width", {"under 1 m", "1 to 2 m", "2 to 3 m", "3 m or more"},
              link.code("width"));
  describe<3>(details, "slope", {"up to 5 %", "over 5 %, rising", "over 5 %, falling"},
              link.code("vtcl_slope"));
  describe<2>(details, "step", {nullptr, "over 2 cm"}, link.code("lev_diff"));
  describe<2>(details, "roof", {"no", "yes"}, link.code("roof"));
  describe<2>(details, "tactilePaving", {"no", "yes"}, link.code("brail_tile"));
  describe<5>(details, "lift",
              {nullptr, "not step-free", "for wheelchairs", "for the blind",
               "for wheelchairs and the blind"},
              link.code("elevator"));
  return details;
}

AreaKind areaKindOf(const NetworkRecord& space) {
  static const std::map<std::string_view, AreaKind> kinds{
      {"B001", AreaKind::shop},    {"B007", AreaKind::toilets}, {"B008", AreaKind::toilets},
      {"B009", AreaKind::toilets}, {"B010", AreaKind::toilets}, {"B011", AreaKind::toilets},
      {"B021", AreaKind::mover},   {"B022", AreaKind::mover},   {"B023", AreaKind::mover},
      {"B024", AreaKind::mover},   {"B025", AreaKind::mover},   {"B029", AreaKind::way},
      {"B999", AreaKind::outdoors}};
  if (space.code("nonpublic") == 1 || space.code("restricted") == 1) return AreaKind::closed;
  const auto found = kinds.find(space.text("category"));
  return found == kinds.end() ? AreaKind::room : found->second;
}

const PlaceRow* placeOfFacility(std::string_view category) {
  static const std::map<std::string_view, std::string_view> places{{"F001", "toilets"},
                                                                   {"F002", "toilets"},
                                                                   {"F003", "toilets"},
                                                                   {"F004", "toilets"},
                                                                   {"F005", "accessible-toilets"},
                                                                   {"F006", "accessible-toilets"},
                                                                   {"F007", "accessible-toilets"},
                                                                   {"F011", "stairs"},
                                                                   {"F012", "lift"},
                                                                   {"F013", "escalator"},
                                                                   {"F014", "ramp"},
                                                                   {"F017", "entrance"},
                                                                   {"F027", "defibrillator"},
                                                                   {"F028", "telephone"},
                                                                   {"F030", "cash-machine"},
                                                                   {"F033", "bench"},
                                                                   {"F037", "information"},
                                                                   {"F046", "fire-extinguisher"},
                                                                   {"F047", "fire-hydrant"},
                                                                   {"F048", "fire-alarm"},
                                                                   {"F049", "emergency-light"},
                                                                   {"F108", "exit"},
                                                                   {"F214", "currency-exchange"}};
  return lookUp(places, category);
}

const PlaceRow* placeOfSpace(AreaKind kind, std::string_view category) {
  static const std::map<std::string_view, std::string_view> places{{"B001", "shop"},
                                                                   {"B004", "waiting-room"},
                                                                   {"B007", "toilets"},
                                                                   {"B008", "toilets"},
                                                                   {"B009", "toilets"},
                                                                   {"B010", "toilets"},
                                                                   {"B011", "accessible-toilets"}};
  const bool isPlace =
      kind == AreaKind::room || kind == AreaKind::shop || kind == AreaKind::toilets;
  if (!isPlace) return nullptr;
  const PlaceRow* const known = lookUp(places, category);
  return known != nullptr ? known : placeRow("room");
}

const PlaceRow* placeOfOpening(std::string_view name) {
  if (name.find("改札") != std::string_view::npos) return placeRow("ticket-gate");
  if (name.find("トイレ") != std::string_view::npos) return placeRow("toilets");
  if (name.starts_with("出口") || name.ends_with("出口")) return placeRow("exit");
  return placeRow(name.find("口") != std::string_view::npos ? "entrance" : "shop");
}

std::string fullName(std::string_view name, const PlaceRow& place) {
  const bool isNumber = place.id == "exit" && name.find("口") == std::string_view::npos;
  return (isNumber ? "出口" : "") + std::string(name);
}

bool isGeneric(std::string_view name, const PlaceRow& place) {
  const std::string_view word = core(name);
  return word == nameIn(place.names, "ja") || word.ends_with("トイレ") || isGeneric(word);
}

bool isGeneric(std::string_view name) {
  return isOneOf(core(name),
                 {"その他部屋", "通路/コンコース", "屋外", "階段", "スロープ", "エレベーター",
                  "エスカレーター", "ＡＥＤ", "ＡＴＭ", "案内サイン／案内板"});
}

}  // namespace tern::imports
