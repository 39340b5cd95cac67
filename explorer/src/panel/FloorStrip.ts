// The buildings and the floors of the one that is shown, those that the way leads over marked.
import { nameIn } from "../venue/names.js";
import type { Building, Floor } from "../venue/Venue.js";
import type { Context } from "./Context.js";
import { h, set } from "./dom.js";

export class FloorStrip {
  #context: Context;
  #element: HTMLElement;

  constructor(context: Context, element: HTMLElement) {
    this.#context = context;
    this.#element = element;
  }

  // `onWay` are the maps that the way leads over.
  show(shown: Floor, onWay: ReadonlySet<number>): void {
    const { texts, venue } = this.#context;
    const focused = (document.activeElement as HTMLElement | null)?.dataset["map"];
    set(this.#element, { "aria-label": texts().of("floors") });
    const parts: HTMLElement[] = [];
    if (venue.buildings.length > 1) parts.push(this.#buildings(shown.building, onWay));
    const floors = shown.building.floors.map((floor) => this.#floor(floor, shown, onWay));
    parts.push(h("ul", { class: "floor-list" }, ...floors.map((each) => h("li", {}, each))));
    this.#element.replaceChildren(...parts);
    if (focused === undefined) return;
    this.#element.querySelector<HTMLElement>(`[data-map="${CSS.escape(focused)}"]`)?.focus();
  }

  #buildings(shown: Building, onWay: ReadonlySet<number>): HTMLElement {
    const { texts, venue, store } = this.#context;
    const options = venue.buildings.map((building) => {
      const isOnWay = building !== shown && building.floors.some((floor) => onWay.has(floor.map));
      const name = nameIn(texts().language, building.names);
      return h("option", {
        text: isOnWay ? `${name} •` : name,
        attributes: { value: building.id, selected: building === shown },
      });
    });
    const changed = (event: Event) => {
      const id = Number((event.target as HTMLSelectElement).value);
      const building = venue.buildings.find((each) => each.id === id);
      const floor = building?.floors.find((each) => onWay.has(each.map)) ?? building?.firstFloor;
      if (floor != null) store.update({ map: floor.map });
    };
    const attributes = { "aria-label": texts().of("building") };
    return h("select", { class: "select building", attributes, on: { change: changed } }, ...options);
  }

  #floor(floor: Floor, shown: Floor, onWay: ReadonlySet<number>): HTMLElement {
    const { texts, store } = this.#context;
    const isOnWay = onWay.has(floor.map);
    const name = nameIn(texts().language, floor.names);
    const label = isOnWay ? `${name}, ${texts().of("onWay")}` : name;
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
