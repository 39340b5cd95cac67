// Where a link leads that leaves the floor: "↑ 1" out of here, "LG ↑" only into here, "↕ 1" both.
import type { Floor, Venue } from "../venue/Venue.js";
import type { Neighbour } from "./graph.js";

export function arrowOf(venue: Venue, floor: Floor, neighbour: Neighbour): string {
  const there = venue.floors.get(venue.waypoints.get(neighbour.waypoint)?.map ?? NaN);
  if (there === undefined) return "";
  const rise = (there.level ?? 0) - (floor.level ?? 0);
  const name = there.building === floor.building ? there.shortName : there.building.names.name;
  if (rise === 0) return `⇄ ${name}`;
  if (neighbour.isOut && neighbour.isIn) return `↕ ${name}`;
  const arrow = neighbour.isOut === rise > 0 ? "↑" : "↓";
  return neighbour.isOut ? `${arrow} ${name}` : `${name} ${arrow}`;
}
