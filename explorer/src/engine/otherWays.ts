// Ways that are worth a look beside the best one.
import type { Engine, Segment, Way, WayRequest } from "./Engine.js";
import { toldRoute } from "./toldRoute.js";

// How much of the best way another one may share: the library offers one for each.
const shares = [0.6, 0.3, 0.85];
const most = 3;

function waypointsOf(segments: readonly Segment[]): string {
  return segments.map((segment) => segment.points.join(" ")).join(" ");
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
  return ways.sort((a, b) => a.seconds - b.seconds);
}
