// The library in a worker, with one venue open in it. Should it stop, it is started anew, with the
// same venue and the same movers closed, and what was asked is asked again.
import {
  TernError,
  startWorker,
  type RemoteVenue,
  type WorkerTern,
} from "terncorekit/worker";
import type {
  Alternatives,
  Directions,
  Place,
  Reached,
  Segment,
  Step,
} from "terncorekit";
import type { Edge } from "../venue/Venue.js";
import { documentsAlone } from "./alone.js";
import { joinedVenue, type Joined } from "./joined.js";
import { bestOrder } from "./bestOrder.js";

export type { Place, Segment, Step };

export interface Way extends Omit<Directions, "route" | "steps"> {
  readonly segments: readonly Segment[];
  readonly steps: readonly Step[];
}

export interface EngineOptions {
  // Its bytes, which stay: it may have to be started anew.
  readonly library: Promise<ArrayBuffer>;
  readonly documents: ReadonlyMap<string, Uint8Array>;
  readonly venue: number;
  // Where several venues are joined.
  readonly joined: Joined | null;
}

export interface WayRequest {
  readonly from: number;
  // The one that is cheapest to reach.
  readonly to: readonly number[];
  readonly level: number | null;
  readonly language: string;
}

export interface Length {
  readonly waypoint: number;
  readonly mm: number;
}

interface Opened {
  readonly tern: WorkerTern;
  readonly venue: RemoteVenue;
}

// What tells of an end of the library, and not of a question.
function hasStopped(error: unknown): boolean {
  return (
    error instanceof TernError &&
    /^the (library has stopped|worker (has ended|is closed))/.test(error.message)
  );
}

function levelOf(level: number | null): { accessibility?: number } {
  return level === null ? {} : { accessibility: level };
}

export class Engine {
  #options: EngineOptions;
  #opened: Promise<Opened>;
  #closed: readonly Edge[] = [];

  constructor(options: EngineOptions) {
    this.#options = options;
    this.#opened = this.#open();
    // Whoever asks is told.
    this.#opened.catch(() => undefined);
  }

  // Fails when the library cannot be started or does not open the venue.
  async ready(): Promise<void> {
    await this.#opened;
  }

  // Null where there is no way.
  async way({ from, to, level, language }: WayRequest): Promise<Way | null> {
    const goal = to.length === 1 ? to[0]! : await this.#goal(from, to, level);
    if (goal === undefined) return null;
    const told = await this.#ask((venue) =>
      venue.directions({ from, to: goal, language, ...levelOf(level) }),
    );
    if (told.route.length === 0) return null;
    const { route, steps, mm, seconds } = told;
    return { segments: route, steps, mm, seconds };
  }

  // Those whose name is like the text, the best first.
  places(text: string): Promise<Place[]> {
    return this.#ask((venue) => venue.places({ text }));
  }

  // How far each goal is, by the one of its waypoints that is cheapest to reach; null where there is
  // no way. One question for all of them: a way with its steps takes as long as that.
  async lengths(
    from: number,
    goals: readonly (readonly number[])[],
    level: number | null,
  ): Promise<(Length | null)[]> {
    const to = goals.flat();
    if (to.length === 0) return goals.map(() => null);
    const matrix = await this.#ask((venue) => venue.matrix({ from: [from], to, ...levelOf(level) }));
    let next = 0;
    return goals.map((goal) => {
      const columns = goal.map(() => next++).filter((column) => Number.isFinite(matrix.costs[column]));
      if (columns.length === 0) return null;
      const best = columns.reduce((a, b) => (matrix.costs[b]! < matrix.costs[a]! ? b : a));
      return { waypoint: to[best]!, mm: matrix.mmDistances[best]! };
    });
  }

  reach(from: number, metres: number, level: number | null): Promise<Reached[]> {
    return this.#ask((venue) => venue.reach({ from, metres, ...levelOf(level) }));
  }

  // Ways that have no more than a share, of 1, in common with the best one.
  alternatives(from: number, to: number, share: number, level: number | null): Promise<Alternatives> {
    const options = { optimalPathMatchRatio: share };
    return this.#ask((venue) => venue.alternatives({ from, to, options, ...levelOf(level) }));
  }

  // In which order stops are soonest visited, each by any of its waypoints.
  bestOrder(
    start: number,
    stops: readonly (readonly number[])[],
    level: number | null,
  ): Promise<number[]> {
    return this.#ask((venue) => bestOrder(venue, start, stops, levelOf(level)));
  }

  // Nobody is led over these any more, and over those that were closed before again. What is asked
  // after the call is answered like this.
  async close(edges: readonly Edge[]): Promise<void> {
    const before = this.#closed;
    this.#closed = edges;
    // What is both opened and closed is closed: the library answers in turn.
    await this.#ask((venue) =>
      Promise.all([this.#block(venue, before, false), this.#block(venue, edges, true)]),
    );
  }

  async end(): Promise<void> {
    const { tern } = await this.#opened;
    await tern.close();
  }

  async #goal(from: number, to: readonly number[], level: number | null) {
    const goals = { from, to: [...to], ...levelOf(level) };
    const route = await this.#ask((venue) => venue.routeToAny(goals));
    return route.at(-1)?.points.at(-1);
  }

  async #ask<T>(question: (venue: RemoteVenue) => Promise<T>): Promise<T> {
    const opened = this.#opened;
    try {
      return await question((await opened).venue);
    } catch (error) {
      if (!hasStopped(error)) throw error;
    }
    // Others may have noticed before.
    if (this.#opened === opened) this.#opened = this.#openAgain(opened);
    return question((await this.#opened).venue);
  }

  async #openAgain(before: Promise<Opened>): Promise<Opened> {
    await before.then(({ tern }) => tern.close()).catch(() => undefined);
    return this.#open();
  }

  async #open(): Promise<Opened> {
    const { library, documents, venue: id, joined } = this.#options;
    const tern = await startWorker({ wasm: await library });
    const venues = joined === null ? [id] : [...joined.ids];
    const opened = await tern.open({ documents: new Map(documents), venues });
    const openAlone = (one: number) =>
      tern.open({ documents: documentsAlone(documents, one, joined!.venue), venues: [one] });
    const venue = joined === null ? opened : joinedVenue(opened, joined, openAlone);
    await this.#block(venue, this.#closed, true);
    return { tern, venue };
  }

  async #block(venue: RemoteVenue, edges: readonly Edge[], blocked: boolean): Promise<void> {
    const ways = edges.flatMap(([from, to]) => [{ from, to }, { from: to, to: from }]);
    await Promise.all(ways.map((way) => venue.blockEdge({ ...way, blocked })));
  }
}
