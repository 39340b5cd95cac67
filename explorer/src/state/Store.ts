// Holds the one state, and tells of every change.
import type { State } from "./State.js";

export type Listener = (state: State, before: State) => void;

export class Store {
  #state: State;
  #listeners = new Set<Listener>();

  constructor(state: State) {
    this.#state = state;
  }

  get state(): State {
    return this.#state;
  }

  // What is left out stays. A change that changes nothing is not told.
  update(change: Partial<State>): void {
    const before = this.#state;
    const names = Object.keys(change) as (keyof State)[];
    if (names.every((name) => before[name] === change[name])) return;
    this.#state = { ...before, ...change };
    for (const listener of [...this.#listeners]) listener(this.#state, before);
  }

  subscribe(listener: Listener): () => void {
    this.#listeners.add(listener);
    return () => this.#listeners.delete(listener);
  }
}
