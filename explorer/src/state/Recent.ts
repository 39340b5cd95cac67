// The places that were looked at last, kept in this browser for each venue. Where the browser keeps
// nothing, there are those of this visit.
import { endOf, endText } from "./address.js";
import { emptyState, isSameEnd, type End, type State } from "./State.js";
import type { Store } from "./Store.js";

const most = 5;

function isPlace(end: End | null): end is End {
  return end !== null && (end.kind === "destination" || end.kind === "amenity");
}

function endsOf({ place, from, via, to }: State): (End | null)[] {
  return [from, ...via, to, place];
}

export class Recent {
  #key: string;
  #ends: readonly End[];

  constructor(store: Store, venue: number) {
    this.#key = `explorer.recent.${venue}`;
    this.#ends = this.#read();
    this.#note(store.state, emptyState);
    store.subscribe((state, before) => this.#note(state, before));
  }

  // The last one first.
  get ends(): readonly End[] {
    return this.#ends;
  }

  clear(): void {
    this.#ends = [];
    this.#write();
  }

  #note(state: State, before: State): void {
    const known = endsOf(before);
    for (const end of endsOf(state)) {
      if (!isPlace(end) || known.some((each) => isSameEnd(each, end))) continue;
      const others = this.#ends.filter((each) => !isSameEnd(each, end));
      this.#ends = [end, ...others].slice(0, most);
      this.#write();
    }
  }

  #read(): readonly End[] {
    try {
      const kept = (localStorage.getItem(this.#key) ?? "").split(",");
      return kept.map(endOf).filter(isPlace).slice(0, most);
    } catch {
      return [];
    }
  }

  #write(): void {
    try {
      if (this.#ends.length === 0) localStorage.removeItem(this.#key);
      else localStorage.setItem(this.#key, this.#ends.map(endText).join(","));
    } catch {
      // It is refused, or full.
    }
  }
}
