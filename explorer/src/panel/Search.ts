// A field that finds places as one types, and the list below it: a combobox as WAI-ARIA describes it
// (Authoring Practices, "Editable Combobox With List Autocomplete").
import { Newest } from "../engine/Newest.js";
import type { End } from "../state/State.js";
import { lineIcon, symbolFor, symbolIcon } from "../theme/icons.js";
import { folded, nameIn } from "../venue/names.js";
import type { Place } from "../venue/Venue.js";
import { startOf, waypointsOf, whereabouts, type Context } from "./Context.js";
import { h, iconButton, set } from "./dom.js";

export interface SearchEvents {
  readonly chosen: (end: End) => void;
  readonly emptied: () => void;
  readonly opened: (isOpen: boolean) => void;
}

const mostShown = 30;
// How many of those that are found are told with the way there.
const mostWalks = 8;
let searches = 0;

export function endOfPlace({ kind, id }: Place): End {
  return { kind, id };
}

export function placeIcon(place: Place): Element {
  if (place.kind === "destination") return symbolIcon("place");
  return symbolIcon(symbolFor([place.names.name, ...place.keywords]));
}

export class Search {
  readonly element: HTMLElement;
  readonly input: HTMLInputElement;
  readonly list: HTMLElement;
  #context: Context;
  #events: SearchEvents;
  #asked = new Newest();
  #walks = new Newest();
  #found: readonly Place[] = [];
  #active = -1;
  // While an answer to what stands in the field is on its way; and whether Enter waits for it.
  #isAsking = false;
  #isWanted = false;
  #shownEnd = "";
  #clear: HTMLButtonElement;
  #id: string;

  constructor(context: Context, label: string, events: SearchEvents) {
    searches += 1;
    this.#id = `search-${searches}`;
    this.#context = context;
    this.#events = events;
    this.list = h("ul", {
      class: "results",
      attributes: {
        role: "listbox",
        id: `${this.#id}-list`,
        hidden: true,
        "aria-label": context.texts().of("results"),
      },
    });
    this.input = h("input", {
      class: "search-input",
      attributes: {
        type: "text",
        role: "combobox",
        placeholder: label,
        "aria-label": label,
        "aria-autocomplete": "list",
        "aria-expanded": "false",
        "aria-controls": `${this.#id}-list`,
        autocomplete: "off",
        autocapitalize: "off",
        spellcheck: "false",
        enterkeyhint: "search",
        maxlength: 100,
      },
      on: {
        input: () => this.#typed(),
        keydown: (event: KeyboardEvent) => this.#key(event),
        focus: () => this.#focused(),
        blur: () => this.#left(),
      },
    });
    this.#clear = iconButton(lineIcon("close"), context.texts().of("clear"), () => this.#emptied());
    this.#clear.classList.add("search-clear");
    this.#clear.hidden = true;
    this.element = h("div", { class: "search" }, lineIcon("search"), this.input, this.#clear);
    // A press on a result must not take the focus before it is a click.
    this.list.addEventListener("pointerdown", (event) => event.preventDefault());
  }

  // The name that stands in the field while nobody types.
  show(name: string): void {
    this.#shownEnd = name;
    if (document.activeElement !== this.input) this.input.value = name;
    this.#clear.hidden = this.input.value === "";
  }

  close(): void {
    this.#asked.forget();
    this.#walks.forget();
    this.#isAsking = false;
    this.#isWanted = false;
    this.#found = [];
    this.#active = -1;
    this.list.replaceChildren();
    this.#open(false);
  }

  #open(isOpen: boolean): void {
    if (this.list.hidden === !isOpen) return;
    this.list.hidden = !isOpen;
    set(this.input, { "aria-expanded": String(isOpen), "aria-activedescendant": null });
    this.#events.opened(isOpen);
  }

  #focused(): void {
    this.input.select();
  }

  #left(): void {
    this.close();
    this.input.value = this.#shownEnd;
    this.#clear.hidden = this.input.value === "";
  }

  #emptied(): void {
    this.input.value = "";
    this.#shownEnd = "";
    this.#clear.hidden = true;
    this.close();
    this.#events.emptied();
    this.input.focus();
  }

  async #typed(): Promise<void> {
    const text = this.input.value.trim();
    this.#clear.hidden = this.input.value === "";
    if (text === "") {
      this.close();
      return;
    }
    this.#isAsking = true;
    this.#walks.forget();
    try {
      const found = await this.#asked.of(() => this.#context.engine.places(text));
      if (found !== undefined) this.#show(this.#withOwn(text, found));
    } catch (error) {
      this.#context.failed(error);
    }
  }

  // What the library finds by the venue's own names, then what is called so in the reader's
  // language, and what such things are sold there.
  #withOwn(text: string, found: readonly { kind: string; id: number }[]): Place[] {
    const { venue, texts } = this.#context;
    const keys = new Map(venue.places.map((place) => [`${place.kind} ${place.id}`, place]));
    const all = new Set<Place>();
    for (const { kind, id } of found) {
      const place = keys.get(`${kind} ${id}`);
      if (place !== undefined) all.add(place);
    }
    const wanted = folded(text);
    const says = (words: readonly string[]) => words.some((word) => folded(word).includes(wanted));
    const { language } = texts();
    const own = venue.places.filter((place) => says([nameIn(language, place.names)]));
    const kin = venue.places.filter((place) =>
      says([...place.categories.map((each) => nameIn(language, each)), ...place.keywords]),
    );
    for (const place of [...own, ...kin]) all.add(place);
    return [...all].slice(0, mostShown);
  }

  #show(found: readonly Place[]): void {
    const { texts, say } = this.#context;
    this.#found = found;
    this.#active = -1;
    this.#isAsking = false;
    if (this.#isWanted && found.length > 0) return this.#choose(0);
    this.list.replaceChildren(...found.map((place, index) => this.#result(place, index)));
    if (found.length === 0) {
      const attributes = { role: "option", "aria-disabled": "true" };
      this.list.append(h("li", { class: "no-result", text: texts().of("nothingFound"), attributes }));
    }
    this.#open(true);
    say(found.length === 0 ? texts().of("nothingFound") : texts().of("found", { n: found.length }));
    void this.#tellWalks(found.slice(0, mostWalks));
  }

  #result(place: Place, index: number): HTMLElement {
    const { texts } = this.#context;
    return h(
      "li",
      {
        class: "result",
        attributes: { role: "option", id: `${this.#id}-${index}`, "aria-selected": "false" },
        on: { click: () => this.#choose(index) },
      },
      placeIcon(place),
      h(
        "span",
        { class: "result-words" },
        h("span", { class: "result-name", text: nameIn(texts().language, place.names) }),
        h("span", { class: "result-where", text: whereabouts(this.#context, place) }),
      ),
      h("span", { class: "result-walk" }),
    );
  }

  // How far each is from the start, where that is known; then in how many minutes, one after another,
  // so that what is typed next need not wait for all of them.
  async #tellWalks(places: readonly Place[]): Promise<void> {
    const { engine, store, texts } = this.#context;
    const { from, level } = store.state;
    const start = from === null ? null : startOf(this.#context, from);
    if (start === null) return;
    const goals = places.map((place) => waypointsOf(this.#context, endOfPlace(place)));
    const told = places.map((_, index) => this.list.children[index]!.querySelector(".result-walk")!);
    const { language } = texts();
    try {
      const lengths = await this.#walks.of(() => engine.lengths(start, goals, level));
      lengths?.forEach((length, index) => {
        if (length !== null) told[index]!.replaceChildren(h("span", { text: texts().length(length.mm) }));
      });
      for (const [index, length] of (lengths ?? []).entries()) {
        if (length === null) continue;
        const to = [length.waypoint];
        const way = await this.#walks.of(() => engine.way({ from: start, to, level, language }));
        if (way === undefined) return;
        if (way !== null) told[index]!.append(h("span", { text: texts().minutes(way.seconds) }));
      }
    } catch (error) {
      this.#context.failed(error);
    }
  }

  #key(event: KeyboardEvent): void {
    if (event.isComposing) return;
    const last = this.#found.length - 1;
    if (event.key === "ArrowDown" && last >= 0) this.#activate(Math.min(this.#active + 1, last));
    else if (event.key === "ArrowUp" && last >= 0) this.#activate(Math.max(this.#active - 1, 0));
    else if (event.key === "Enter" && this.#isAsking) this.#isWanted = true;
    else if (event.key === "Enter") this.#choose(Math.max(this.#active, 0));
    else if (event.key === "Escape" && this.input.value !== "") this.#escaped();
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  #escaped(): void {
    this.close();
    this.input.value = this.#shownEnd;
    this.#clear.hidden = this.input.value === "";
  }

  #activate(index: number): void {
    this.list.children[this.#active]?.setAttribute("aria-selected", "false");
    this.#active = index;
    const element = this.list.children[index]!;
    element.setAttribute("aria-selected", "true");
    element.scrollIntoView({ block: "nearest" });
    this.input.setAttribute("aria-activedescendant", element.id);
  }

  #choose(index: number): void {
    const place = this.#found[index];
    if (place === undefined) return;
    this.#shownEnd = nameIn(this.#context.texts().language, place.names);
    this.input.blur();
    this.#events.chosen(endOfPlace(place));
  }
}
