// What the parts of the panel share.
import type { Engine } from "../engine/Engine.js";
import type { End, State } from "../state/State.js";
import type { Store } from "../state/Store.js";
import type { Key, Texts } from "../texts/texts.js";
import { symbolFor, type Symbol } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import type { Floor, Mover, Names, PathType, Place, Point, Spot, Venue } from "../venue/Venue.js";
import { distance } from "../venue/drawing.js";

export interface OfferedVenue {
  readonly id: number;
  readonly names: Names;
}

// What is said of the data to whoever maintains it.
export interface DataParts {
  readonly panel: (state: State) => HTMLElement[];
  readonly record: (end: End) => HTMLElement;
}

export interface Context {
  readonly store: Store;
  readonly venue: Venue;
  // All that are offered, this one among them; of joined ones there is nothing to choose.
  readonly venues: readonly OfferedVenue[];
  // The address of a picture; null where there is none.
  readonly logo: string | null;
  readonly engine: Engine;
  readonly texts: () => Texts;
  // Tells everybody, those who listen too.
  readonly say: (text: string) => void;
  readonly failed: (error: unknown) => void;
  readonly flyTo: (map: number, at: Point) => void;
  // What is shown, as something to hand on or to carry.
  readonly share: () => void;
  readonly print: () => void;
  // Null while nobody asked for it.
  readonly data: () => DataParts | null;
  // What is in the middle of the map, of the floor that is shown.
  readonly middle: () => { readonly map: number; readonly at: Point };
}

// What movers of a kind are called where the venue has no word for them in the reader's language.
const moverWords: Readonly<Partial<Record<Symbol, Key>>> = {
  lift: "moverLift",
  escalator: "moverEscalator",
  stairs: "moverStairs",
  ramp: "moverRamp",
  walkway: "moverWalkway",
  gate: "moverGate",
};

export function typeName({ texts }: Context, { names }: PathType): string {
  const key = moverWords[symbolFor([names.name])];
  return names.others.get(texts().language) ?? (key === undefined ? names.name : texts().of(key));
}

// One that has no name of its own is called as its type is.
export function moverName(context: Context, { names, type }: Mover): string {
  return names === type.names ? typeName(context, type) : nameIn(context.texts().language, names);
}

// Of two types that would be called alike each has the venue's own name.
function nameOfType(context: Context, type: PathType): string {
  const name = typeName(context, type);
  const types = new Set(context.venue.movers.map((mover) => mover.type));
  const isAlone = [...types].every((each) => each === type || typeName(context, each) !== name);
  return isAlone ? name : nameIn(context.texts().language, type.names);
}

export function placeOf({ venue }: Context, end: End): Place | null {
  return venue.places.find((each) => each.kind === end.kind && each.id === end.id) ?? null;
}

export function endOfMover({ id }: Mover): End {
  return { kind: "mover", id };
}

export function moverOf({ venue }: Context, end: End): Mover | null {
  return (end.kind === "mover" && venue.movers.find((each) => each.id === end.id)) || null;
}

function pathTypeOf({ venue }: Context, end: End): PathType | null {
  if (end.kind !== "pathType") return null;
  return venue.movers.find((mover) => mover.type.id === end.id)?.type ?? null;
}

// Whether the venue has what an end names.
export function isThere(context: Context, end: End): boolean {
  const known = placeOf(context, end) ?? moverOf(context, end) ?? pathTypeOf(context, end);
  return known !== null || spotsOf(context, end).length > 0;
}

// Where an end is: a place everywhere that it is reached, movers of a type those that are in order.
export function spotsOf(context: Context, end: End): readonly Spot[] {
  const { venue, store } = context;
  switch (end.kind) {
    case "waypoint": {
      const spot = venue.waypoints.get(end.id);
      return spot === undefined ? [] : [spot];
    }
    case "mover":
      return moverOf(context, end)?.spots ?? [];
    case "pathType": {
      const own = venue.movers.filter((mover) => mover.type.id === end.id);
      return own.filter((mover) => !store.state.closed.includes(mover.id)).flatMap(({ spots }) => spots);
    }
    default:
      return placeOf(context, end)?.spots ?? [];
  }
}

export function waypointsOf(context: Context, end: End): readonly number[] {
  return spotsOf(context, end).map((spot) => spot.waypoint);
}

// One waypoint to start from: the first that a path leads to, as the command takes it.
export function startOf(context: Context, end: End): number | null {
  const all = waypointsOf(context, end);
  return all.find((id) => context.venue.joined.has(id)) ?? all[0] ?? null;
}

// A number alone is not known for a floor's name.
export function nameOfFloor({ texts }: Context, floor: Floor): string {
  const name = nameIn(texts().language, floor.names);
  return /^-?\d+$/.test(name) ? texts().of("floorNumber", { n: name }) : name;
}

// A floor's name, with its building's where there are several.
export function floorName(context: Context, floor: Floor): string {
  const { venue, texts } = context;
  const name = nameOfFloor(context, floor);
  if (venue.buildings.length < 2) return name;
  const words = [name, nameIn(texts().language, floor.building.names)];
  const isAmongVenues = venue.buildings.some((each) => each.venue !== floor.building.venue);
  if (isAmongVenues) words.push(nameIn(texts().language, floor.building.venueNames));
  return words.join(", ");
}

// Whether all buildings can be shown beside each other: where on the globe each lies is known.
export function hasOverview({ buildings }: Venue): boolean {
  return buildings.length > 1 && buildings.every((each) => each.placement !== null);
}

type Somewhere = Pick<Place, "spots">;

// The floors where a place or a mover is, each once.
export function floorsOf({ venue }: Context, { spots }: Somewhere): Floor[] {
  const maps = new Set(spots.map((spot) => spot.map));
  return [...maps].map((map) => venue.floors.get(map)).filter((floor) => floor !== undefined);
}

// The floors that a mover joins, from the bottom.
export function floorsJoined(context: Context, mover: Mover): string {
  const joined = new Set(floorsOf(context, mover));
  const buildings = new Set([...joined].map((floor) => floor.building));
  const all = [...buildings].map((building) => {
    const own = building.floors.filter((floor) => joined.has(floor)).reverse();
    const floors = own.map((floor) => floor.shortName).join(" · ");
    if (context.venue.buildings.length < 2) return floors;
    return `${floors}, ${nameIn(context.texts().language, building.names)}`;
  });
  return all.join("; ");
}

export function whereabouts(context: Context, place: Somewhere): string {
  const floors = floorsOf(context, place);
  const [first] = floors;
  if (first === undefined) return "";
  return floors.length === 1 ? floorName(context, first) : floorsTogether(context, floors);
}

function floorsTogether(context: Context, floors: readonly Floor[]): string {
  const { texts, venue } = context;
  const language = texts().language;
  if (venue.buildings.length < 2) return floors.map((each) => nameOfFloor(context, each)).join(", ");
  const buildings = [...new Set(floors.map((each) => each.building))];
  return buildings.map((each) => nameIn(language, each.names)).join(", ");
}

// How near somebody must stand to a door to stand near its place, in metres or, without a scale, in
// parts of the floor.
const near = { metres: 25, part: 0.05 };

export function nameOfEnd(context: Context, end: End): string {
  const { venue, texts } = context;
  const place = placeOf(context, end);
  if (place !== null) return nameIn(texts().language, place.names);
  const mover = moverOf(context, end);
  if (mover !== null) return moverName(context, mover);
  const type = pathTypeOf(context, end);
  if (type !== null) return nameOfType(context, type);
  const [spot] = spotsOf(context, end);
  const floor = venue.floors.get(spot?.map ?? NaN);
  if (spot === undefined || floor === undefined) return "";
  const reach =
    floor.mmPerUnit === null ? near.part * floor.frame[2] : (near.metres * 1000) / floor.mmPerUnit;
  let best: Place | null = null;
  let least = reach;
  for (const each of venue.places) {
    if (each.kind !== "destination") continue;
    for (const door of each.spots) {
      if (door.map !== spot.map || distance(door.at, spot.at) > least) continue;
      [best, least] = [each, distance(door.at, spot.at)];
    }
  }
  if (best !== null) return texts().of("spotNear", { place: nameIn(texts().language, best.names) });
  return texts().of("spot", { floor: floorName(context, floor) });
}
