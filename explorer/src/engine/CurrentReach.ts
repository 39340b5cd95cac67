// How far one gets from the start in so many minutes, asked for anew whenever either changes.
import type { State } from "../state/State.js";
import type { Store } from "../state/Store.js";
import type { Engine } from "./Engine.js";
import type { Range } from "../venue/walked.js";
import { Newest } from "./Newest.js";

// Millimetres in a second of walking.
const pace = 1340;

export interface Reach extends Range {
  // How far each waypoint that is reached is from the start.
  readonly mm: ReadonlyMap<number, number>;
}

// Nobody asks how far, once it is said where to.
export function asksReach(state: State): boolean {
  return state.reach !== null && state.from !== null && state.to === null && state.place === null;
}

export class CurrentReach {
  #engine: Engine;
  #start: (state: State) => number | null;
  #newest = new Newest();
  #found: Reach | null = null;
  #listeners = new Set<(found: Reach | null) => void>();
  #failed: (error: unknown) => void;

  constructor(
    engine: Engine,
    store: Store,
    start: (state: State) => number | null,
    failed: (error: unknown) => void,
  ) {
    this.#engine = engine;
    this.#start = start;
    this.#failed = failed;
    store.subscribe((state, before) => {
      const names = ["from", "to", "place", "level", "closed", "reach"] as const;
      if (names.some((name) => state[name] !== before[name])) void this.search(state);
    });
  }

  get found(): Reach | null {
    return this.#found;
  }

  subscribe(listener: (found: Reach | null) => void): void {
    this.#listeners.add(listener);
  }

  async search(state: State): Promise<void> {
    this.#newest.forget();
    const start = asksReach(state) ? this.#start(state) : null;
    if (start === null) return this.#tell(null);
    const most = state.reach! * 60 * pace;
    try {
      const reached = await this.#newest.of(() => this.#engine.reach(start, most / 1000, state.level));
      if (reached === undefined) return;
      const mm = new Map(reached.map((each) => [each.waypoint, each.mm]));
      // A venue may be smaller than that.
      this.#tell({ mm, most, palest: Math.max(1, ...mm.values()) });
    } catch (error) {
      this.#tell(null);
      this.#failed(error);
    }
  }

  #tell(found: Reach | null): void {
    if (found === null && this.#found === null) return;
    this.#found = found;
    for (const listener of this.#listeners) listener(found);
  }
}
