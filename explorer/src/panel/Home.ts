// What the panel shows before anything is chosen: the places that were looked at last, and all of
// the venue's places, or those of one category.
import type { Recent } from "../state/Recent.js";
import { nameIn } from "../venue/names.js";
import type { Category, Place } from "../venue/Venue.js";
import { placeOf, whereabouts, type Context } from "./Context.js";
import { lineIcon, type Line } from "../theme/icons.js";
import { h } from "./dom.js";
import { endOfPlace } from "./Search.js";

// What is not seen costs time whenever the panel shows something else.
const rowsAtOnce = 30;

function foot({ texts, store, share, print }: Context): HTMLElement {
  const button = (icon: Line, label: string, pressed: () => void) =>
    h(
      "button",
      { class: "foot-button", attributes: { type: "button" }, on: { click: pressed } },
      lineIcon(icon),
      label,
    );
  const say = texts();
  return h(
    "div",
    { class: "foot" },
    button("share", say.of("share"), share),
    button("print", say.of("print"), print),
    button("data", say.of("data"), () => store.update({ data: "type" })),
  );
}

function placeRow(context: Context, place: Place): HTMLElement {
  const { store, texts } = context;
  const show = () => store.update({ place: endOfPlace(place) });
  return h(
    "li",
    { class: "row-item" },
    h(
      "button",
      { class: "row", attributes: { type: "button" }, on: { click: show } },
      h("span", { class: "result-name", text: nameIn(texts().language, place.names) }),
      h("span", { class: "result-where", text: whereabouts(context, place) }),
    ),
  );
}

export class Home {
  readonly element = h("div", { class: "home" });
  #context: Context;
  #recent: Recent;
  #recentPart = h("section", { class: "recent" });
  #list = h("ul", { class: "rows" });
  #unlisted: Place[] = [];
  // Goes on listing when the last row is seen.
  #end = new IntersectionObserver((seen) => {
    if (seen.some(({ isIntersecting }) => isIntersecting)) this.#listMore();
  });

  constructor(context: Context, recent: Recent) {
    this.#context = context;
    this.#recent = recent;
    context.store.subscribe((state, before) => {
      if (state.category !== before.category) this.refresh();
    });
  }

  refresh(): void {
    const { texts } = this.#context;
    const hadFocus = document.activeElement?.classList.contains("category") ?? false;
    const select = this.#categories();
    this.#showRecent();
    this.#list.replaceChildren();
    this.#unlisted = this.#places();
    this.#listMore();
    this.element.replaceChildren(
      this.#recentPart,
      h("div", { class: "heading-line" }, h("h2", { class: "heading", text: texts().of("places") }), select),
      this.#list,
      foot(this.#context),
    );
    if (hadFocus) select?.focus();
  }

  #listMore(): void {
    this.#end.disconnect();
    this.#list.append(...this.#unlisted.splice(0, rowsAtOnce).map((place) => placeRow(this.#context, place)));
    const last = this.#list.lastElementChild;
    if (this.#unlisted.length > 0 && last !== null) this.#end.observe(last);
  }

  #showRecent(): void {
    const { texts } = this.#context;
    const places = this.#recent.ends.map((end) => placeOf(this.#context, end)).filter((place) => place !== null);
    this.#recentPart.hidden = places.length === 0;
    const clear = () => {
      this.#recent.clear();
      this.#showRecent();
      this.#list.querySelector<HTMLElement>("button")?.focus();
    };
    const attributes = { type: "button", "aria-label": texts().of("clearRecent") };
    this.#recentPart.replaceChildren(
      h(
        "div",
        { class: "heading-line" },
        h("h2", { class: "heading", text: texts().of("recent") }),
        h("button", { class: "text-button", text: texts().of("clear"), attributes, on: { click: clear } }),
      ),
      h("ul", { class: "rows" }, ...places.map((place) => placeRow(this.#context, place))),
    );
  }

  #places(): Place[] {
    const { venue, texts, store } = this.#context;
    const category = this.#known().find(({ id }) => id === store.state.category)?.id ?? null;
    const { language } = texts();
    const byName = new Intl.Collator(language, { numeric: true }).compare;
    return venue.places
      .filter((each) => each.kind === "destination" && each.spots.length > 0)
      .filter((each) => category === null || each.categories.some(({ id }) => id === category))
      .sort((a, b) => byName(nameIn(language, a.names), nameIn(language, b.names)));
  }

  // The categories that a place is of.
  #known(): Category[] {
    const places = this.#context.venue.places.filter((each) => each.spots.length > 0);
    return [...new Set(places.flatMap((each) => each.categories))];
  }

  // Null where the venue has none.
  #categories(): HTMLSelectElement | null {
    const { texts, store } = this.#context;
    const { language } = texts();
    const byName = new Intl.Collator(language).compare;
    const all = this.#known();
    if (all.length === 0) return null;
    const named = all.map((each) => ({ id: each.id, name: nameIn(language, each) }));
    named.sort((a, b) => byName(a.name, b.name));
    const option = (value: string, text: string, selected: boolean) =>
      h("option", { text, attributes: { value, selected } });
    const chosen = store.state.category;
    const changed = (event: Event) => {
      const { value } = event.target as HTMLSelectElement;
      store.update({ category: value === "" ? null : Number(value) });
    };
    return h(
      "select",
      {
        class: "select category",
        attributes: { "aria-label": texts().of("category") },
        on: { change: changed },
      },
      option("", texts().of("allCategories"), chosen === null),
      ...named.map(({ id, name }) => option(String(id), name, id === chosen)),
    );
  }
}
