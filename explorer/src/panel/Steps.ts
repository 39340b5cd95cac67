// The way in words: how long it is, and its steps, floor by floor. A step leads to its spot.
import type { Found, FoundWay, Leg, Missed } from "../engine/CurrentWay.js";
import type { Step, Way } from "../engine/Engine.js";
import { lineIcon, symbolFor, symbolIcon, type Line } from "../theme/icons.js";
import { floorName, nameOfEnd, type Context } from "./Context.js";
import { wayChoice } from "./Choices.js";
import { h, iconButton, set } from "./dom.js";
import { chooseLevel, levelName } from "./Levels.js";

const turns: Readonly<Record<string, Line>> = {
  left: "left",
  right: "right",
  "slight left": "slightLeft",
  "slight right": "slightRight",
  "sharp left": "sharpLeft",
  "sharp right": "sharpRight",
  around: "around",
};

export function stepIcon({ venue }: Context, step: Step): Element {
  if (step.kind === "mover") {
    const type = venue.movers.find((mover) => mover.type.id === step.mover)?.type;
    return symbolIcon(symbolFor([type?.names.name ?? ""]));
  }
  if (step.kind === "turn") return lineIcon(turns[step.direction ?? ""] ?? "straight");
  if (step.kind === "arrive") return lineIcon("arrive");
  return lineIcon(step.kind === "crossing" ? "crossing" : "depart");
}

function stepElement(context: Context, step: Step): HTMLElement {
  const { venue, texts, flyTo } = context;
  const fly = (event: Event) => {
    const spot = venue.waypoints.get(step.at);
    if (spot === undefined) return;
    const button = event.currentTarget as HTMLElement;
    const before = button.closest(".panel")?.querySelector(".step[aria-current]");
    if (before != null) set(before, { "aria-current": null });
    set(button, { "aria-current": "step" });
    flyTo(spot.map, spot.at);
  };
  const length = step.mm >= 500 ? texts().length(step.mm) : "";
  return h(
    "li",
    {},
    h(
      "button",
      { class: "step", attributes: { type: "button" }, on: { click: fly } },
      stepIcon(context, step),
      h("span", { class: "step-text", text: step.text }),
      h("span", { class: "step-length", text: length }),
    ),
  );
}

// Steps of one floor after another, as far as they follow each other.
export function stepGroups(way: Way): Step[][] {
  const groups: Step[][] = [];
  for (const step of way.steps) {
    const last = groups.at(-1);
    if (last?.[0]?.mapId === step.mapId) last.push(step);
    else groups.push([step]);
  }
  return groups;
}

function stepsTold(context: Context, way: Way): HTMLElement[] {
  const { venue } = context;
  return stepGroups(way).map((steps) => {
    const floor = venue.floors.get(steps[0]!.mapId);
    return h(
      "section",
      { class: "steps" },
      h("h3", { class: "steps-floor", text: floor === undefined ? "" : floorName(context, floor) }),
      h("ol", { class: "step-list" }, ...steps.map((step) => stepElement(context, step))),
    );
  });
}

// The steps to one of several stops.
function legTold(context: Context, { stop, way }: Leg): HTMLElement {
  const { texts } = context;
  const length = `${texts().minutes(way.seconds)} · ${texts().length(way.mm)}`;
  return h(
    "section",
    { class: "leg" },
    h(
      "h3",
      { class: "leg-head" },
      h("span", { class: "leg-number", text: String(stop + 1) }),
      h("span", { class: "leg-name", text: nameOfStop(context, stop) }),
      h("span", { class: "leg-length", text: length }),
    ),
    ...stepsTold(context, way),
  );
}

function nameOfStop(context: Context, stop: number): string {
  const { via, to } = context.store.state;
  const end = via[stop] ?? to;
  return end === null ? "" : nameOfEnd(context, end);
}

// What is out of reach, and the level at which it is not.
function missedTold(context: Context, { stop, level }: Missed): HTMLElement {
  const { texts, store } = context;
  const name = nameOfStop(context, stop);
  const text = texts().of(store.state.level === null ? "outOfReach" : "outOfReachLevel", { place: name });
  const button =
    level === null
      ? null
      : h("button", {
          class: "button is-small",
          text: texts().of("reachedWith", { how: levelName(context, level) }),
          attributes: { type: "button" },
          on: { click: () => chooseLevel(context, level) },
        });
  return h("div", { class: "missed" }, h("p", { text }), button);
}

function sumTold(context: Context, { way, missed, choices }: FoundWay): HTMLElement[] {
  const { texts } = context;
  const sum = h(
    "p",
    { class: choices.length > 1 ? "sum unseen" : "sum" },
    h("strong", { text: texts().minutes(way.seconds) }),
    h("span", { text: texts().length(way.mm) }),
  );
  const others = choices.length > 1 ? [wayChoice(context, choices, way)] : [];
  return [...missed.map((each) => missedTold(context, each)), sum, ...others];
}

// How long the way is, or why there is none.
export function wayInShort(context: Context, found: Found): HTMLElement[] {
  const { texts } = context;
  const note = (text: string) => [h("p", { class: "note", text })];
  switch (found.kind) {
    case "none":
      return note(texts().of("tapHint"));
    case "searching":
      return note(texts().of("searching"));
    case "there":
      return note(texts().of("sameSpot"));
    case "missing":
      return found.missed.map((each) => missedTold(context, each));
    case "found":
      return sumTold(context, found);
  }
}

// To hand on and to carry.
export function wayActions(context: Context): HTMLElement[] {
  const say = context.texts();
  return [
    iconButton(lineIcon("share"), say.of("share"), context.share),
    iconButton(lineIcon("print"), say.of("print"), context.print),
  ];
}

export function wayInSteps(context: Context, { way, legs }: FoundWay): HTMLElement[] {
  const isTour = context.store.state.via.length > 0;
  if (isTour) return legs.map((leg) => legTold(context, leg));
  const note = h("p", { class: "note", text: context.texts().of("betweenVenues") });
  return [...stepsTold(context, way), ...(isBetweenVenues(context, way) ? [note] : [])];
}

function isBetweenVenues({ venue }: Context, { segments }: Way): boolean {
  const venues = segments.map(({ mapId }) => venue.floors.get(mapId)?.building.venue);
  return new Set(venues).size > 1;
}
