// The stops between start and goal: a field for each, one more while a stop is being added, and the
// order in which all of them are soonest visited.
import type { End, State } from "../state/State.js";
import { lineIcon, type Line } from "../theme/icons.js";
import { nameOfEnd, startOf, waypointsOf, type Context } from "./Context.js";
import { h } from "./dom.js";
import type { Search } from "./Search.js";

// More than anybody walks, and few enough to be ordered at once.
export const mostVia = 8;

export interface StopField {
  readonly field: HTMLElement;
  readonly search: Search;
}

export function endField(label: string, search: Search): HTMLElement {
  return h("div", { class: "end" }, h("span", { class: "end-label", text: label }), search.element);
}

type NewSearch = (label: string, chosen: (end: End | null) => void) => Search;

export class Stops {
  readonly actions = h("div", { class: "chips stop-actions" });
  #context: Context;
  #newSearch: NewSearch;
  #redraw: () => void;
  #isAdding = false;
  #shown = "";

  // `redraw` is called when other fields are needed though the state is the same.
  constructor(context: Context, newSearch: NewSearch, redraw: () => void) {
    this.#context = context;
    this.#redraw = redraw;
    this.#newSearch = newSearch;
  }

  // Whether other fields are needed than those that were asked for last.
  changed({ via, to }: State): boolean {
    if (to === null) this.#isAdding = false;
    return this.#shown !== this.#needed(via);
  }

  fields(): StopField[] {
    const { via } = this.#context.store.state;
    this.#shown = this.#needed(via);
    const fields = via.map((end, index) => {
      const search = this.#search(index, (other) => this.#put(index, other));
      search.show(nameOfEnd(this.#context, end));
      return { field: endField(String(index + 1), search), search };
    });
    if (!this.#isAdding) return fields;
    const search = this.#search(via.length, (end) => this.#put(via.length, end));
    const field = endField(String(via.length + 1), search);
    search.input.addEventListener("blur", () => queueMicrotask(() => this.#left()));
    queueMicrotask(() => search.input.focus());
    return [...fields, { field, search }];
  }

  refresh({ from, via, to }: State): void {
    const { texts } = this.#context;
    const hasWay = from !== null && to !== null;
    this.actions.hidden = !hasWay;
    const buttons: HTMLElement[] = [];
    if (via.length < mostVia) {
      buttons.push(this.#button("addStop", texts().of("addStop"), "plus", () => this.#add()));
    }
    if (via.length > 0) {
      buttons.push(this.#button("order", texts().of("bestOrder"), "order", () => void this.#order()));
    }
    const focused = (document.activeElement as HTMLElement | null)?.dataset["action"];
    this.actions.replaceChildren(...buttons);
    buttons.find((button) => button.dataset["action"] === focused)?.focus();
  }

  #needed(via: readonly End[]): string {
    return JSON.stringify([via, this.#isAdding, this.#context.texts().language]);
  }

  #search(index: number, chosen: (end: End | null) => void): Search {
    return this.#newSearch(this.#context.texts().of("searchStop", { n: index + 1 }), chosen);
  }

  #button(action: string, label: string, icon: Line, pressed: () => void): HTMLElement {
    const attributes = { type: "button", "data-action": action };
    return h("button", { class: "chip", attributes, on: { click: pressed } }, lineIcon(icon), label);
  }

  #add(): void {
    this.#isAdding = true;
    this.#redraw();
  }

  // Without a stop in it the field goes.
  #left(): void {
    if (!this.#isAdding) return;
    this.#isAdding = false;
    this.#redraw();
  }

  // Null takes the stop away.
  #put(index: number, end: End | null): void {
    const { store } = this.#context;
    const { via } = store.state;
    this.#isAdding = false;
    const own = end === null ? [] : [end];
    store.update({ via: [...via.slice(0, index), ...own, ...via.slice(index + 1)] });
    if (end === null) queueMicrotask(() => this.actions.querySelector("button")?.focus());
  }

  async #order(): Promise<void> {
    const { store, engine, texts, say, failed } = this.#context;
    const { from, via, to, level } = store.state;
    const start = from === null ? null : startOf(this.#context, from);
    if (start === null || to === null) return;
    const stops = [...via, to];
    try {
      const waypoints = stops.map((end) => waypointsOf(this.#context, end));
      const order = await engine.bestOrder(start, waypoints, level);
      // Somebody was quicker.
      if (store.state.via !== via || store.state.to !== to) return;
      const ordered = order.map((index) => stops[index]!);
      store.update({ via: ordered.slice(0, -1), to: ordered.at(-1)! });
      const names = ordered.map((end) => nameOfEnd(this.#context, end));
      say(texts().of("ordered", { names: names.join(", ") }));
    } catch (error) {
      failed(error);
    }
  }
}
