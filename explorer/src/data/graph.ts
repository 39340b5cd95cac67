// The waypoints and paths of a venue's documents, as whoever maintains them knows them.
import { integer, integers, items, object, text, type Json } from "../venue/json.js";
import type { VenueDocuments } from "../venue/joined.js";
import type { Venue } from "../venue/Venue.js";

export interface Path {
  readonly id: number;
  readonly name: string;
  readonly type: number;
  // The map whose document lists it.
  readonly map: number;
  // 1 is up only, 2 is down only: it counts where the path changes height.
  readonly direction: number;
  readonly waypoints: readonly number[];
}

// Two waypoints that follow each other on a path.
export interface Link {
  readonly path: Path;
  readonly ends: readonly [number, number];
  // Whether it leads from the first to the second, and from the second to the first.
  readonly leads: readonly [boolean, boolean];
}

// What one waypoint is joined to.
export interface Neighbour {
  readonly waypoint: number;
  readonly path: Path;
  readonly isOut: boolean;
  readonly isIn: boolean;
}

export interface Graph {
  readonly paths: ReadonlyMap<number, Path>;
  readonly links: readonly Link[];
  readonly neighbours: ReadonlyMap<number, readonly Neighbour[]>;
  // The codes that waypoints have in the source that they come from.
  readonly codes: ReadonlyMap<number, string>;
}

function pathOf(record: Json, map: number): Path | null {
  const id = integer(record["id"]);
  const type = integer(record["pathTypeId"]);
  if (id === null || type === null) return null;
  const direction = integer(record["direction"]) ?? 0;
  return { id, name: text(record["name"]), type, map, direction, waypoints: integers(record["waypointIds"]) };
}

function linksOf(path: Path, venue: Venue): Link[] {
  const links: Link[] = [];
  path.waypoints.slice(1).forEach((to, index) => {
    const from = path.waypoints[index]!;
    const [first, second] = [venue.waypoints.get(from), venue.waypoints.get(to)];
    if (first === undefined || second === undefined) return;
    const levels = [first, second].map((spot) => venue.floors.get(spot.map)?.level ?? 0);
    const rise = levels[1]! - levels[0]!;
    const isThere = path.direction !== (rise > 0 ? 2 : 1);
    const isBack = path.direction !== (rise > 0 ? 1 : 2);
    links.push({ path, ends: [from, to], leads: rise === 0 ? [true, true] : [isThere, isBack] });
  });
  return links;
}

// Two paths between the same waypoints, one for each direction, are one neighbour.
function addNeighbour(all: Map<number, Neighbour[]>, from: number, found: Neighbour): void {
  const own = all.get(from) ?? [];
  const isSame = (each: Neighbour) =>
    each.waypoint === found.waypoint && each.path.type === found.path.type;
  const same = own.find(isSame);
  const joined = {
    ...(same ?? found),
    isOut: found.isOut || (same?.isOut ?? false),
    isIn: found.isIn || (same?.isIn ?? false),
  };
  all.set(from, [...own.filter((each) => !isSame(each)), joined]);
}

function mapsOf({ venue, buildings }: VenueDocuments): Json[] {
  const floors = buildings.flatMap((each) => items(each["floors"]));
  return [...floors.map((each) => object(each["map"])), object(venue["map"])];
}

// `all` are the documents of the venue, and of those that it is joined to.
export function readGraph(venue: Venue, all: readonly VenueDocuments[]): Graph {
  const paths = new Map<number, Path>();
  const codes = new Map<number, string>();
  for (const map of all.flatMap(mapsOf)) {
    const mapId = integer(map["id"]);
    if (mapId === null) continue;
    for (const record of items(map["waypoints"])) {
      const id = integer(record["id"]);
      if (id !== null && text(record["externalId"]) !== "") codes.set(id, text(record["externalId"]));
    }
    for (const record of items(map["paths"])) {
      const path = pathOf(record, mapId);
      if (path !== null && !paths.has(path.id)) paths.set(path.id, path);
    }
  }
  const links = [...paths.values()].flatMap((path) => linksOf(path, venue));
  const neighbours = new Map<number, Neighbour[]>();
  for (const { path, ends, leads } of links) {
    const [from, to] = ends;
    addNeighbour(neighbours, from, { waypoint: to, path, isOut: leads[0], isIn: leads[1] });
    addNeighbour(neighbours, to, { waypoint: from, path, isOut: leads[1], isIn: leads[0] });
  }
  return { paths, links, neighbours, codes };
}
