// How far one gets from the start: a choice of minutes, what the shades on the map mean, and the
// places in reach, the nearest first.
import type { CurrentReach, Reach } from "../engine/CurrentReach.js";
import { shades } from "../map/shades.js";
import { reachMinutes } from "../state/State.js";
import { nameIn } from "../venue/names.js";
import type { Place } from "../venue/Venue.js";
import { whereabouts, type Context } from "./Context.js";
import { h } from "./dom.js";
import { endOfPlace } from "./Search.js";

interface PlaceInReach {
  readonly place: Place;
  readonly mm: number;
}

function inReach({ venue }: Context, { mm, most }: Reach): PlaceInReach[] {
  return venue.places
    .map((place) => ({
      place,
      mm: Math.min(...place.spots.map(({ waypoint }) => mm.get(waypoint) ?? Infinity)),
    }))
    .filter((each) => each.mm <= most)
    .sort((a, b) => a.mm - b.mm);
}

// Of joined venues the one that the walks begin and end in.
function venueOfStart({ venue, texts }: Context, { mm }: Reach): string | null {
  const [start] = mm.keys();
  const building = venue.floors.get(venue.waypoints.get(start ?? NaN)?.map ?? NaN)?.building;
  const isAlone = venue.buildings.every((each) => each.venue === building?.venue);
  return isAlone || building === undefined ? null : nameIn(texts().language, building.venueNames);
}

function legend({ texts }: Context, { palest }: Reach): HTMLElement {
  const steps = shades().map((colour) => {
    const step = h("span", { class: "legend-step" });
    step.style.backgroundColor = colour;
    return step;
  });
  return h(
    "div",
    { class: "legend", attributes: { "aria-hidden": "true" } },
    h("div", { class: "legend-steps" }, ...steps),
    h("span", { text: texts().length(0) }),
    h("span", { text: texts().length(palest / 2) }),
    h("span", { text: texts().length(palest) }),
  );
}

function row(context: Context, { place, mm }: PlaceInReach): HTMLElement {
  const { store, texts } = context;
  const go = () => store.update({ to: endOfPlace(place) });
  return h(
    "li",
    { class: "row-item" },
    h(
      "button",
      { class: "row reach-row", attributes: { type: "button" }, on: { click: go } },
      h(
        "span",
        { class: "result-words" },
        h("span", { class: "result-name", text: nameIn(texts().language, place.names) }),
        h("span", { class: "result-where", text: whereabouts(context, place) }),
      ),
      h("span", { class: "step-length", text: texts().length(mm) }),
    ),
  );
}

export class Reaching {
  readonly element = h("section", { class: "reaching" });
  #context: Context;
  #found = h("div");
  #reach: CurrentReach;

  constructor(context: Context, reach: CurrentReach) {
    this.#context = context;
    this.#reach = reach;
    reach.subscribe((found) => this.#tell(found));
  }

  refresh(): void {
    const { texts, store } = this.#context;
    const { from, to, reach } = store.state;
    this.element.hidden = from === null || to !== null;
    const focused = (document.activeElement as HTMLElement | null)?.dataset["minutes"];
    const chips = reachMinutes.map((minutes) => this.#chip(minutes, minutes === reach));
    const label = h("span", { class: "chips-label", text: texts().of("howFar"), attributes: { id: "how-far" } });
    const attributes = { role: "group", "aria-labelledby": "how-far" };
    this.element.replaceChildren(h("div", { class: "chips", attributes }, label, ...chips), this.#found);
    chips.find((chip) => chip.dataset["minutes"] === focused)?.focus();
    this.#tell(this.#reach.found);
  }

  // Pressed again, nothing is shown any more.
  #chip(minutes: number, isPressed: boolean): HTMLElement {
    const { texts, store } = this.#context;
    const attributes = { type: "button", "aria-pressed": String(isPressed), "data-minutes": minutes };
    const press = () => store.update({ reach: isPressed ? null : minutes });
    const text = texts().minutes(minutes * 60);
    return h("button", { class: "chip is-toggle", text, attributes, on: { click: press } });
  }

  #tell(found: Reach | null): void {
    if (found === null) return this.#found.replaceChildren();
    const { texts, say } = this.#context;
    const places = inReach(this.#context, found);
    const heading = texts().of("inReachCount", { n: places.length });
    const venue = venueOfStart(this.#context, found);
    this.#found.replaceChildren(
      legend(this.#context, found),
      ...(venue === null ? [] : [h("p", { class: "reach-note", text: texts().of("withinVenue", { venue }) })]),
      h("h2", { class: "heading", text: heading }),
      h("ul", { class: "rows" }, ...places.map((each) => row(this.#context, each))),
    );
    say(heading);
  }
}
