// What `tern check --json` found, and where on the map it is.
import { integer, integers, object, text } from "../venue/json.js";
import type { Spot, Venue } from "../venue/Venue.js";
import type { Graph } from "./graph.js";

export interface Finding {
  readonly kind: string;
  readonly ids: readonly number[];
  readonly map: number | null;
  // In English, as the command says it.
  readonly message: string;
}

// Null where it is not what the command prints.
export function readFindings(value: unknown): Finding[] | null {
  const found = object(value)["findings"];
  if (!Array.isArray(found)) return null;
  return found.map(object).map((each) => ({
    kind: text(each["kind"]),
    ids: integers(each["ids"]),
    map: integer(each["map"]),
    message: text(each["message"]),
  }));
}

// In the order in which they came.
export function byKind(findings: readonly Finding[]): Map<string, Finding[]> {
  const kinds = new Map<string, Finding[]>();
  for (const each of findings) kinds.set(each.kind, [...(kinds.get(each.kind) ?? []), each]);
  return kinds;
}

const ofPlaces = new Set(["unreachable", "notStepFree", "repeatedName", "missingName"]);
// The first id is a path's, the others are those of waypoints on it.
const ofLinks = new Set(["zeroLength", "longLink", "throughWall"]);
const ofRecords = new Set(["danglingId", "repeatedId"]);
const ofMaps = new Set(["floorWithoutMover", "missingScale", "missingLevel", "placement"]);

function waypointsOf({ kind, ids }: Finding, graph: Graph): readonly number[] {
  if (ofLinks.has(kind)) return ids.slice(1);
  if (!ofRecords.has(kind)) return ids;
  return ids.flatMap((id) => graph.paths.get(id)?.waypoints ?? [id]);
}

export function spotsOf(finding: Finding, venue: Venue, graph: Graph): Spot[] {
  const { kind, ids, map } = finding;
  if (ofMaps.has(kind)) return [];
  const spots = ofPlaces.has(kind)
    ? venue.places.filter((place) => ids.includes(place.id)).flatMap((place) => place.spots)
    : waypointsOf(finding, graph)
        .map((id) => venue.waypoints.get(id))
        .filter((spot) => spot !== undefined);
  // Records of several kinds may have one id: those on another map are not meant.
  const there = spots.filter((spot) => map === null || spot.map === map);
  return [...new Map(there.map((spot) => [spot.waypoint, spot])).values()];
}
