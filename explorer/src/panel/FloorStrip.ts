// The buildings and the floors of the one that is shown, those that the way leads over marked.
import { nameIn } from "../venue/names.js";
import type { Building, Floor } from "../venue/Venue.js";
import { hasOverview, nameOfFloor, type Context } from "./Context.js";
import { h, set } from "./dom.js";

const overview = "overview";

export class FloorStrip {
  #context: Context;
  #element: HTMLElement;
  // What it shows already.
  #drawn = "";
  #word: "onWay" | "inReach" = "onWay";

  constructor(context: Context, element: HTMLElement) {
    this.#context = context;
    this.#element = element;
  }

  // `onWay` are the maps that the way leads over, or those in reach, as `word` says.
  show(shown: Floor, onWay: ReadonlySet<number>, word: "onWay" | "inReach" = "onWay"): void {
    const { isOverview } = this.#context.store.state;
    const { language } = this.#context.texts();
    const drawn = JSON.stringify([shown.map, [...onWay].sort(), word, language, isOverview]);
    if (drawn === this.#drawn) return;
    this.#drawn = drawn;
    this.#word = word;
    const { texts, venue } = this.#context;
    const focused = (document.activeElement as HTMLElement | null)?.dataset["map"];
    set(this.#element, { "aria-label": texts().of("floors") });
    const parts: HTMLElement[] = [];
    if (venue.buildings.length > 1) parts.push(this.#buildings(shown.building, onWay));
    const floors = shown.building.floors.map((floor) => this.#floor(floor, shown, onWay));
    if (!isOverview) {
      parts.push(h("ul", { class: "floor-list" }, ...floors.map((each) => h("li", {}, each))));
    }
    this.#element.replaceChildren(...parts);
    if (focused === undefined) return;
    this.#element.querySelector<HTMLElement>(`[data-map="${CSS.escape(focused)}"]`)?.focus();
  }

  #buildings(shown: Building, onWay: ReadonlySet<number>): HTMLElement {
    const { texts, venue, store } = this.#context;
    const options = venue.buildings.map((building, index) => {
      const isOnWay = building !== shown && building.floors.some((floor) => onWay.has(floor.map));
      const name = nameIn(texts().language, building.names);
      return h("option", {
        text: isOnWay ? `${name} •` : name,
        attributes: { value: index, selected: building === shown && !store.state.isOverview },
      });
    });
    const places = [...new Set(venue.buildings.map((each) => each.venue))];
    const groups = places.map((id) => {
      const own = options.filter((_, index) => venue.buildings[index]!.venue === id);
      const names = venue.buildings.find((each) => each.venue === id)!.venueNames;
      return h("optgroup", { attributes: { label: nameIn(texts().language, names) } }, ...own);
    });
    const changed = (event: Event) => {
      const { value } = event.target as HTMLSelectElement;
      if (value === overview) return store.update({ isOverview: true });
      const building = venue.buildings[Number(value)];
      const floor = building?.floors.find((each) => onWay.has(each.map)) ?? building?.firstFloor;
      if (floor != null) store.update({ map: floor.map, isOverview: false });
    };
    const attributes = { "aria-label": texts().of("building") };
    const all = h("option", {
      text: texts().of("wholeVenue"),
      attributes: { value: overview, selected: store.state.isOverview },
    });
    const shownOptions = [...(groups.length > 1 ? groups : options), ...(hasOverview(venue) ? [all] : [])];
    return h("select", { class: "select building", attributes, on: { change: changed } }, ...shownOptions);
  }

  #floor(floor: Floor, shown: Floor, onWay: ReadonlySet<number>): HTMLElement {
    const { texts, store } = this.#context;
    const isOnWay = onWay.has(floor.map);
    const name = nameOfFloor(this.#context, floor);
    const label = isOnWay ? `${name}, ${texts().of(this.#word)}` : name;
    return h("button", {
      class: isOnWay ? "floor-button is-on-way" : "floor-button",
      text: floor.shortName,
      attributes: {
        type: "button",
        "aria-label": label,
        title: name,
        "aria-current": floor === shown ? "true" : null,
        "data-map": floor.map,
      },
      on: { click: () => store.update({ map: floor.map }) },
    });
  }
}
