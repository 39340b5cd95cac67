// The way between the ends that the state names, asked for anew whenever one of them changes.
import type { State } from "../state/State.js";
import type { Store } from "../state/Store.js";
import type { Engine, Way } from "./Engine.js";
import { Newest } from "./Newest.js";

export type Found =
  // Not both ends are known.
  | { readonly kind: "none" }
  | { readonly kind: "searching" }
  | { readonly kind: "found"; readonly way: Way }
  | { readonly kind: "missing" }
  // Start and goal are one.
  | { readonly kind: "there" };

export interface Ends {
  // Where each stretch of the way may begin and end: one waypoint first, then some each.
  readonly stops: (state: State) => readonly (readonly number[])[] | null;
  readonly language: () => string;
}

function joined(legs: readonly Way[]): Way {
  const sum = (of: (way: Way) => number) => legs.reduce((all, way) => all + of(way), 0);
  return {
    segments: legs.flatMap((way) => way.segments),
    steps: legs.flatMap((way) => way.steps),
    mm: sum((way) => way.mm),
    seconds: sum((way) => way.seconds),
  };
}

export class CurrentWay {
  #engine: Engine;
  #ends: Ends;
  #newest = new Newest();
  #found: Found = { kind: "none" };
  #listeners = new Set<(found: Found) => void>();
  #failed: (error: unknown) => void;

  constructor(engine: Engine, store: Store, ends: Ends, failed: (error: unknown) => void) {
    this.#engine = engine;
    this.#ends = ends;
    this.#failed = failed;
    store.subscribe((state, before) => {
      const names = ["from", "via", "to", "level", "closed", "language"] as const;
      if (names.some((name) => state[name] !== before[name])) void this.search(state);
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
      if (found !== undefined) this.#tell(found);
    } catch (error) {
      this.#tell({ kind: "none" });
      this.#failed(error);
    }
  }

  async #wayOver(stops: readonly (readonly number[])[], { level }: State): Promise<Found> {
    const language = this.#ends.language();
    const legs: Way[] = [];
    let from = stops[0]?.[0];
    for (const to of stops.slice(1)) {
      if (from === undefined || to.length === 0) return { kind: "missing" };
      if (to.includes(from)) continue;
      const way: Way | null = await this.#engine.way({ from, to, level, language });
      if (way === null) return { kind: "missing" };
      legs.push(way);
      from = way.segments.at(-1)?.points.at(-1);
    }
    return legs.length === 0 ? { kind: "there" } : { kind: "found", way: joined(legs) };
  }

  #tell(found: Found): void {
    this.#found = found;
    for (const listener of this.#listeners) listener(found);
  }
}
