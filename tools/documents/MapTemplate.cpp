#include "tools/documents/MapTemplate.hpp"

#include "tools/documents/DocumentText.hpp"

namespace tern::documents {

std::string pathOf(const MapTemplate& look) {
  return "map-template/" + std::string(look.id) + "/full.json";
}

std::string documentOf(const MapTemplate& look) {
  DocumentText text;
  text.beginMap();
  text.field("id", look.id);
  text.field("name", look.name);
  if (look.generatedAt) text.field("generatedAt", *look.generatedAt);
  text.field("style", Value::map({{"background", look.background},
                                  {"route", "#2f6fde"},
                                  {"start", "#5e8c6a"},
                                  {"end", "#c8553d"},
                                  {"label", look.label},
                                  {"fontFamily", "Inter, Helvetica, Arial, sans-serif"}}));
  text.endMap();
  return text.finished();
}

}  // namespace tern::documents
