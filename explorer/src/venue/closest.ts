// The waypoint that is nearest to a point of a map by straight line, of several the first, as the
// library finds it; null where the map has none. `isMeant` leaves others out.
import { distance } from "./drawing.js";
import type { Point, Spot, Venue } from "./Venue.js";

export function closestWaypoint(
  { waypoints }: Venue,
  map: number,
  at: Point,
  isMeant: (id: number) => boolean = () => true,
): number | null {
  let best: Spot | null = null;
  let least = Infinity;
  for (const spot of waypoints.values()) {
    if (spot.map !== map || !isMeant(spot.waypoint)) continue;
    const away = distance(spot.at, at);
    if (away < least) [best, least] = [spot, away];
  }
  return best?.waypoint ?? null;
}
