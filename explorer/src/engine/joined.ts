// Venues that are joined answer as one. Their graph is in degrees and leads across them; what is asked
// of a single one names it. Steps are told by the stretches of the way: the library tells them within
// one venue, whose lengths are not degrees.
import type { RemoteVenue } from "terncorekit/worker";
import type {
  Alternatives,
  Directions,
  Place,
  ReachRequest,
  Reached,
  RouteRequest,
  Segment,
  Step,
} from "terncorekit";
import { distance } from "../venue/drawing.js";
import { joinedId } from "../venue/joined.js";
import type { Floor, Point, Venue } from "../venue/Venue.js";

export interface Joined {
  readonly venue: Venue;
  // In the order in which their places are counted.
  readonly ids: readonly number[];
  readonly tell: Tell;
}

// The words of a step; `to` is the floor that it leads to.
export interface Tell {
  readonly depart: (language: string) => string;
  readonly change: (language: string, mover: number | null, from: Floor, to: Floor) => string;
  readonly arrive: (language: string) => string;
}

const walkingSpeed = 1.34;
const changeSeconds = 25;
const walk = 1;

function floorOf({ venue }: Joined, map: number): Floor {
  const floor = venue.floors.get(map);
  if (floor === undefined) throw new Error(`map ${map}`);
  return floor;
}

function lengthOf(points: readonly Point[], floor: Floor): number {
  const lengths = points.slice(1).map((at, index) => distance(points[index]!, at));
  return lengths.reduce((sum, each) => sum + each, 0) * (floor.mmPerUnit ?? 0);
}

// The same stretches with their points in map units.
function onMaps(joined: Joined, route: readonly Segment[]): Segment[] {
  let mm = 0;
  return route.map((segment) => {
    const floor = floorOf(joined, segment.mapId);
    const mapPoints = segment.points.map((id, index) => {
      const spot = joined.venue.waypoints.get(id);
      const at = spot?.at ?? floor.building.placement?.fromDegrees(segment.mapPoints[index]!);
      return [...(at ?? [0, 0])] as [number, number];
    });
    mm += lengthOf(mapPoints, floor);
    const pixelDistance = floor.mmPerUnit === null ? 0 : mm / floor.mmPerUnit;
    return { ...segment, mapPoints, mmDistance: mm, pixelDistance };
  });
}

function stepsOf(joined: Joined, route: readonly Segment[], language: string): Step[] {
  const steps: Step[] = [];
  let before = 0;
  route.forEach((segment, index) => {
    const mm = segment.mmDistance - before;
    before = segment.mmDistance;
    const next = route[index + 1];
    const [from, to] = [floorOf(joined, segment.mapId), next && floorOf(joined, next.mapId)];
    const isMover = next !== undefined && segment.mover !== null && segment.mover !== walk;
    const common = { direction: null, mapId: segment.mapId, landmark: null, mover: null, toMapId: null };
    const first = segment.points[0]!;
    if (index === 0) {
      const text = joined.tell.depart(language);
      steps.push({ ...common, kind: "depart", at: first, mm: 0, seconds: 0, text });
    }
    const end = { ...common, at: segment.points.at(-1)!, mm };
    const seconds = mm / 1000 / walkingSpeed;
    if (to === undefined) {
      steps.push({ ...end, kind: "arrive", seconds, text: joined.tell.arrive(language) });
      return;
    }
    steps.push({
      ...end,
      kind: isMover ? "mover" : "crossing",
      seconds: seconds + (isMover ? changeSeconds : 0),
      mover: isMover ? segment.mover : null,
      toMapId: to.map,
      text: joined.tell.change(language, isMover ? segment.mover : null, from, to),
    });
  });
  return steps;
}

// Answers what the engine asks a venue; what a map or a waypoint belongs to is known by its venue.
export class JoinedVenue {
  #remote: RemoteVenue;
  #joined: Joined;

  constructor(remote: RemoteVenue, joined: Joined) {
    this.#remote = remote;
    this.#joined = joined;
  }

  async directions({ language = "en", ...request }: RouteRequest & { language?: string }): Promise<Directions> {
    const route = onMaps(this.#joined, await this.#remote.route(request));
    const steps = stepsOf(this.#joined, route, language);
    const sum = (of: (step: Step) => number) => steps.reduce((all, step) => all + of(step), 0);
    return { route, steps, mm: sum((step) => step.mm), seconds: sum((step) => step.seconds) };
  }

  // Each goal by itself, as there may be some in each venue.
  async routeToAny({ to, ...request }: { from: number; to: number[]; accessibility?: number }): Promise<Segment[]> {
    const routes = await Promise.all(to.map((each) => this.#remote.route({ ...request, to: each })));
    const found = routes.filter((route) => route.length > 0);
    const cost = (route: readonly Segment[]) => route.at(-1)!.cost;
    return found.sort((a, b) => cost(a) - cost(b))[0] ?? [];
  }

  async places({ text }: { text: string }): Promise<Place[]> {
    const { ids } = this.#joined;
    const found = await Promise.all(ids.map((venue) => this.#remote.places({ text, venue })));
    const own = found.map((places, index) =>
      places.map((place) => ({ ...place, id: joinedId(index, place.id) })),
    );
    // The best of each first.
    const longest = Math.max(0, ...own.map((places) => places.length));
    const ranks = Array.from({ length: longest }, (_, rank) => own.map((places) => places[rank]));
    return ranks.flat().filter((place) => place !== undefined);
  }

  closest({ map, at }: { map: number; at: [number, number] }): Promise<number | null> {
    const { building } = floorOf(this.#joined, map);
    const [x, y] = building.placement?.toDegrees(at) ?? at;
    return this.#remote.closest({ venue: building.venue, map, at: [x, y] });
  }

  // There is only the best way: others are known within one venue.
  alternatives(): Promise<Alternatives> {
    return Promise.resolve({ optimal: null, alternatives: null });
  }

  // Within the start's venue.
  reach(request: Omit<ReachRequest, "from"> & { from: number }): Promise<Reached[]> {
    return this.#remote.reach({ ...request, venue: this.#venueOf(request.from) });
  }

  blockEdge({ from, to, blocked }: { from: number; to: number; blocked: boolean }): Promise<void> {
    return this.#remote.blockEdge({ venue: this.#venueOf(from), from, to, blocked });
  }

  #venueOf(waypoint: number): number {
    const map = this.#joined.venue.waypoints.get(waypoint)?.map ?? NaN;
    return floorOf(this.#joined, map).building.venue;
  }
}

// The engine asks no more of a venue than this.
export function joinedVenue(remote: RemoteVenue, joined: Joined): RemoteVenue {
  const own = new JoinedVenue(remote, joined);
  const answers: Partial<RemoteVenue> = {
    directions: (request) => own.directions(request),
    routeToAny: (request) => own.routeToAny(request),
    places: (request) => own.places(request as { text: string }),
    closest: (request) => own.closest(request),
    alternatives: () => own.alternatives(),
    reach: (request) => own.reach(request as ReachRequest & { from: number }),
    blockEdge: (request) => own.blockEdge(request),
  };
  return new Proxy(remote, {
    get: (target, name) => {
      const answer = (answers as Record<PropertyKey, unknown>)[name] ?? Reflect.get(target, name, target);
      return typeof answer === "function" ? answer.bind(target) : answer;
    },
  });
}
