// The panel: a search and what the venue has, the card of a place, or the way between two ends. On
// a phone it is a sheet at the bottom, on anything wider it stands beside the map.
import type { CurrentReach } from "../engine/CurrentReach.js";
import type { CurrentWay, Found } from "../engine/CurrentWay.js";
import { Recent } from "../state/Recent.js";
import type { End, State } from "../state/State.js";
import { lineIcon } from "../theme/icons.js";
import { languages } from "../texts/texts.js";
import { placeCard } from "./Card.js";
import { nameIn } from "../venue/names.js";
import { nameOfEnd, type Context } from "./Context.js";
import { h, iconButton, set } from "./dom.js";
import { Home } from "./Home.js";
import { levelChoice } from "./Levels.js";
import { Nearest } from "./Nearest.js";
import { OutOfOrder } from "./OutOfOrder.js";
import { Reaching } from "./Reaching.js";
import { Search } from "./Search.js";
import { Stops, endField } from "./Stops.js";
import type { Sheet } from "./Sheet.js";
import { wayActions, wayInShort, wayInSteps } from "./Steps.js";

export type View = "home" | "card" | "way";

export function viewOf(state: State): View {
  if (state.place !== null) return "card";
  return state.from !== null || state.to !== null ? "way" : "home";
}

type EndName = "from" | "to";

export class Panel {
  #context: Context;
  #way: CurrentWay;
  #sheet: Sheet;
  #head: HTMLElement;
  #body: HTMLElement;
  #words = h("div", { class: "words" });
  #handOn = h("div", { class: "sum-actions" });
  #steps = h("div");
  #told: Found["kind"] = "none";
  // What helps to choose the goal, while there is none.
  #offers = h("div", { class: "offers" });
  #nearest: Nearest;
  #outOfOrder: OutOfOrder;
  #stops: Stops;
  #reaching: Reaching;
  #home: Home;
  #logo: HTMLElement | null = null;
  #searches: Partial<Record<EndName | "place", Search>> = {};

  constructor(
    context: Context,
    way: CurrentWay,
    reach: CurrentReach,
    element: HTMLElement,
    sheet: Sheet,
  ) {
    this.#context = context;
    this.#way = way;
    this.#sheet = sheet;
    this.#nearest = new Nearest(context);
    this.#outOfOrder = new OutOfOrder(context);
    this.#home = new Home(context, new Recent(context.store, context.venue.id));
    this.#reaching = new Reaching(context, reach);
    this.#stops = new Stops(
      context,
      (label, chosen) => this.#newSearch(label, chosen),
      () => {
        this.#showEnds();
        this.#nameEnds(context.store.state);
      },
    );
    this.#head = h("div", { class: "panel-head" });
    this.#body = h("div", { class: "panel-body" });
    element.replaceChildren(sheet.handle, this.#head, this.#body);
    context.store.subscribe((state, before) => this.#changed(state, before));
    way.subscribe((found) => this.#tellWay(found));
    this.#show(context.store.state);
  }

  // Everything anew, as in another language.
  refresh(): void {
    this.#outOfOrder.refresh();
    this.#searches = {};
    this.#show(this.#context.store.state);
  }

  #changed(state: State, before: State): void {
    const [view, last] = [viewOf(state), viewOf(before)];
    if (view === last && view === "way") {
      if (this.#stops.changed(state)) this.#showEnds();
      this.#nameEnds(state);
      if (state.level !== before.level) this.#tellWay(this.#way.found);
      return;
    }
    const names = ["place", "from", "via", "to", "level", "data", "path"] as const;
    if (names.every((name) => state[name] === before[name])) return;
    this.#show(state);
    this.#focus(state);
  }

  #show(state: State): void {
    const view = viewOf(state);
    // A new one begins at its top, and nothing has to be laid out to say so.
    const body = h("div", { class: "panel-body" });
    this.#body.replaceWith(body);
    this.#body = body;
    if (view === "way") this.#showWay(state);
    else this.#showSearch(view === "card" ? state.place : null);
    this.#sheet.hold(view === "home" && state.data === null ? "low" : "half");
  }

  // The keyboard goes on where something is to be done next.
  #focus(state: State): void {
    const view = viewOf(state);
    if (view === "card") this.#body.querySelector<HTMLElement>(".card-name")?.focus({ preventScroll: true });
    else if (view === "home" && state.data !== null) this.#focusData(state);
    else if (view === "home") this.#searches.place?.input.focus({ preventScroll: true });
    else if (state.from === null) this.#searches.from?.input.focus();
    else if (state.to === null) this.#searches.to?.input.focus();
    else this.#words.querySelector<HTMLElement>(".sum")?.focus();
  }

  #focusData({ path }: State): void {
    const names = path === null ? [".choices :checked", ".data-name"] : ["#path-record"];
    const wasColour = document.activeElement === document.body && path === null;
    const [name] = wasColour ? names : names.slice(-1);
    this.#body.querySelector<HTMLElement>(name!)?.focus();
  }

  #search(label: string, name: EndName | "place", chosen: (end: End | null) => void): Search {
    const search = this.#newSearch(label, chosen);
    this.#searches[name] = search;
    return search;
  }

  #newSearch(label: string, chosen: (end: End | null) => void): Search {
    const search = new Search(this.#context, label, {
      chosen,
      emptied: () => chosen(null),
      opened: (isOpen) => this.#listOpened(isOpen),
    });
    search.input.addEventListener("focus", () => this.#sheet.hold("high"));
    return search;
  }

  #listOpened(isOpen: boolean): void {
    this.#body.hidden = isOpen;
  }

  #showSearch(place: End | null): void {
    const { store } = this.#context;
    const { state } = store;
    const data = state.data === null ? null : this.#context.data();
    const search = this.#searches.place ?? this.#searchAlone();
    search.close();
    search.show(place === null ? "" : nameOfEnd(this.#context, place));
    if (this.#logo !== null) this.#logo.hidden = place !== null;
    if (place !== null) this.#body.replaceChildren(placeCard(this.#context, place));
    else if (data !== null) this.#body.replaceChildren(...data.panel(state));
    else {
      this.#home.refresh();
      this.#body.replaceChildren(
        this.#nearest.chips(),
        this.#outOfOrder.element,
        this.#home.element,
        ...this.#settings(),
      );
    }
  }

  // The field stays while places are looked at, so that a tap waits for its card alone.
  #searchAlone(): Search {
    const { texts, store } = this.#context;
    const search = this.#search(texts().of("search"), "place", (end) => store.update({ place: end }));
    const parts = [h("div", { class: "ends" }, search.element), search.list];
    this.#logo = this.#newLogo();
    this.#head.replaceChildren(...(this.#logo === null ? [] : [this.#logo]), ...parts);
    return search;
  }

  #showWay(state: State): void {
    this.#searches = {};
    this.#showEnds();
    const levels = levelChoice(this.#context);
    this.#body.replaceChildren(
      ...(levels === null ? [] : [levels]),
      this.#outOfOrder.element,
      this.#offers,
      this.#words,
      h("div", { class: "way-actions" }, this.#stops.actions, this.#handOn),
      this.#steps,
      this.#reaching.element,
    );
    this.#nameEnds(state);
    this.#tellWay(this.#way.found);
  }

  #showEnds(): void {
    const { texts, store } = this.#context;
    const from = this.#search(texts().of("searchFrom"), "from", (end) => store.update({ from: end }));
    const to = this.#search(texts().of("searchTo"), "to", (end) => store.update({ to: end }));
    const swap = iconButton(lineIcon("swap"), texts().of("swap"), () => {
      const { from: before, via, to: after } = store.state;
      store.update({ from: after, via: [...via].reverse(), to: before });
    });
    const close = iconButton(lineIcon("close"), texts().of("close"), () =>
      store.update({ from: null, to: null, via: [] }),
    );
    const stops = this.#stops.fields();
    this.#head.replaceChildren(
      h(
        "div",
        { class: "ends is-two" },
        h(
          "div",
          { class: "end-fields" },
          endField(texts().of("from"), from),
          ...stops.map(({ field }) => field),
          endField(texts().of("to"), to),
        ),
        h("div", { class: "end-buttons" }, close, swap),
      ),
      from.list,
      ...stops.map(({ search }) => search.list),
      to.list,
    );
  }

  #nameEnds(state: State): void {
    const { from, to } = state;
    this.#stops.refresh(state);
    this.#reaching.refresh();
    this.#searches.from?.show(from === null ? "" : nameOfEnd(this.#context, from));
    this.#searches.to?.show(to === null ? "" : nameOfEnd(this.#context, to));
    const hint = this.#nearest.hint(from);
    const offers = to === null ? this.#nearest.chips() : hint;
    this.#offers.replaceChildren(...(offers === null ? [] : [offers]));
  }

  #tellWay(found: Found): void {
    // A way that is there stays while the next is searched for: it takes milliseconds.
    const isKept = this.#told !== "none" && viewOf(this.#context.store.state) === "way";
    if (found.kind === "searching" && isKept) return;
    this.#told = found.kind;
    const focused = document.activeElement;
    const hadFocus = this.#words.contains(focused);
    this.#words.replaceChildren(...wayInShort(this.#context, found));
    const isFound = found.kind === "found";
    this.#handOn.replaceChildren(...(isFound ? wayActions(this.#context) : []));
    this.#steps.replaceChildren(...(isFound ? wayInSteps(this.#context, found) : []));
    set(this.#words.querySelector(".sum") ?? this.#words, { tabindex: -1 });
    if (hadFocus) {
      const next = focused instanceof HTMLInputElement ? "input:checked" : ".sum";
      this.#words.querySelector<HTMLElement>(next)?.focus();
    }
    if (found.kind !== "found" || viewOf(this.#context.store.state) !== "way") return;
    const { texts, say } = this.#context;
    say(`${texts().minutes(found.way.seconds)}, ${texts().length(found.way.mm)}`);
    this.#sheet.hold("half");
  }

  #newLogo(): HTMLElement | null {
    const { logo, venue, texts } = this.#context;
    if (logo === null) return null;
    const alt = nameIn(texts().language, venue.names);
    return h("img", { class: "logo", attributes: { src: logo, alt } });
  }

  #settings(): HTMLElement[] {
    const { texts, store, venue, venues } = this.#context;
    const ofVenues = venues.map(({ id, names }) => ({
      value: String(id),
      text: nameIn(texts().language, names),
    }));
    const ofLanguages = languages.map((value) => ({ value, text: texts().nameOf(value) }));
    const choice = setting(texts().of("chooseLanguage"), ofLanguages, texts().language, (language) =>
      store.update({ language }),
    );
    if (venues.length < 2) return [choice];
    const away = { map: null, place: null, from: null, via: [], to: null, closed: [] };
    const other = setting(texts().of("venue"), ofVenues, String(venue.id), (id) =>
      store.update({ ...away, venue: Number(id) }),
    );
    return [other, choice];
  }
}

interface Option {
  readonly value: string;
  readonly text: string;
}

function setting(
  label: string,
  options: readonly Option[],
  chosen: string,
  changed: (value: string) => void,
): HTMLElement {
  const elements = options.map(({ value, text }) =>
    h("option", { text, attributes: { value, selected: value === chosen } }),
  );
  const listener = (event: Event) => changed((event.target as HTMLSelectElement).value);
  const select = h("select", { class: "select", on: { change: listener } }, ...elements);
  return h("label", { class: "setting" }, h("span", { text: label }), select);
}
