// What stands on a floor: the names of destinations, and symbols for amenities and movers.
import { cleared, distance, type Drawn } from "./drawing.js";
import type { Floor, Mover, Place, Point, Spot, Venue } from "./Venue.js";

export interface Sign {
  // A mover has none.
  readonly place: Place | null;
  readonly mover: Mover | null;
  readonly at: Point;
}

export interface SignedFloor {
  readonly floor: Floor;
  // The floor's drawing without what the signs say.
  readonly drawing: string;
  readonly signs: readonly Sign[];
}

// A place's name or symbol stands within this part of the floor's longer side from its doors.
const reachOfFloor = 0.15;

interface Standing extends Drawn<string> {
  readonly place: Place | null;
  readonly movers: readonly Mover[];
}

const onFloor = (floor: Floor) => (spot: Spot) => spot.map === floor.map;

function standingPlaces(venue: Venue, floor: Floor): Standing[] {
  return venue.places
    .map((place) => ({
      key: `${place.kind} ${place.id}`,
      name: place.kind === "destination" ? place.names.name : "",
      symbol: place.symbol,
      near: place.spots.filter(onFloor(floor)).map((spot) => spot.at),
      place,
      movers: [],
    }))
    .filter((each) => each.near.length > 0);
}

// The movers of one type together: they share their symbol.
function standingMovers(venue: Venue, floor: Floor): Standing[] {
  const types = new Map<number, Standing & { movers: Mover[]; near: Point[] }>();
  for (const mover of venue.movers) {
    const spots = mover.spots.filter(onFloor(floor));
    if (spots.length === 0) continue;
    const { id, symbol } = mover.type;
    const standing = types.get(id) ??
      { key: `mover ${id}`, name: "", symbol, near: [], place: null, movers: [] };
    standing.movers.push(mover);
    standing.near.push(...spots.map((spot) => spot.at));
    types.set(id, standing);
  }
  return [...types.values()];
}

function closest(points: readonly Point[], to: Point, reach: number): Point | undefined {
  const near = points.filter((each) => distance(each, to) <= reach);
  return near.sort((a, b) => distance(a, to) - distance(b, to))[0];
}

function middle(points: readonly Point[]): Point {
  const sum = points.reduce<Point>(([x, y], at) => [x + at[0], y + at[1]], [0, 0]);
  return [sum[0] / points.length, sum[1] / points.length];
}

// One sign for each, where it was drawn, or at its doors; several doors to one drawing share it.
function signsOf(standing: Standing, floor: Floor, drawn: readonly Point[], reach: number): Sign[] {
  const { place, movers, near } = standing;
  if (movers.length > 0) {
    return movers.map((mover) => {
      const at = middle(mover.spots.filter(onFloor(floor)).map((spot) => spot.at));
      return { place: null, mover, at: closest(drawn, at, reach) ?? at };
    });
  }
  if (place?.kind === "destination") return [{ place, mover: null, at: drawn[0] ?? near[0]! }];
  const points = new Set(near.map((door) => closest(drawn, door, reach) ?? door));
  return [...points].map((at) => ({ place, mover: null, at }));
}

export function signedFloor(venue: Venue, floor: Floor): SignedFloor {
  const [, , width, height] = floor.frame;
  const reach = Math.max(width, height) * reachOfFloor;
  const standing = [...standingPlaces(venue, floor), ...standingMovers(venue, floor)];
  const { drawing, at } = cleared(floor.drawing, standing, reach);
  const signs = standing.flatMap((each) => signsOf(each, floor, at.get(each.key) ?? [], reach));
  return { floor, drawing, signs };
}
