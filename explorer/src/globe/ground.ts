// Where buildings lie on the ground that they share: in metres of the projection, y down, from the
// corner in the north-west on.
import type { Context } from "../panel/Context.js";
import { toMercator } from "../venue/placement.js";
import type { Building, Point } from "../venue/Venue.js";
import { boxAround, cornersOf, type Box } from "./sight.js";

export interface Placed {
  readonly building: Building;
  // In map units, and on the ground.
  readonly own: Box;
  readonly ground: Box;
}

const downward = ([x, y]: Point): Point => [x, -y];

// Between its corners; without any, around its waypoints.
function placedOf({ venue }: Context, building: Building): Placed | null {
  const { placement, corners } = building;
  if (placement === null || building.firstFloor === null) return null;
  const maps = new Set(building.floors.map((floor) => floor.map));
  const spots = [...venue.waypoints.values()].filter((spot) => maps.has(spot.map));
  const points = corners?.map(placement.fromDegrees) ?? spots.map((spot) => spot.at);
  const own = boxAround(points);
  if (!(own.width > 0 && own.height > 0)) return null;
  const ends = cornersOf(own).map((at) => downward(toMercator(placement.toDegrees(at))));
  return { building, own, ground: boxAround(ends) };
}

const nothing: Box = { left: 0, top: 0, width: 1, height: 1 };

export function groundOf(placed: readonly Placed[]): Box {
  if (placed.length === 0) return nothing;
  return boxAround(placed.flatMap(({ ground }) => cornersOf(ground)));
}

export function placedBuildings(context: Context): Placed[] {
  const placed = context.venue.buildings
    .map((building) => placedOf(context, building))
    .filter((each) => each !== null);
  const { left, top } = groundOf(placed);
  return placed.map((each) => {
    const { ground } = each;
    return { ...each, ground: { ...ground, left: ground.left - left, top: ground.top - top } };
  });
}
