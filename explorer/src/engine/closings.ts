// Movers that are out of order, as the state has them, are closed in the library.
import type { State } from "../state/State.js";
import type { Store } from "../state/Store.js";
import type { Mover, Venue } from "../venue/Venue.js";
import type { Engine } from "./Engine.js";

export function closedMovers(venue: Venue, { closed }: State): Mover[] {
  return venue.movers.filter((mover) => closed.includes(mover.id));
}

// Whoever searches follows the store after this does: then every answer is of the new state.
export function followClosings(
  store: Store,
  venue: Venue,
  engine: Engine,
  failed: (error: unknown) => void,
): void {
  const close = (state: State) => {
    engine.close(closedMovers(venue, state).flatMap((mover) => mover.edges)).catch(failed);
  };
  if (store.state.closed.length > 0) close(store.state);
  store.subscribe((state, before) => {
    if (state.closed !== before.closed) close(state);
  });
}
