// What a venue's accessibility levels make different.
import { walking } from "./movers.js";
import type { Level, PathType } from "./Venue.js";

// `used` are the path types of the venue's paths. A venue without a difference has one level.
export function levelsOf(used: readonly PathType[]): Level[] {
  const values = [...new Set(used.map((type) => type.accessibility))].sort((a, b) => a - b);
  return values.map((accessibility) => ({
    accessibility,
    without: used.filter((type) => type.id !== walking && type.accessibility > accessibility),
  }));
}
