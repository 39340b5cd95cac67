// Venues that are joined answer as one. Their graph is in degrees and leads across them. What needs
// lengths is asked of a venue alone: steps, other ways, and how far one gets.
import type { RemoteVenue } from "terncorekit/worker";
import type {
  Alternatives,
  AlternativesRequest,
  Directions,
  Matrix,
  MatrixRequest,
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

// The words of what no venue alone can tell, in the language of the page.
export interface Tell {
  readonly depart: () => string;
  // Where the way goes on in another venue.
  readonly into: (floor: Floor) => string;
  readonly arrive: () => string;
}

const walkingSpeed = 1.34;

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

// Where the way begins or ends at the very door between two venues.
function touchedSteps({ tell }: Joined, { mapId, points }: Segment): Step[] {
  const common = { direction: null, mapId, landmark: null, mover: null, toMapId: null, mm: 0, seconds: 0 };
  return [
    { ...common, kind: "depart", at: points[0]!, text: tell.depart() },
    { ...common, kind: "arrive", at: points[0]!, text: tell.arrive() },
  ];
}

interface Leg {
  readonly route: readonly Segment[];
  readonly steps: readonly Step[];
}

// What of a way follows each other in one venue.
function runsOf(joined: Joined, route: readonly Segment[]): Segment[][] {
  const venueOf = ({ mapId }: Segment) => floorOf(joined, mapId).building.venue;
  const runs: Segment[][] = [];
  for (const segment of route) {
    const last = runs.at(-1);
    if (last !== undefined && venueOf(last[0]!) === venueOf(segment)) last.push(segment);
    else runs.push([segment]);
  }
  return runs;
}

// Between the maps of two buildings a venue alone counts a walk, and joined ones do not: the steps of
// a way are as long together as it is.
function withoutJumps(joined: Joined, route: readonly Segment[], steps: readonly Step[]): Step[] {
  const jumps = new Map(
    route.slice(1).map((segment, index): [number, number] => {
      const ends = [route[index]!.points.at(-1)!, segment.points[0]!];
      const points = ends.map((id) => joined.venue.waypoints.get(id)?.at ?? [0, 0]) as Point[];
      return [ends[0]!, lengthOf(points, floorOf(joined, segment.mapId))];
    }),
  );
  return steps.map((step) => {
    const jump = step.kind === "crossing" ? Math.min(jumps.get(step.at) ?? 0, step.mm) : 0;
    return { ...step, mm: step.mm - jump, seconds: step.seconds - jump / 1000 / walkingSpeed };
  });
}

type OpenAlone = (id: number) => Promise<RemoteVenue>;
type Block = { readonly from: number; readonly to: number; readonly blocked: boolean };

// Answers what the engine asks a venue; what a map or a waypoint belongs to is known by its venue.
export class JoinedVenue {
  #remote: RemoteVenue;
  #joined: Joined;
  #openAlone: OpenAlone;
  // Those that were asked for something, by their ids.
  #alone = new Map<number, Promise<RemoteVenue>>();
  #blocks = new Map<string, Block>();

  constructor(remote: RemoteVenue, joined: Joined, openAlone: OpenAlone) {
    this.#remote = remote;
    this.#joined = joined;
    this.#openAlone = openAlone;
  }

  async directions({ language = "en", ...request }: RouteRequest & { language?: string }): Promise<Directions> {
    const legs = await this.#legs(request, language);
    const route = onMaps(this.#joined, legs.flatMap((leg) => leg.route));
    const steps = legs.flatMap(({ steps: own }, index) => {
      const here = index === legs.length - 1 ? own : own.slice(0, -1);
      const before = legs[index - 1];
      if (before === undefined) return here;
      return [this.#crossing(before.route, legs[index]!.route, own[0]!), ...here.slice(1)];
    });
    const sum = (of: (step: Step) => number) => steps.reduce((all, step) => all + of(step), 0);
    return { route, steps, mm: sum((step) => step.mm), seconds: sum((step) => step.seconds) };
  }

  // Those in the start's venue are asked of it alone, which knows what is closed there; of the others
  // each by itself, as there may be some in each venue.
  async routeToAny({ from, to, ...level }: { from: number; to: number[]; accessibility?: number }): Promise<Segment[]> {
    const venue = this.#venueOf(from);
    const own = to.filter((each) => this.#venueOf(each) === venue);
    const others = to.filter((each) => this.#venueOf(each) !== venue);
    const alone = own.length === 0 ? [] : [(await this.#venueAlone(venue)).routeToAny({ from, to: own, ...level })];
    const asked = [...alone, ...others.map((each) => this.#remote.route({ from, to: each, ...level }))];
    const routes = (await Promise.all(asked)).map((route) => onMaps(this.#joined, route));
    const found = routes.filter((route) => route.length > 0);
    const mm = (route: readonly Segment[]) => route.at(-1)!.mmDistance;
    return found.sort((a, b) => mm(a) - mm(b))[0] ?? [];
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

  // None between venues.
  async alternatives(request: AlternativesRequest): Promise<Alternatives> {
    const [from, to] = [this.#venueOf(request.from), this.#venueOf(request.to)];
    if (from !== to) return { optimal: null, alternatives: null };
    return (await this.#venueAlone(from)).alternatives(request);
  }

  // Between venues what is closed is not known.
  async matrix({ from, to, ...level }: MatrixRequest): Promise<Matrix> {
    const venues = new Set([...from, ...to].map((each) => this.#venueOf(each)));
    const [only] = venues;
    if (venues.size === 1) return (await this.#venueAlone(only!)).matrix({ from, to, ...level });
    const pairs = from.flatMap((start) => to.map((end) => ({ from: start, to: end, ...level })));
    const routes = await Promise.all(pairs.map((pair) => this.#remote.route(pair)));
    const last = routes.map((route) => onMaps(this.#joined, route).at(-1));
    const isHere = (index: number) => pairs[index]!.from === pairs[index]!.to;
    const values = (of: (segment: Segment) => number) =>
      Float64Array.from(last, (each, index) => (each === undefined ? (isHere(index) ? 0 : Infinity) : of(each)));
    return {
      rows: from.length,
      columns: to.length,
      costs: values((segment) => segment.cost),
      mmDistances: values((segment) => segment.mmDistance),
    };
  }

  // Within the start's venue.
  async reach(request: Omit<ReachRequest, "from"> & { from: number }): Promise<Reached[]> {
    return (await this.#venueAlone(this.#venueOf(request.from))).reach(request);
  }

  // What is asked after the call is answered like this, so nothing is waited for before.
  async blockEdge(block: Block): Promise<void> {
    const venue = this.#venueOf(block.from);
    this.#blocks.set(`${block.from} ${block.to}`, block);
    const alone = this.#alone.get(venue)?.then((each) => each.blockEdge(block));
    await Promise.all([this.#remote.blockEdge({ venue, ...block }), alone]);
  }

  #venueAlone(id: number): Promise<RemoteVenue> {
    const opened = this.#alone.get(id) ?? this.#open(id);
    this.#alone.set(id, opened);
    return opened;
  }

  async #open(id: number): Promise<RemoteVenue> {
    const venue = await this.#openAlone(id);
    const own = [...this.#blocks.values()].filter(({ from }) => this.#venueOf(from) === id);
    await Promise.all(own.map((block) => venue.blockEdge(block)));
    return venue;
  }

  // The way in each venue that it leads over; none where what is closed leaves none.
  async #legs({ from, to, ...level }: RouteRequest, language: string): Promise<Leg[]> {
    if (this.#venueOf(from) === this.#venueOf(to)) {
      const leg = await this.#leg({ from, to, ...level }, language);
      if (leg.route.length > 0) return [leg];
    }
    const runs = runsOf(this.#joined, await this.#remote.route({ from, to, ...level }));
    const legs = await Promise.all(runs.map((run) => this.#legOver(run, level, language)));
    return legs.every((leg) => leg.route.length > 0) ? legs : [];
  }

  async #leg(request: RouteRequest, language: string): Promise<Leg> {
    const venue = await this.#venueAlone(this.#venueOf(request.from));
    const { route, steps } = await venue.directions({ ...request, language });
    return { route, steps: withoutJumps(this.#joined, route, steps) };
  }

  // A venue that is only touched has no way of its own.
  async #legOver(run: readonly Segment[], level: Omit<RouteRequest, "from" | "to">, language: string): Promise<Leg> {
    const [from, to] = [run[0]!.points[0]!, run.at(-1)!.points.at(-1)!];
    if (from !== to) return this.#leg({ from, to, ...level }, language);
    return { route: run, steps: touchedSteps(this.#joined, run[0]!) };
  }

  // In place of where the way in the next venue begins.
  #crossing(before: readonly Segment[], after: readonly Segment[], depart: Step): Step {
    const [from, to] = [before.at(-1)!, after[0]!];
    return {
      ...depart,
      kind: "crossing",
      direction: null,
      landmark: null,
      mapId: from.mapId,
      at: from.points.at(-1)!,
      toMapId: to.mapId,
      text: this.#joined.tell.into(floorOf(this.#joined, to.mapId)),
    };
  }

  #venueOf(waypoint: number): number {
    const map = this.#joined.venue.waypoints.get(waypoint)?.map ?? NaN;
    return floorOf(this.#joined, map).building.venue;
  }
}

// The engine asks no more of a venue than this.
export function joinedVenue(remote: RemoteVenue, joined: Joined, openAlone: OpenAlone): RemoteVenue {
  const own = new JoinedVenue(remote, joined, openAlone);
  const answers: Partial<RemoteVenue> = {
    directions: (request) => own.directions(request),
    routeToAny: (request) => own.routeToAny(request),
    places: (request) => own.places(request as { text: string }),
    alternatives: (request) => own.alternatives(request),
    matrix: (request) => own.matrix(request),
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
