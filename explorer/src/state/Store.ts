// Holds the one state, and tells of every change.
import type { State } from "./State.js";

export type Listener = (state: State, before: State) => void;

export class Store {
  #state: State;
  #listeners = new Set<Listener>();
  // The one that is being told, and those that wait.
  #changes: [State, State][] = [];

  constructor(state: State) {
    this.#state = state;
  }

  get state(): State {
    return this.#state;
  }

  // What is left out stays. A change that changes nothing is not told; one that a listener makes is
  // told once all have heard of the one before.
  update(change: Partial<State>): void {
    const before = this.#state;
    const names = Object.keys(change) as (keyof State)[];
    if (names.every((name) => before[name] === change[name])) return;
    this.#state = { ...before, ...change };
    this.#changes.push([this.#state, before]);
    if (this.#changes.length > 1) return;
    for (let next = this.#changes[0]; next !== undefined; next = this.#changes[0]) {
      try {
        for (const listener of [...this.#listeners]) listener(...next);
      } finally {
        this.#changes.shift();
      }
    }
  }

  subscribe(listener: Listener): () => void {
    this.#listeners.add(listener);
    return () => this.#listeners.delete(listener);
  }
}
