// Keeps the store and the browser's address in step.
import { afterPicture } from "../afterPicture.js";
import { decodeAddress, encodeAddress } from "./address.js";
import type { State } from "./State.js";
import type { Store } from "./Store.js";

// What "back" should undo; anything else only changes the address that is there.
const steps: readonly (keyof State)[] = ["venue", "place", "from", "to", "category"];

// `known` is what of an address's state can be shown.
export function followAddress(store: Store, known: (state: State) => State): void {
  const read = () => {
    const state = known(decodeAddress(location.hash));
    if (encodeAddress(state) !== encodeAddress(store.state)) store.update(state);
  };
  addEventListener("popstate", read);
  addEventListener("hashchange", read);
  const write = (before: State) => {
    const { state } = store;
    const hash = encodeAddress(state);
    if (hash === encodeAddress(decodeAddress(location.hash))) return;
    const address = hash === "" ? location.pathname + location.search : hash;
    const isStep = steps.some((name) => state[name] !== before[name]);
    if (isStep) history.pushState(null, "", address);
    else history.replaceState(null, "", address);
  };
  // Changes that come before a picture of them are one, and browsers take a while to note an address.
  let isWaiting = false;
  store.subscribe((_, before) => {
    if (isWaiting) return;
    isWaiting = true;
    afterPicture(() => {
      isWaiting = false;
      write(before);
    });
  });
}
