// The way over the stops that the state names, asked for anew whenever one of them changes.
import type { State } from "../state/State.js";
import type { Store } from "../state/Store.js";
import type { Engine, Way } from "./Engine.js";
import { Newest } from "./Newest.js";
import { otherWays } from "./otherWays.js";

// The way to a stop from the one before it that was reached.
export interface Leg {
  readonly stop: number;
  readonly way: Way;
}

// A stop without a way, and the level that there is one at; null where no level has one.
export interface Missed {
  readonly stop: number;
  readonly level: number | null;
}

export interface FoundWay {
  readonly kind: "found";
  readonly way: Way;
  readonly legs: readonly Leg[];
  readonly missed: readonly Missed[];
  // Ways to the only stop, the best first; the way is one of them.
  readonly choices: readonly Way[];
}

export type Found =
  // Not both ends are known.
  | { readonly kind: "none" }
  | { readonly kind: "searching" }
  | FoundWay
  | { readonly kind: "missing"; readonly missed: readonly Missed[] }
  // Start and goal are one.
  | { readonly kind: "there" };

export interface Ends {
  // Where each stretch of the way may begin and end: one waypoint first, then some each.
  readonly stops: (state: State) => readonly (readonly number[])[] | null;
  readonly language: () => string;
  // The venue's levels, in ascending order.
  readonly levels: readonly number[];
}

function joined(legs: readonly Leg[]): Way {
  const ways = legs.map(({ way }) => way);
  const sum = (of: (way: Way) => number) => ways.reduce((all, way) => all + of(way), 0);
  return {
    segments: ways.flatMap((way) => way.segments),
    steps: ways.flatMap((way) => way.steps),
    mm: sum((way) => way.mm),
    seconds: sum((way) => way.seconds),
  };
}

export class CurrentWay {
  #engine: Engine;
  #store: Store;
  #ends: Ends;
  #newest = new Newest();
  #found: Found = { kind: "none" };
  #listeners = new Set<(found: Found) => void>();
  #failed: (error: unknown) => void;

  constructor(engine: Engine, store: Store, ends: Ends, failed: (error: unknown) => void) {
    this.#engine = engine;
    this.#store = store;
    this.#ends = ends;
    this.#failed = failed;
    store.subscribe((state, before) => {
      const names = ["from", "via", "to", "level", "closed", "language"] as const;
      if (names.some((name) => state[name] !== before[name])) {
        void this.search(state);
        // Another question has other ways, in another language it has the same.
        const isSame = state.way !== before.way || state.language !== before.language;
        if (!isSame) store.update({ way: 0 });
      } else if (state.way !== before.way) this.#choose();
    });
  }

  get found(): Found {
    return this.#found;
  }

  subscribe(listener: (found: Found) => void): void {
    this.#listeners.add(listener);
  }

  async search(state: State): Promise<void> {
    const stops = this.#ends.stops(state);
    this.#newest.forget();
    if (stops === null) return this.#tell({ kind: "none" });
    this.#tell({ kind: "searching" });
    try {
      const found = await this.#newest.of(() => this.#wayOver(stops, state));
      if (found === undefined) return;
      const hasOthers = found.kind === "found" && stops.length === 2;
      // One that the address names is not shown after another.
      if (!hasOthers || state.way === 0) this.#tell(found);
      if (!hasOthers) return;
      const others = this.#findOthers(found, state);
      if (state.way > 0) await others;
    } catch (error) {
      this.#tell({ kind: "none" });
      this.#failed(error);
    }
  }

  async #findOthers(found: FoundWay, state: State): Promise<void> {
    const how = { level: state.level, language: this.#ends.language() };
    try {
      const others = await this.#newest.of(() => otherWays(this.#engine, found.way, how));
      if (others === undefined) return;
      this.#found = { ...found, choices: [found.way, ...others] };
      if (others.length > 0 || state.way > 0) this.#choose();
    } catch (error) {
      this.#tell(found);
      this.#failed(error);
    }
  }

  #choose(): void {
    if (this.#found.kind !== "found") return;
    const { choices } = this.#found;
    this.#tell({ ...this.#found, way: choices[this.#store.state.way] ?? choices[0]! });
  }

  async #wayOver(stops: readonly (readonly number[])[], { level }: State): Promise<Found> {
    const language = this.#ends.language();
    const legs: Leg[] = [];
    const missed: Missed[] = [];
    let from = stops[0]?.[0];
    for (const [stop, to] of stops.slice(1).entries()) {
      if (from !== undefined && to.includes(from)) continue;
      const way: Way | null =
        from === undefined || to.length === 0
          ? null
          : await this.#engine.way({ from, to, level, language });
      if (way === null) missed.push({ stop, level: await this.#levelFor(from, to, level) });
      else {
        legs.push({ stop, way });
        from = way.segments.at(-1)?.points.at(-1);
      }
    }
    if (legs.length === 0) return missed.length === 0 ? { kind: "there" } : { kind: "missing", missed };
    const way = joined(legs);
    return { kind: "found", way, legs, missed, choices: [way] };
  }

  // The lowest level above this one at which there is a way.
  async #levelFor(from: number | undefined, to: readonly number[], above: number | null) {
    if (from === undefined || to.length === 0 || above === null) return null;
    for (const level of this.#ends.levels) {
      if (level <= above) continue;
      if ((await this.#engine.way({ from, to, level, language: "en" })) !== null) return level;
    }
    return null;
  }

  #tell(found: Found): void {
    this.#found = found;
    for (const listener of this.#listeners) listener(found);
  }
}
