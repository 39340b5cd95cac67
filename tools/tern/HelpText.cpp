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
  tern serve --data mall --port 8080
  TERN_CLIENT_SECRET=local tern info --host http://127.0.0.1:8080 --customer 1 --client-id local

Wherever --data stands, --host with --customer and --client-id may stand too: the venues then come
from a mapping service. Its answers are kept below the user's data folder, or in --cache DIR, and
are what there is when the service cannot be reached. --no-reload asks for nothing that is kept.

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
  tern route --data two --venue 1,2 --from 12013 --to 111008    through the exits that join them

Exits with 1 when there is no route.)";

constexpr std::string_view nearestExamples = R"(Examples:
  tern nearest --data mall --map 3 --at 120.5,88 --amenity 2
  tern nearest --data mall --map 3 --at 120.5,88 --destination 7 --picture way.svg

Looks on that map first, then floor by floor above and below. Exits with 1 when there is none.)";

constexpr std::string_view alternativesExamples = R"(Examples:
  tern alternatives --data mall --from 12 --to 40
  tern alternatives --data mall --from 12 --to 40 --match 0.3 --distance 1.5
  tern alternatives --data mall --from 12 --to 40 --picture routes.html

Exits with 1 when there is no route; a route without an alternative is an answer.)";

constexpr std::string_view tourExamples = R"(Examples:
  tern tour --data mall --from 12 --visit 7,9,30
  tern tour --data mall --from 12 --visit 7,9,30 --accessibility 0 --picture tour.html

Stops of one floor are visited in the shortest order that there is, up to 21 of them; more in the
order of going to the nearest next. Other floors are reached by what the venue places as lifts,
escalators and stairs, not by a walk into another building. Exits with 1 when nothing is reached.)";

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
  {"op":"nearest","map":3,"at":[10,20],"destination":7}         (or "amenity", "pathType")
      {"waypoint":55,"element":{"kind":"destination","id":7},"connectors":[ids],"error":null}
  {"op":"nearestOnMap","from":12,"toMap":4,"destinations":[7,9],"accessibility":1}
      {"waypoint":55,"totalDistance":120.5,"connectors":[ids],"error":null}
  {"op":"alternatives","from":12,"to":40,"options":{"optimalPathMatchRatio":0.6}}
           {"optimal":[SEGMENT,...] or null,"alternatives":[[SEGMENT,...]] or null}
  {"op":"tour","from":12,"destinations":[7,9]}  {"legs":[[SEGMENT,...],...],"destinations":[9,7]}
  {"op":"solve","matrix":[[0,1],[1,0]]}                         {"tour":[0,1],"cost":1}
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

An "id" comes back in the answer. Blocks stay until they are lifted. With several venues
(--venue 1,2) a route runs on the graph that joins them, and every other request names its "venue".

Example:
  echo '{"op":"route","from":12,"to":40,"id":"a"}' | tern batch --data mall)";

constexpr std::string_view generateExamples = R"(Examples:
  tern generate --out mall
  tern generate --out mall --seed 7 --buildings 3 --floors 5 --shops 400
  tern generate --out two --venues 2

Several venues have exits to each other, and the coordinates of their waypoints are longitude and
latitude, which only the graph that joins them takes for what they are.

The same options give the same bytes. A folder that holds anything but a venue folder is refused.)";

constexpr std::string_view serveExamples = R"(Examples:
  tern serve --data mall
  tern serve --data mall --port 8080 --listen 0.0.0.0 --client-id app
  TERN_CLIENT_SECRET=open-sesame tern serve --data mall

Serves one customer, whose id stands in full.json, until SIGINT or SIGTERM, and says its address
when it is ready. The secret is that of TERN_CLIENT_SECRET, else "local". It is plain HTTP: listen
to other machines only where nobody reads along.)";

struct Examples {
  std::string_view command;
  std::string_view text;
};

constexpr std::array allExamples{
    Examples{"venues", venuesExamples},    Examples{"info", infoExamples},
    Examples{"route", routeExamples},      Examples{"alternatives", alternativesExamples},
    Examples{"tour", tourExamples},        Examples{"closest", closestExamples},
    Examples{"nearest", nearestExamples},  Examples{"convert", convertExamples},
    Examples{"batch", batchExamples},      Examples{"serve", serveExamples},
    Examples{"generate", generateExamples}};

}  // namespace

std::string generalHelp() {
  std::string help = "Indoor maps and wayfinding\nUsage: tern COMMAND [OPTIONS]\n\nCommands:\n";
  for (const CommandWord& word : commandWords) {
    help.append("  ").append(word.name).append(14 - word.name.size(), ' ');
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
