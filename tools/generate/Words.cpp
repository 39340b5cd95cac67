#include "tools/generate/Words.hpp"

namespace tern::generate {

namespace {

using Text = std::string_view;

constexpr Phrase fashionNouns[] = {{"Clothing", "Mode", "Vêtements", "衣料"},
                                   {"Atelier", "Atelier", "Atelier", "アトリエ"},
                                   {"Denim", "Denim", "Denim", "デニム"},
                                   {"Knitwear", "Strick", "Mailles", "ニット"},
                                   {"Tailors", "Schneiderei", "Tailleurs", "テーラー"}};
constexpr Text fashionKeywords[] = {"fashion", "clothes", "wear"};
constexpr Phrase shoeNouns[] = {{"Shoes", "Schuhe", "Chaussures", "シューズ"},
                                {"Leather", "Leder", "Maroquinerie", "革製品"},
                                {"Bags", "Taschen", "Sacs", "バッグ"}};
constexpr Text shoeKeywords[] = {"shoes", "bags", "leather"};
constexpr Phrase beautyNouns[] = {{"Beauty", "Kosmetik", "Beauté", "コスメ"},
                                  {"Perfumery", "Parfümerie", "Parfumerie", "香水"},
                                  {"Hair", "Friseur", "Coiffure", "美容室"}};
constexpr Text beautyKeywords[] = {"beauty", "cosmetics", "care"};
constexpr Phrase jewelleryNouns[] = {{"Jewellers", "Juwelier", "Bijouterie", "宝飾"},
                                     {"Watches", "Uhren", "Montres", "時計"}};
constexpr Text jewelleryKeywords[] = {"jewellery", "watches", "gold"};
constexpr Phrase electronicsNouns[] = {{"Electronics", "Elektronik", "Électronique", "電器"},
                                       {"Phones", "Handys", "Téléphones", "携帯"},
                                       {"Audio", "Audio", "Audio", "オーディオ"},
                                       {"Cameras", "Kameras", "Photo", "カメラ"}};
constexpr Text electronicsKeywords[] = {"electronics", "phone", "computer"};
constexpr Phrase bookNouns[] = {{"Books", "Bücher", "Livres", "書店"},
                                {"Gifts", "Geschenke", "Cadeaux", "ギフト"},
                                {"Paper", "Papier", "Papeterie", "文具"},
                                {"Records", "Schallplatten", "Disques", "レコード"}};
constexpr Text bookKeywords[] = {"books", "gifts", "stationery"};
constexpr Phrase homeNouns[] = {{"Home", "Wohnen", "Maison", "雑貨"},
                                {"Kitchen", "Küche", "Cuisine", "キッチン"},
                                {"Lighting", "Leuchten", "Luminaires", "照明"},
                                {"Flowers", "Blumen", "Fleurs", "フラワー"}};
constexpr Text homeKeywords[] = {"home", "furniture", "living"};
constexpr Phrase sportsNouns[] = {{"Sports", "Sport", "Sport", "スポーツ"},
                                  {"Outdoor", "Outdoor", "Plein Air", "アウトドア"},
                                  {"Cycles", "Räder", "Vélos", "自転車"},
                                  {"Running", "Laufsport", "Running", "ランニング"}};
constexpr Text sportsKeywords[] = {"sports", "outdoor", "training"};
constexpr Phrase kidsNouns[] = {{"Toys", "Spielwaren", "Jouets", "おもちゃ"},
                                {"Kids", "Kinder", "Enfants", "キッズ"},
                                {"Hobbies", "Hobby", "Loisirs", "ホビー"}};
constexpr Text kidsKeywords[] = {"kids", "toys", "family"};
constexpr Phrase groceryNouns[] = {{"Market", "Markt", "Marché", "マーケット"},
                                   {"Deli", "Feinkost", "Épicerie", "デリ"},
                                   {"Tea", "Tee", "Thé", "茶舗"},
                                   {"Wine", "Wein", "Vins", "ワイン"}};
constexpr Text groceryKeywords[] = {"groceries", "supermarket", "food"};
constexpr Phrase foodNouns[] = {{"Coffee", "Kaffee", "Café", "コーヒー"},
                                {"Bakery", "Bäckerei", "Boulangerie", "ベーカリー"},
                                {"Noodles", "Nudeln", "Nouilles", "麺"},
                                {"Pizza", "Pizza", "Pizza", "ピザ"},
                                {"Sushi", "Sushi", "Sushi", "寿司"},
                                {"Grill", "Grill", "Grill", "グリル"},
                                {"Juice Bar", "Saftbar", "Bar à Jus", "ジュース"},
                                {"Ice Cream", "Eis", "Glaces", "アイス"}};
constexpr Text foodKeywords[] = {"food", "food court", "restaurant", "coffee"};
constexpr Phrase healthNouns[] = {{"Pharmacy", "Apotheke", "Pharmacie", "薬局"},
                                  {"Opticians", "Optiker", "Opticiens", "眼鏡"},
                                  {"Hearing", "Hörgeräte", "Audition", "補聴器"}};
constexpr Text healthKeywords[] = {"pharmacy", "health", "optician"};
constexpr Phrase serviceNouns[] = {{"Bank", "Bank", "Banque", "銀行"},
                                   {"Travel", "Reisen", "Voyages", "旅行"},
                                   {"Dry Cleaning", "Reinigung", "Pressing", "クリーニング"},
                                   {"Post Office", "Postamt", "Poste", "郵便局"},
                                   {"Repairs", "Reparatur", "Réparations", "修理"}};
constexpr Text serviceKeywords[] = {"services", "bank", "travel"};
constexpr Phrase leisureNouns[] = {{"Cinema", "Kino", "Cinéma", "シネマ"},
                                   {"Fitness", "Fitness", "Fitness", "フィットネス"},
                                   {"Bowling", "Bowling", "Bowling", "ボウリング"}};
constexpr Text leisureKeywords[] = {"leisure", "cinema", "fitness"};
constexpr Phrase departmentNouns[] = {{"Department Store", "Warenhaus", "Grand Magasin", "百貨店"}};
constexpr Text departmentKeywords[] = {"department store", "fashion", "home"};

const CategoryWords categories[categoryCount] = {
    {{"Fashion", "Mode", "Mode", "ファッション"}, fashionNouns, fashionKeywords},
    {{"Shoes & Bags", "Schuhe & Taschen", "Chaussures et sacs", "靴・バッグ"},
     shoeNouns,
     shoeKeywords},
    {{"Beauty", "Schönheit", "Beauté", "ビューティー"}, beautyNouns, beautyKeywords},
    {{"Jewellery", "Schmuck", "Bijoux", "ジュエリー"}, jewelleryNouns, jewelleryKeywords},
    {{"Electronics", "Elektronik", "Électronique", "家電"}, electronicsNouns, electronicsKeywords},
    {{"Books & Gifts", "Bücher & Geschenke", "Livres et cadeaux", "本・ギフト"},
     bookNouns,
     bookKeywords},
    {{"Home", "Wohnen", "Maison", "インテリア"}, homeNouns, homeKeywords},
    {{"Sports", "Sport", "Sport", "スポーツ"}, sportsNouns, sportsKeywords},
    {{"Kids", "Kinder", "Enfants", "キッズ"}, kidsNouns, kidsKeywords},
    {{"Groceries", "Lebensmittel", "Alimentation", "食料品"}, groceryNouns, groceryKeywords},
    {{"Food & Drink", "Essen & Trinken", "Restauration", "飲食"}, foodNouns, foodKeywords},
    {{"Health", "Gesundheit", "Santé", "健康"}, healthNouns, healthKeywords},
    {{"Services", "Dienste", "Services", "サービス"}, serviceNouns, serviceKeywords},
    {{"Leisure", "Freizeit", "Loisirs", "レジャー"}, leisureNouns, leisureKeywords},
    {{"Department Store", "Warenhaus", "Grand magasin", "百貨店"},
     departmentNouns,
     departmentKeywords},
};

constexpr AmenityWords amenities[amenityCount] = {
    {{"Exit", "Ausgang", "Sortie", "出口"}, {"exit", "entrance", "way out"}},
    {{"Toilets", "Toiletten", "Toilettes", "トイレ"}, {"toilets", "restroom", "wc"}},
    {{"Information", "Information", "Accueil", "インフォメーション"},
     {"information", "help", "lost property"}},
    {{"Cash Machine", "Geldautomat", "Distributeur", "ATM"}, {"cash machine", "atm", "money"}},
    {{"Baby Care", "Wickelraum", "Espace bébé", "ベビールーム"},
     {"baby care", "family", "changing room"}},
};

constexpr City cityTable[] = {
    {"Hamburg", "Lindenkai", 535503000, 99937000, 15120},
    {"Lisbon", "Rua das Tílias", 387139000, -91394000, 11513},
    {"Vienna", "Lindengasse", 482082000, 163738000, 13480},
    {"Kyoto", "Shinmachi-dori", 350116000, 1357681000, 10968},
    {"Toronto", "Linden Street West", 436532000, -793832000, 12416},
    {"Melbourne", "Orchard Lane", -378136000, 1449631000, 11371},
};

constexpr Text firstWords[] = {"Linden",  "Harbour", "Meridian", "Orchard",
                               "Saffron", "River",   "Juniper",  "Lantern"};
constexpr Text secondWords[] = {"Plaza", "Galleria", "Arcades", "Quarter"};

constexpr Text brands[] = {
    "Juniper",    "Alder",   "Blue Heron", "Copper",     "Marlow",   "Saffron",  "Velvet",
    "North Star", "Wren",    "Lantern",    "Quill",      "Harbour",  "Tinker",   "Maple",
    "Indigo",     "Fern",    "Pebble",     "Oriel",      "Cinder",   "Willow",   "Brass",
    "Otter",      "Linen",   "Hazel",      "Solstice",   "Sparrow",  "Amber",    "Tidal",
    "Clover",     "Ember",   "Rowan",      "Sable",      "Poppy",    "Almanac",  "Cobalt",
    "Thistle",    "Lark",    "Mosaic",     "Birch",      "Finch",    "Opal",     "Saltbox",
    "Nimbus",     "Orchard", "Sage",       "Basalt",     "Coral",    "Drift",    "Elmwood",
    "Fable",      "Grove",   "Heath",      "Iris",       "Jasper",   "Kestrel",  "Lumen",
    "Myrtle",     "Nettle",  "Onyx",       "Pinecone",   "Quarry",   "Redwood",  "Sorrel",
    "Tamarind",   "Umber",   "Vesper",     "Wildflower", "Yarrow",   "Zephyr",   "Anchor",
    "Barley",     "Cedar",   "Dapple",     "Echo",       "Fennel",   "Gable",    "Hollow",
    "Ivory",      "Jade",    "Knoll",      "Lattice",    "Mulberry", "Nutmeg",   "Oakley",
    "Plum",       "Quince",  "Ripple",     "Spindle",    "Tern",     "Upland",   "Vale",
    "Wharf",      "Yonder",  "Aster",      "Bramble",    "Cygnet",   "Dune",     "Everly",
    "Foxglove",   "Gosling", "Honey",      "Inkwell",    "Jetty",    "Kindling", "Lilac",
    "Magpie",     "Nook",    "Olive",      "Parasol",    "Rosemary", "Sundial",  "Trellis",
    "Viola",      "Whistle", "Acorn",      "Bellwether"};

constexpr Text hallWords[] = {"Garden", "Harbour", "Market", "Clock",  "Mill",   "Station",
                              "Museum", "Castle",  "Bridge", "Tanner", "Copper", "Chapel"};
constexpr int hallCount = 12;

constexpr Text ordinals[] = {"First", "Second",  "Third",  "Fourth", "Fifth",
                             "Sixth", "Seventh", "Eighth", "Ninth",  "Tenth"};

}  // namespace

const CategoryWords& wordsOf(Category category) { return categories[static_cast<int>(category)]; }

const AmenityWords& wordsOf(Amenity amenity) { return amenities[static_cast<int>(amenity)]; }

std::span<const City> cities() { return cityTable; }

std::span<const std::string_view> venueFirstWords() { return firstWords; }

std::span<const std::string_view> venueSecondWords() { return secondWords; }

std::span<const std::string_view> brandWords() { return brands; }

std::string buildingName(int index) {
  const std::string name = std::string(hallWords[index % hallCount]) + " Hall";
  return index < hallCount ? name : name + " " + std::to_string(index / hallCount + 1);
}

std::string buildingLetter(int index) {
  const std::string letter(1, static_cast<char>('A' + index % 26));
  return index < 26 ? letter : letter + std::to_string(index / 26 + 1);
}

std::string floorName(int level) {
  if (level < 0) return "Lower Ground";
  if (level == 0) return "Ground Floor";
  if (level > 10) return "Level " + std::to_string(level);
  return std::string(ordinals[level - 1]) + " Floor";
}

std::string shortFloorName(int level) {
  if (level < 0) return "LG";
  return level == 0 ? "G" : std::to_string(level);
}

}  // namespace tern::generate
