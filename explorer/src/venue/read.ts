// Makes a venue of its documents.
import { frameOf } from "./frame.js";
import { integer, integers, items, list, number, object, point, text, type Json } from "./json.js";
import { levelsOf } from "./levels.js";
import { edgesOf, moversOf, walking, type Path } from "./movers.js";
import { namesOf } from "./names.js";
import { placementOf, type Placement } from "./placement.js";
import type { Building, Category, Floor, PathType, Place, Spot, Venue } from "./Venue.js";

// The library knows a null level by this number.
const unknownLevel = -2_147_483_648;
const noFrame = [0, 0, 1000, 1000] as const;
// Rooms lie around the ways to them.
const airOfFloor = 0.24;

type Frame = Floor["frame"];

// By the maps that they are on, in map units.
type Spots = ReadonlyMap<number, readonly Spot[]>;

function byMap(waypoints: Iterable<Spot>): Spots {
  const spots = new Map<number, Spot[]>();
  for (const spot of waypoints) {
    const own = spots.get(spot.map);
    if (own === undefined) spots.set(spot.map, [spot]);
    else own.push(spot);
  }
  return spots;
}

// Around a map's waypoints, with some air; null where it has none.
function aroundSpots(spots: readonly Spot[]): Frame | null {
  let [left, top, right, bottom] = [Infinity, Infinity, -Infinity, -Infinity];
  for (const { at } of spots) {
    [left, right] = [Math.min(left, at[0]), Math.max(right, at[0])];
    [top, bottom] = [Math.min(top, at[1]), Math.max(bottom, at[1])];
  }
  if (left > right) return null;
  const across = Math.max(right - left, 1) * airOfFloor;
  const down = Math.max(bottom - top, 1) * airOfFloor;
  return [left - across, top - down, right - left + 2 * across, bottom - top + 2 * down];
}

// What two frames share; the second where that is nothing.
function shared(a: Frame, b: Frame): Frame {
  const [left, top] = [Math.max(a[0], b[0]), Math.max(a[1], b[1])];
  const width = Math.min(a[0] + a[2], b[0] + b[2]) - left;
  const height = Math.min(a[1] + a[3], b[1] + b[3]) - top;
  return width > 0 && height > 0 ? [left, top, width, height] : b;
}

function byLevel(a: Floor, b: Floor): number {
  if (a.level === null || b.level === null) return Number(a.level === null) - Number(b.level === null);
  return b.level - a.level;
}

function floorOf(record: Json, building: Building, spots: Spots): Floor | null {
  const map = object(record["map"]);
  const id = integer(map["id"]);
  if (id === null) return null;
  const drawing = text(map["svg"]);
  const level = number(record["level"]);
  const scale = number(map["mmPerPixel"]);
  const walked = aroundSpots(spots.get(id) ?? []);
  const frame = frameOf(drawing) ?? walked ?? noFrame;
  return {
    map: id,
    names: namesOf(record, text(record["shortName"])),
    shortName: text(record["shortName"]) || (level === null ? "·" : String(level)),
    level: level === unknownLevel ? null : level,
    building,
    drawing,
    frame,
    home: shared(walked ?? frame, frame),
    mmPerUnit: scale !== null && scale > 0 ? scale : null,
  };
}

function cornersOf(document: Json): Building["corners"] {
  const corners = object(document["coordinates"]);
  const [from, to] = [point(corners["topLeft"]), point(corners["bottomRight"])];
  return from === null || to === null ? null : [[from[1], from[0]], [to[1], to[0]]];
}

// The one that is named, else that of the ground. Where nobody walks on it, the nearest one that has
// ways: an empty floor is nothing to begin with.
function firstOf(floors: readonly Floor[], named: Floor | null, spots: Spots): Floor | null {
  const first = named ?? floors.find((each) => each.level === 0) ?? floors.at(-1) ?? null;
  if (first === null || spots.has(first.map)) return first;
  const away = ({ level }: Floor) => Math.abs((level ?? Infinity) - (first.level ?? 0));
  const walked = floors.filter((each) => spots.has(each.map));
  return walked.sort((a, b) => away(a) - away(b))[0] ?? first;
}

type Whereabouts = Pick<Building, "venue" | "venueNames" | "placement">;

function buildingOf(document: Json, whereabouts: Whereabouts, spots: Spots): Building {
  const floors: Floor[] = [];
  const building = {
    id: integer(document["id"]) ?? 0,
    names: namesOf(document),
    ...whereabouts,
    corners: cornersOf(document),
    floors,
    firstFloor: null as Floor | null,
  };
  const first = integer(document["defaultFloorId"]);
  let named: Floor | null = null;
  for (const record of items(document["floors"])) {
    const floor = floorOf(record, building, spots);
    if (floor === null) continue;
    floors.push(floor);
    if (integer(record["id"]) === first) named = floor;
  }
  floors.sort(byLevel);
  building.firstFloor = firstOf(floors, named, spots);
  return building;
}

// A venue without buildings has a single map.
function onlyBuilding(venue: Json, whereabouts: Whereabouts, spots: Spots): Building {
  const floors = { items: [{ map: venue["map"], name: venue["name"], level: 0 }] };
  return buildingOf({ id: 0, name: venue["name"], floors }, whereabouts, spots);
}

function spotsOf(record: Json, waypoints: ReadonlyMap<number, Spot>): Spot[] {
  const ids = list(record["locations"]).flatMap((each) => integers(object(each)["waypointIds"]));
  return ids.map((id) => waypoints.get(id)).filter((spot) => spot !== undefined);
}

function placesOf(venue: Json, waypoints: ReadonlyMap<number, Spot>): Place[] {
  const categories = new Map<number, Category>();
  for (const each of list(object(venue["extensors"])["categories"]).map(object)) {
    const id = integer(each["id"]);
    const names = namesOf(each);
    if (id !== null && names.name !== "") categories.set(id, { id, ...names });
  }
  const read = (kind: Place["kind"]) => (record: Json) => ({
    kind,
    id: integer(record["id"]) ?? 0,
    names: namesOf(record),
    categories: integers(record["categoryIds"])
      .map((id) => categories.get(id))
      .filter((names) => names !== undefined),
    description: text(record["description"]),
    keywords: list(record["keywords"]).map(text),
    symbol: text(record["svg"]),
    spots: spotsOf(record, waypoints),
  });
  const all = [
    ...items(venue["destinations"]).map(read("destination")),
    ...items(venue["amenities"]).map(read("amenity")),
  ];
  return all.filter((place) => place.names.name !== "");
}

function typesOf(venue: Json): Map<number, PathType> {
  const types = new Map<number, PathType>();
  for (const record of items(venue["pathTypes"])) {
    const id = integer(record["id"]);
    if (id === null) continue;
    types.set(id, {
      id,
      names: namesOf(record),
      symbol: text(record["svg"]),
      accessibility: integer(record["accessibility"]) ?? 0,
    });
  }
  return types;
}

interface Ways {
  waypoints: Map<number, Spot>;
  paths: Path[];
}

function addWays(ways: Ways, map: Json): void {
  const id = integer(map["id"]);
  for (const record of items(map["waypoints"])) {
    const waypoint = integer(record["id"]);
    const at = point(record["coordinates"]);
    if (id === null || waypoint === null || at === null) continue;
    ways.waypoints.set(waypoint, { waypoint, map: id, at });
  }
  for (const record of items(map["paths"])) {
    const type = integer(record["pathTypeId"]);
    if (type === null) continue;
    const waypoints = integers(record["waypointIds"]);
    ways.paths.push({ names: namesOf(record), type, waypoints });
  }
}

function mapsOf(venue: Json, buildings: readonly Json[]): Json[] {
  const floors = buildings.flatMap((each) => items(each["floors"]));
  return [...floors.map((each) => object(each["map"])), object(venue["map"])];
}

// Only degrees that are meant as such lie all in the small part of the globe that the venue covers.
function areDegrees({ waypoints }: Ways, placement: Placement, firstMap: Json): boolean {
  const [x, y, width, height] = frameOf(text(firstMap["svg"])) ?? noFrame;
  return [...waypoints.values()].every(({ at }) => {
    const [across, down] = placement.fromDegrees(at);
    return across >= x - width && across <= x + 2 * width && down >= y - height && down <= y + 2 * height;
  });
}

function turnIntoUnits({ waypoints }: Ways, placement: Placement): void {
  for (const [id, spot] of waypoints) {
    waypoints.set(id, { ...spot, at: placement.fromDegrees(spot.at) });
  }
}

// `document` is the venue's, `buildings` are those that it lists, in its order.
export function readVenue(document: Json, buildings: readonly Json[]): Venue {
  const ways: Ways = { waypoints: new Map(), paths: [] };
  const maps = mapsOf(document, buildings);
  for (const map of maps) addWays(ways, map);
  const placement = placementOf(document, maps[0] ?? {});
  const isInDegrees = placement !== null && areDegrees(ways, placement, maps[0]!);
  if (isInDegrees) turnIntoUnits(ways, placement);
  const types = typesOf(document);
  const used = new Set(ways.paths.map((path) => path.type));
  const names = namesOf(document);
  const id = integer(document["id"]) ?? 0;
  const whereabouts = { venue: id, venueNames: names, placement };
  const spots = byMap(ways.waypoints.values());
  const read =
    buildings.length > 0
      ? buildings.map((each) => buildingOf(each, whereabouts, spots))
      : [onlyBuilding(document, whereabouts, spots)];
  const withFloors = read.filter((each) => each.floors.length > 0);
  const first = firstBuildingId(document);
  return {
    id,
    names,
    placement,
    isInDegrees,
    buildings: withFloors,
    floors: new Map(withFloors.flatMap((each) => each.floors.map((floor) => [floor.map, floor]))),
    firstFloor: (withFloors.find((each) => each.id === first) ?? withFloors[0])?.firstFloor ?? null,
    places: placesOf(document, ways.waypoints),
    waypoints: ways.waypoints,
    joined: new Set(ways.paths.flatMap((path) => (path.waypoints.length > 1 ? path.waypoints : []))),
    pathTypes: types,
    walks: ways.paths.filter((path) => path.type === walking).flatMap(edgesOf),
    movers: moversOf(ways.paths, types, ways.waypoints),
    levels: levelsOf([...types.values()].filter((type) => used.has(type.id))),
  };
}

// Of the venue's document; null where it names none.
export function firstBuildingId(venue: Json): number | null {
  const buildings = object(venue["buildings"]);
  return integer(buildings["defaultId"]) ?? integer(items(buildings)[0]?.["id"]);
}

// The building with the floor of a map alone, or with the one that it begins on: all that a picture of
// that floor takes.
export function withOneFloor(building: Json, map: number | null): Json {
  const floors = items(building["floors"]);
  const floor =
    floors.find((each) => map !== null && integer(object(each["map"])["id"]) === map) ??
    floors.find((each) => integer(each["id"]) === integer(building["defaultFloorId"]));
  return floor === undefined ? building : { ...building, floors: { items: [floor] } };
}
