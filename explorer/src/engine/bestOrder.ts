// The order in which several stops are soonest visited from a start, by the walks between them. From
// each stop the next one's nearest door is taken, as the way that is shown does.
import type { RemoteVenue } from "terncorekit/worker";

interface Order {
  readonly stops: readonly number[];
  readonly cost: number;
}

// Tries every order, but for those that cost more than one that is known before their end.
function tried(
  doors: readonly (readonly number[])[],
  cost: (from: number, to: number) => number,
): readonly number[] {
  let best: Order = { stops: [], cost: Infinity };
  const visit = (at: number, before: Order, left: readonly number[]) => {
    if (before.cost >= best.cost) return;
    if (left.length === 0) best = before;
    for (const stop of left) {
      const door = doors[stop]!.reduce((a, b) => (cost(at, b) < cost(at, a) ? b : a));
      const order = { stops: [...before.stops, stop], cost: before.cost + cost(at, door) };
      visit(door, order, left.filter((each) => each !== stop));
    }
  };
  visit(0, { stops: [], cost: 0 }, doors.map((_, stop) => stop));
  return best.stops;
}

// Where the waypoints of each stop stand in a list of the start and all of them.
function rowsOf(stops: readonly (readonly number[])[]): number[][] {
  let next = 1;
  return stops.map((waypoints) => waypoints.map(() => next++));
}

// `stops` are the waypoints of each, any of which will do. What cannot be reached comes last.
export async function bestOrder(
  venue: Pick<RemoteVenue, "matrix">,
  start: number,
  stops: readonly (readonly number[])[],
  level: { accessibility?: number },
): Promise<number[]> {
  const known = stops.map((_, stop) => stop).filter((stop) => stops[stop]!.length > 0);
  const ids = [start, ...stops.flat()];
  const { costs, columns } = await venue.matrix({ from: ids, to: ids, ...level });
  const finite = costs.filter(Number.isFinite);
  const tooMuch = 1 + finite.reduce((most, cost) => Math.max(most, cost), 0) * (stops.length + 1);
  const rows = rowsOf(stops);
  const order = tried(
    known.map((stop) => rows[stop]!),
    (from, to) => Math.min(costs[from * columns + to]!, tooMuch),
  );
  const unknown = stops.map((_, stop) => stop).filter((stop) => !known.includes(stop));
  return [...order.map((index) => known[index]!), ...unknown];
}
