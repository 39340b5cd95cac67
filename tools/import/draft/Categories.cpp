#include "tools/import/draft/Categories.hpp"

#include <algorithm>
#include <iterator>
#include <string>

namespace tern::imports {

namespace {

struct CategoryRow {
  std::string_view id;
  const char* en;
  const char* de;
  const char* fr;
  const char* es;
  const char* ja;
};

constexpr CategoryRow categories[] = {
    {"atm", "Cash machine", "Geldautomat", "Distributeur", "Cajero automático", "ATM"},
    {"auditorium", "Auditorium", "Hörsaal", "Auditorium", "Auditorio", "講堂"},
    {"classroom", "Classroom", "Unterrichtsraum", "Salle de cours", "Aula", "教室"},
    {"conferenceroom", "Conference room", "Konferenzraum", "Salle de conférence",
     "Sala de conferencias", "会議室"},
    {"elevator", "Lift", "Aufzug", "Ascenseur", "Ascensor", "エレベーター"},
    {"entry", "Entrance", "Eingang", "Entrée", "Entrada", "入口"},
    {"escalator", "Escalator", "Rolltreppe", "Escalier mécanique", "Escalera mecánica",
     "エスカレーター"},
    {"firstaid", "First aid", "Erste Hilfe", "Premiers secours", "Primeros auxilios", "救護室"},
    {"foodservice", "Food and drink", "Essen und Trinken", "Restauration", "Restauración",
     "飲食店"},
    {"information", "Information", "Information", "Informations", "Información", "案内所"},
    {"laboratory", "Laboratory", "Labor", "Laboratoire", "Laboratorio", "実験室"},
    {"library", "Library", "Bibliothek", "Bibliothèque", "Biblioteca", "図書館"},
    {"mothersroom", "Nursing room", "Stillraum", "Salle d'allaitement", "Sala de lactancia",
     "授乳室"},
    {"nonpublic", "Not public", "Nicht öffentlich", "Accès réservé", "Acceso restringido",
     "関係者専用"},
    {"office", "Office", "Büro", "Bureau", "Oficina", "事務室"},
    {"parking", "Parking", "Parkplatz", "Parking", "Aparcamiento", "駐車場"},
    {"ramp", "Ramp", "Rampe", "Rampe", "Rampa", "スロープ"},
    {"restaurant", "Restaurant", "Restaurant", "Restaurant", "Restaurante", "レストラン"},
    {"restroom", "Toilets", "Toiletten", "Toilettes", "Aseos", "トイレ"},
    {"restroom.family", "Family toilets", "Familientoilette", "Toilettes familiales",
     "Aseo familiar", "家族用トイレ"},
    {"restroom.female", "Women's toilets", "Damentoilette", "Toilettes femmes", "Aseo de mujeres",
     "女性用トイレ"},
    {"restroom.female.wheelchair", "Women's accessible toilets", "Barrierefreie Damentoilette",
     "Toilettes femmes accessibles", "Aseo accesible de mujeres", "女性用車いす対応トイレ"},
    {"restroom.male", "Men's toilets", "Herrentoilette", "Toilettes hommes", "Aseo de hombres",
     "男性用トイレ"},
    {"restroom.male.wheelchair", "Men's accessible toilets", "Barrierefreie Herrentoilette",
     "Toilettes hommes accessibles", "Aseo accesible de hombres", "男性用車いす対応トイレ"},
    {"restroom.unisex", "Unisex toilets", "Toilette für alle", "Toilettes mixtes", "Aseo unisex",
     "男女共用トイレ"},
    {"restroom.unisex.wheelchair", "Unisex accessible toilets", "Barrierefreie Toilette für alle",
     "Toilettes mixtes accessibles", "Aseo unisex accesible", "男女共用車いす対応トイレ"},
    {"restroom.wheelchair", "Accessible toilets", "Barrierefreie Toilette", "Toilettes accessibles",
     "Aseo accesible", "車いす対応トイレ"},
    {"room", "Room", "Raum", "Salle", "Sala", "部屋"},
    {"shopping", "Shop", "Geschäft", "Boutique", "Tienda", "店舗"},
    {"stairs", "Stairs", "Treppe", "Escalier", "Escaleras", "階段"},
    {"store", "Shop", "Geschäft", "Boutique", "Tienda", "店舗"},
    {"unspecified", "Room", "Raum", "Salle", "Sala", "部屋"},
    {"vendingmachine", "Vending machine", "Verkaufsautomat", "Distributeur automatique",
     "Máquina expendedora", "自動販売機"},
    {"walkway", "Corridor", "Gang", "Couloir", "Pasillo", "通路"},
};

}  // namespace

Names namesOfCategory(std::string_view category) {
  const auto row = std::ranges::find(categories, category, &CategoryRow::id);
  if (row != std::end(categories)) {
    return {{"en", row->en}, {"de", row->de}, {"fr", row->fr}, {"es", row->es}, {"ja", row->ja}};
  }
  std::string word(category);
  std::ranges::replace(word, '.', ' ');
  if (!word.empty() && word.front() >= 'a' && word.front() <= 'z') {
    word.front() = static_cast<char>(word.front() - 'a' + 'A');
  }
  return {{"", word}};
}

}  // namespace tern::imports
