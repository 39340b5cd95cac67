// Ways that are worth a look beside the best one.
import type { Engine, Segment, Way, WayRequest } from "./Engine.js";
import { toldRoute } from "./toldRoute.js";

// How much of the best way another one may share: the library offers one for each.
const shares = [0.6, 0.3, 0.85];
const most = 3;

function waypointsOf(segments: readonly Segment[]): string {
  return segments.map((segment) => segment.points.join(" ")).join(" ");
}

// All that is told of a way beside others. Which of two lifts side by side it is makes no choice.
function looksOf({ segments, steps, mm, seconds }: Way): string {
  const maps = segments.map(({ mapId }) => mapId);
  const movers = steps.map(({ mover }) => mover).filter((mover) => mover !== null);
  return JSON.stringify([maps, movers, Math.round(mm / 1000), Math.round(seconds / 60)]);
}

export async function otherWays(
  engine: Engine,
  best: Way,
  how: Pick<WayRequest, "level" | "language">,
): Promise<Way[]> {
  const from = best.segments[0]!.points[0]!;
  const to = best.segments.at(-1)!.points.at(-1)!;
  const asked = shares.map((share) => engine.alternatives(from, to, share, how.level));
  const routes = new Map<string, Segment[]>();
  for (const { alternatives } of await Promise.all(asked)) {
    for (const route of alternatives ?? []) routes.set(waypointsOf(route), route);
  }
  routes.delete(waypointsOf(best.segments));
  const chosen = [...routes.values()].slice(0, most - 1);
  const ways = await Promise.all(chosen.map((route) => toldRoute(engine, route, how)));
  ways.sort((a, b) => a.seconds - b.seconds);
  const looks = new Map([...ways].reverse().map((way) => [looksOf(way), way]));
  return ways.filter((way) => looks.get(looksOf(way)) === way && looksOf(way) !== looksOf(best));
}
