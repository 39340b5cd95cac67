// One of several joined venues by itself. Joined, its waypoints are degrees, of which the library can
// tell neither lengths nor turns; alone they are put where they lie on its maps.
import { integer, items, object, type Json } from "../venue/json.js";
import type { Venue } from "../venue/Venue.js";

function putOnMap(map: Json, venue: Venue): void {
  for (const waypoint of items(map["waypoints"])) {
    const at = venue.waypoints.get(integer(waypoint["id"]) ?? NaN)?.at;
    if (at !== undefined) (waypoint as Record<string, unknown>)["coordinates"] = [...at];
  }
}

function onMaps(contents: Uint8Array, venue: Venue): Uint8Array {
  const document = object(JSON.parse(new TextDecoder().decode(contents)));
  for (const floor of items(document["floors"])) putOnMap(object(floor["map"]), venue);
  putOnMap(object(document["map"]), venue);
  return new TextEncoder().encode(JSON.stringify(document));
}

// `venue` is what the page knows of all of them, with waypoints in map units.
export function documentsAlone(
  documents: ReadonlyMap<string, Uint8Array>,
  id: number,
  venue: Venue,
): Map<string, Uint8Array> {
  const own = [...documents].filter(([path]) => !path.startsWith("venue/") || path.startsWith(`venue/${id}/`));
  return new Map(
    own.map(([path, contents]) => [path, path.startsWith("venue/") ? onMaps(contents, venue) : contents]),
  );
}
