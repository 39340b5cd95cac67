#include "tools/tern/HelpText.hpp"

#include <array>

#include "tools/tern/CommandWords.hpp"

namespace tern::command {

namespace {

constexpr std::string_view generalFooter = R"(
Examples:
  tern generate --out mall --shops 200
  tern info --data mall
  tern route --data mall --from 12 --to 40 --picture route.html
  echo '{"op":"route","from":12,"to":40}' | tern batch --data mall

A venue folder holds the documents of a mapping service: full.json, venue/1/full.json,
venue/1/building/1/full.json and so on. With --json every command prints one JSON object.

Exit status: 0 answered; 1 answered, and there is nothing to be found; 2 the words of the call are
wrong; 3 the data could not be loaded; 4 the answer could not be written.
)";

constexpr std::string_view venuesExamples = R"(Examples:
  tern venues --data mall
  tern venues --data mall --json)";

constexpr std::string_view infoExamples = R"(Examples:
  tern info --data mall
  tern info --data mall --venue 1 --building 2 --json)";

constexpr std::string_view routeExamples = R"(Examples:
  tern route --data mall --from 12 --to 40
  tern route --data mall --from 12 --to 40 --accessibility 0    step-free, where the venue says so
  tern route --data mall --from 12 --to 40 --picture route.svg

Exits with 1 when there is no route.)";

constexpr std::string_view closestExamples = R"(Examples:
  tern closest --data mall --map 3 --at 120.5,88
  tern closest --data mall --map 3 --at -12.5,3 --json)";

constexpr std::string_view convertExamples = R"(Examples:
  tern convert --data mall --point 13.4,52.5 --from EPSG:4326 --to tern:local
  tern convert --data mall --point 120,88 --from tern:local --to EPSG:3857

EPSG:4326 is longitude,latitude in degrees; EPSG:3857 metres of the Mercator projection; tern:local
map units of the venue's first map, from its top left corner, y downward.)";

constexpr std::string_view batchExamples = R"(Requests, one a line, and what each is answered with:
  {"op":"route","from":12,"to":40,"accessibility":1}            {"route":[SEGMENT,...]}
  {"op":"routeToAny","from":12,"to":[40,41]}                    {"route":[SEGMENT,...]}
  {"op":"closest","map":3,"at":[10,20]}                         {"waypoint":12 or null}
  {"op":"closestByRoute","candidates":[12,13],"to":40}          {"waypoint":13 or null}
  {"op":"convert","point":[13.4,52.5],"from":"EPSG:4326","to":"tern:local"}
                                                                {"point":[x,y]}
  {"op":"center"}                                               {"point":[longitude,latitude]}
  {"op":"blockEdge","from":1,"to":2,"blocked":true}             {"ok":true}
  {"op":"blockEntry","node":1,"blocked":true}                   {"ok":true}
  {"op":"blockExit","node":1,"blocked":true}                    {"ok":true}
  {"op":"neighbors","node":1}                                   {"neighbors":[...]}

SEGMENT, one for each stretch on one map, with sums from the start of the route on:
  {"mapId":3,"mover":2 or null,"cost":c,"pixelDistance":d,"mmDistance":mm,
   "points":[waypoint ids],"mapPoints":[[x,y],...]}

An "id" comes back in the answer. Blocks stay until they are lifted.

Example:
  echo '{"op":"route","from":12,"to":40,"id":"a"}' | tern batch --data mall)";

constexpr std::string_view generateExamples = R"(Examples:
  tern generate --out mall
  tern generate --out mall --seed 7 --buildings 3 --floors 5 --shops 400

The same options give the same bytes. A folder that holds anything but a venue folder is refused.)";

struct Examples {
  std::string_view command;
  std::string_view text;
};

constexpr std::array allExamples{
    Examples{"venues", venuesExamples},    Examples{"info", infoExamples},
    Examples{"route", routeExamples},      Examples{"closest", closestExamples},
    Examples{"convert", convertExamples},  Examples{"batch", batchExamples},
    Examples{"generate", generateExamples}};

}  // namespace

std::string generalHelp() {
  std::string help = "Indoor maps and wayfinding\nUsage: tern COMMAND [OPTIONS]\n\nCommands:\n";
  for (const CommandWord& word : commandWords) {
    help.append("  ").append(word.name).append(12 - word.name.size(), ' ');
    help.append(word.summary).append("\n");
  }
  help += "\nEach command says more with --help, e.g. tern route --help.\n";
  return help.append(generalFooter);
}

std::string_view examplesOf(std::string_view command) {
  for (const Examples& examples : allExamples) {
    if (examples.command == command) return examples.text;
  }
  return {};
}

}  // namespace tern::command
