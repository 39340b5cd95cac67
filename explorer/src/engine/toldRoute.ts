// The steps of a route that need not be the best one. The library tells of the best between two
// waypoints only, so a route is told in stretches each of which is.
import type { Engine, Segment, Step, Way, WayRequest } from "./Engine.js";

type Point = readonly [number, number];

interface Spot {
  readonly waypoint: number;
  readonly map: number;
  readonly at: Point;
}

type How = Pick<WayRequest, "level" | "language">;

function spotsOf(segments: readonly Segment[]): Spot[] {
  return segments.flatMap(({ mapId, points, mapPoints }) =>
    points.map((waypoint, index) => ({ waypoint, map: mapId, at: mapPoints[index]! })),
  );
}

function isSame(way: Way, spots: readonly Spot[]): boolean {
  const own = spotsOf(way.segments);
  return own.length === spots.length && own.every(({ waypoint }, i) => waypoint === spots[i]!.waypoint);
}

function turnAt(a: Point, b: Point, c: Point): number {
  const turn = Math.atan2(c[1] - b[1], c[0] - b[0]) - Math.atan2(b[1] - a[1], b[0] - a[0]);
  return Math.abs(Math.atan2(Math.sin(turn), Math.cos(turn)));
}

// Where it is parted: behind a mover if there is one, else where it goes straight on, so that no
// turn is lost, and of several such places in the one that is nearest to the middle.
function parting(spots: readonly Spot[]): number {
  const lossAt = (index: number) => {
    const [before, here, after] = [spots[index - 1]!, spots[index]!, spots[index + 1]!];
    const offMiddle = Math.abs(index / (spots.length - 1) - 0.5);
    if (before.map !== here.map) return offMiddle;
    if (here.map !== after.map) return 20 + offMiddle;
    return 1 + turnAt(before.at, here.at, after.at) + offMiddle;
  };
  const inner = spots.slice(1, -1).map((_, index) => index + 1);
  return inner.reduce((best, index) => (lossAt(index) < lossAt(best) ? index : best));
}

// What is said of arriving between two stretches and of starting again is left out.
function joined(first: readonly Step[], second: readonly Step[]): Step[] {
  const last = first.at(-2);
  const [depart] = second;
  if (last === undefined || depart === undefined) return [...first, ...second];
  const both = { mm: last.mm + depart.mm, seconds: last.seconds + depart.seconds };
  return [...first.slice(0, -2), { ...last, ...both }, ...second.slice(1)];
}

async function stepsOver(engine: Engine, spots: readonly Spot[], how: How): Promise<readonly Step[]> {
  const [from, to] = [spots[0]!.waypoint, spots.at(-1)!.waypoint];
  const way = await engine.way({ from, to: [to], ...how });
  if (way === null) return [];
  if (spots.length < 3 || isSame(way, spots)) return way.steps;
  const at = parting(spots);
  const parts = [spots.slice(0, at + 1), spots.slice(at)];
  const [first, second] = await Promise.all(parts.map((part) => stepsOver(engine, part, how)));
  return joined(first!, second!);
}

export async function toldRoute(engine: Engine, segments: readonly Segment[], how: How): Promise<Way> {
  const steps = await stepsOver(engine, spotsOf(segments), how);
  const sum = (of: (step: Step) => number) => steps.reduce((all, step) => all + of(step), 0);
  return { segments, steps, mm: sum((step) => step.mm), seconds: sum((step) => step.seconds) };
}
