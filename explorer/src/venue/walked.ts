// What of a floor's walks lies within a distance of a start, in stretches of about the same one.
import { distance } from "./drawing.js";
import type { Edge, Floor, Point, Venue } from "./Venue.js";

export interface Stretch {
  readonly points: readonly [Point, Point];
  // From 0, the nearest, to one less than there are shades.
  readonly shade: number;
}

// How far one gets, and from where on the last shade is used.
export interface Range {
  readonly most: number;
  readonly palest: number;
}

interface Walk {
  readonly from: Point;
  readonly to: Point;
  // At its beginning and at its end.
  readonly mm: readonly [number, number];
}

function between(a: Point, b: Point, part: number): Point {
  return [a[0] + (b[0] - a[0]) * part, a[1] + (b[1] - a[1]) * part];
}

// Where both ends are reached, one comes to the middle from either side.
function walksOver([a, b]: readonly [Point, Point], ends: readonly [number, number], length: number): Walk[] {
  const [fromA, fromB] = ends;
  const meeting = Math.min(Math.max((fromB - fromA + length) / 2, 0), length);
  const middle = length === 0 ? a : between(a, b, meeting / length);
  return [
    { from: a, to: middle, mm: [fromA, fromA + meeting] },
    { from: b, to: middle, mm: [fromB, fromB + length - meeting] },
  ];
}

function shaded(walk: Walk, { most, palest }: Range, shades: number): Stretch[] {
  const { from, to } = walk;
  const [begin, end] = [walk.mm[0], Math.min(walk.mm[1], most)];
  const step = palest / shades;
  const stretches: Stretch[] = [];
  let shade = Math.min(Math.floor(begin / step), shades - 1);
  for (let first = begin; first < end; shade += 1) {
    const last = shade < shades - 1 ? Math.min(end, (shade + 1) * step) : end;
    const at = (mm: number) => between(from, to, (mm - begin) / (walk.mm[1] - begin));
    if (last > first) stretches.push({ points: [at(first), at(last)], shade });
    first = Math.max(first, last);
  }
  return stretches;
}

// `mm` is how far waypoints are from the start. A map without a scale has nothing to measure by.
export function walkedOn(
  venue: Venue,
  floor: Floor,
  mm: ReadonlyMap<number, number>,
  range: Range,
  shades: number,
): Stretch[] {
  const scale = floor.mmPerUnit;
  if (scale === null) return [];
  return venue.walks.flatMap(([a, b]: Edge) => {
    const spots = [venue.waypoints.get(a), venue.waypoints.get(b)] as const;
    if (spots[0]?.map !== floor.map || spots[1]?.map !== floor.map) return [];
    const points = [spots[0].at, spots[1].at] as const;
    const length = distance(...points) * scale;
    const ends = [mm.get(a) ?? Infinity, mm.get(b) ?? Infinity] as const;
    if (ends[0] === Infinity && ends[1] === Infinity) return [];
    const far = Math.min(...ends) + length;
    const known = [Math.min(ends[0], far), Math.min(ends[1], far)] as const;
    return walksOver(points, known, length).flatMap((walk) => shaded(walk, range, shades));
  });
}
