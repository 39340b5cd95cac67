// The command that answers requests, one JSON object a line.
#include <string>
#include <system_error>

#include "tools/tern/Batch.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

namespace {

Outcome answerRequests(const Arguments& call, const TernAnswers& answers, Console& console) {
  LineReader lines(console.requests);
  const auto jobs = static_cast<unsigned>(call.request["jobs"].integer());
  if (jobs == 1) {
    answerLines(lines, answers, console.answers);
  } else {
    answerLinesSideBySide(lines, answers, console.answers, jobs);
  }
  if (lines.error() == 0) return Answer();
  return notLoaded(TernErrorTypeUndefined,
                   "cannot read the requests: " + std::generic_category().message(lines.error()));
}

}  // namespace

const Command batchCommand{
    .name = "batch",
    .summary = "answer requests, one JSON object a line",
    .options = {{"--jobs", "N", "answer on so many threads, in the same order",
                 readWholeBetween<1, 256>, orElse("1")}},
    .about = answerRequests,
    .help = R"(Examples:
  tern generate --out mall
  echo '{"op":"places","text":"books"}' | tern batch --data mall
  echo '{"op":"center"}' | tern batch --data mall --jobs 2

Requests, one a line, with what each is answered:
  {"op":"route","from":22001,"to":14016,"accessibility":1}
      {"route":[SEGMENT,...]}
  {"op":"routeToAny","from":22001,"to":[14016,14017]}
      {"route":[SEGMENT,...]}
  {"op":"directions","from":22001,"to":14016,"language":"de"}
      {"route":[SEGMENT,...],"steps":[STEP,...],"mm":mm,"seconds":s}
  {"op":"alternatives","from":22001,"to":14016,"options":{"optimalPathMatchRatio":0.6}}
      {"optimal":[SEGMENT,...] or null,"alternatives":[[SEGMENT,...]] or null}
  {"op":"tour","from":22001,"destinations":[7,9]}
      {"legs":[[SEGMENT,...],...],"destinations":[9,7]}
  {"op":"nearest","map":11,"at":[400,300],"destination":7}
      {"waypoint":55,"element":{"kind":"destination","id":7},"connectors":[ids],"error":null}
      or for "amenity" or "pathType"
  {"op":"nearestOnMap","from":12002,"toMap":11,"destinations":[7,9]}
      {"waypoint":55,"totalDistance":120.5,"connectors":[ids],"error":null}
  {"op":"nearestByWalk","from":12002,"amenity":2,"accessibility":0}
      {"waypoint":55,"element":{"kind":"amenity","id":2},"route":[SEGMENT,...]}
      or for "destination" or "pathType", or for lists of them
  {"op":"matrix","from":[12002,12003],"to":[11001,11002]}
      {"costs":[[c,c],[c,null]],"mmDistances":[[d,d],[d,null]]}
  {"op":"reach","from":12002,"metres":40}
      {"reached":[{"waypoint":12,"cost":c,"mm":d},...]}
      or for "cost" in the place of "metres" or beside it
  {"op":"closest","map":11,"at":[400,300]}
      {"waypoint":12 or null}
  {"op":"closestByRoute","candidates":[22001,12001],"to":14016}
      {"waypoint":13 or null}
  {"op":"places","text":"coral"}
      {"places":[{"kind":"destination","id":7,"name":"Coral Books","mapIds":[3],"waypoints":[55]},...]}
      best first; all of them without "text"
  {"op":"convert","point":[10,20],"from":"EPSG:4326","to":"tern:local"}
      {"point":[x,y]}
  {"op":"center"}
      {"point":[longitude,latitude]}
  {"op":"solve","matrix":[[0,1],[1,0]]}
      {"tour":[0,1],"cost":1}
  {"op":"blockEdge","from":11001,"to":11002,"blocked":true}
      {"ok":true}
  {"op":"blockEntry","node":11001,"blocked":true}
      {"ok":true}
  {"op":"blockExit","node":11001,"blocked":true}
      {"ok":true}
  {"op":"neighbors","node":11001}
      {"neighbors":[...]}

SEGMENT, one for each stretch on one map, with sums from the route's start on:
  {"mapId":3,"mover":2 or null,"cost":c,"pixelDistance":d,"mmDistance":mm,"points":[waypoint ids],"mapPoints":[[x,y],...]}

STEP, which begins "at" a waypoint, by a landmark where there is one:
  {"kind":"turn","direction":"left" or null,"mapId":3,"at":12,"mm":mm,"seconds":s,"mover":2 or null,"toMapId":4 or null,"landmark":{"kind":"destination","id":7} or null,"text":"Turn left"}

An "id" comes back in the answer. Blocks stay until they are lifted. With
several venues (--venue 1,2) a route runs on the graph that joins them, and
every other request names its "venue".

With --jobs N answers are the same and come in the same order, sooner on
several cores. A block still counts for what stands behind it and for nothing
before. What is read ahead of the answers is bounded: who does not take answers
is not asked for more requests.
)"};

}  // namespace tern::command
