// What of the data a finger means: a waypoint rather than the ways that meet there.
import { distance } from "../venue/drawing.js";
import type { Floor, Point, Venue } from "../venue/Venue.js";
import type { Graph } from "./graph.js";

export type Touched =
  | { readonly waypoint: number; readonly path?: undefined }
  | { readonly path: number; readonly waypoint?: undefined };

// From a point to what is nearest of the line between two others.
export function distanceToLine(at: Point, from: Point, to: Point): number {
  const [across, down] = [to[0] - from[0], to[1] - from[1]];
  const squared = across * across + down * down;
  const along = (at[0] - from[0]) * across + (at[1] - from[1]) * down;
  const share = squared === 0 ? 0 : Math.min(Math.max(along / squared, 0), 1);
  return distance(at, [from[0] + across * share, from[1] + down * share]);
}

export function recordAt(
  venue: Venue,
  graph: Graph,
  floor: Floor,
  at: Point,
  reach: number,
): Touched | null {
  let [best, least]: [Touched | null, number] = [null, reach];
  for (const spot of venue.waypoints.values()) {
    if (spot.map !== floor.map || distance(at, spot.at) > least) continue;
    [best, least] = [{ waypoint: spot.waypoint }, distance(at, spot.at)];
  }
  if (best !== null) return best;
  for (const { path, ends } of graph.links) {
    const [from, to] = ends.map((id) => venue.waypoints.get(id)!);
    if (from!.map !== floor.map || to!.map !== floor.map) continue;
    const away = distanceToLine(at, from!.at, to!.at);
    if (away <= least) [best, least] = [{ path: path.id }, away];
  }
  return best;
}
