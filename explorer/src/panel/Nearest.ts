// The kinds of things that one looks for wherever one is: toilets, a lift, an exit. One that is
// chosen is led to from the start, or from the middle of the map while there is none.
import { symbolFor, symbolIcon } from "../theme/icons.js";
import type { End } from "../state/State.js";
import { closestWaypoint } from "../venue/closest.js";
import { nameIn } from "../venue/names.js";
import type { Place } from "../venue/Venue.js";
import { nameOfEnd, type Context } from "./Context.js";
import { h } from "./dom.js";
import { endOfPlace, placeIcon } from "./Search.js";

interface Kind {
  readonly end: End;
  readonly name: string;
  readonly icon: Element;
}

// With its venue's name, where there are several: each has its own toilets.
function nameAmong({ venue, texts }: Context, { names, spots }: Place): string {
  const { language } = texts();
  const [first] = venue.buildings;
  const building = venue.floors.get(spots[0]?.map ?? NaN)?.building;
  const isAlone = venue.buildings.every((each) => each.venue === first?.venue);
  if (isAlone || building === undefined) return nameIn(language, names);
  return `${nameIn(language, names)} · ${nameIn(language, building.venueNames)}`;
}

function kindsOf(context: Context): Kind[] {
  const { venue } = context;
  const amenities = venue.places.filter((each) => each.kind === "amenity" && each.spots.length > 0);
  const types = new Set(venue.movers.map((mover) => mover.type));
  return [
    ...amenities.map((place) => ({ end: endOfPlace(place), name: nameAmong(context, place), icon: placeIcon(place) })),
    ...[...types].map(({ id, names }) => ({
      end: { kind: "pathType", id } as const,
      name: nameOfEnd(context, { kind: "pathType", id }),
      icon: symbolIcon(symbolFor([names.name])),
    })),
  ];
}

// The waypoint with a way that is closest to the middle of the map.
function middleEnd({ venue, middle }: Context): End | null {
  const { map, at } = middle();
  const id = closestWaypoint(venue, map, at, (each) => venue.joined.has(each));
  return id === null ? null : { kind: "waypoint", id };
}

export class Nearest {
  // The start that nobody chose.
  #assumed: End | null = null;
  #context: Context;

  constructor(context: Context) {
    this.#context = context;
  }

  chips(): HTMLElement {
    const { texts } = this.#context;
    const chips = kindsOf(this.#context).map((kind) => this.#chip(kind));
    const attributes = { role: "group", "aria-labelledby": "nearest" };
    const label = h("span", { class: "chips-label", text: texts().of("nearest"), attributes: { id: "nearest" } });
    return h("div", { class: "chips", attributes }, label, ...chips);
  }

  // Says where the way begins while nobody has chosen it.
  hint(from: End | null): HTMLElement | null {
    if (from === null || from !== this.#assumed) return null;
    return h("p", { class: "hint", text: this.#context.texts().of("fromMiddle") });
  }

  #chip({ end, name, icon }: Kind): HTMLElement {
    return h(
      "button",
      { class: "chip", attributes: { type: "button" }, on: { click: () => this.#go(end) } },
      icon,
      name,
    );
  }

  #go(to: End): void {
    const { store } = this.#context;
    const { from } = store.state;
    if (from === null) this.#assumed = middleEnd(this.#context);
    store.update({ from: from ?? this.#assumed, to, via: [], place: null });
  }
}
