// Several ways to one goal, side by side: how long each is, and which floors and movers it takes.
import type { Way } from "../engine/Engine.js";
import { symbolFor, symbolIcon } from "../theme/icons.js";
import type { PathType } from "../venue/Venue.js";
import { typeName, type Context } from "./Context.js";
import { h } from "./dom.js";

function floorsOn({ venue }: Context, way: Way): string {
  const names = way.segments.map(({ mapId }) => venue.floors.get(mapId)?.shortName ?? "");
  const each = names.filter((name, index) => name !== "" && name !== names[index - 1]);
  return each.join(" → ");
}

function moversOn({ venue }: Context, way: Way): PathType[] {
  const types = new Set(venue.movers.map((mover) => mover.type));
  const taken = new Set(way.steps.map((step) => step.mover));
  return [...types].filter((type) => taken.has(type.id));
}

function choice(context: Context, way: Way, index: number, isChosen: boolean): HTMLElement {
  const { store, texts } = context;
  const movers = moversOn(context, way);
  const names = movers.map((type) => typeName(context, type)).join(", ");
  const input = h("input", {
    attributes: { type: "radio", name: "way", value: index, checked: isChosen },
    on: { change: () => store.update({ way: index }) },
  });
  return h(
    "label",
    { class: "way-card" },
    input,
    h(
      "span",
      { class: "way-sum" },
      h("strong", { text: texts().minutes(way.seconds) }),
      " ",
      h("span", { text: texts().length(way.mm) }),
    ),
    h(
      "span",
      { class: "way-floors" },
      ...movers.map((type) => symbolIcon(symbolFor([type.names.name]))),
      h("span", { class: "way-names", text: floorsOn(context, way) }),
    ),
    h("span", { class: "unseen", text: names }),
  );
}

export function wayChoice(context: Context, choices: readonly Way[], chosen: Way): HTMLElement {
  const { texts } = context;
  return h(
    "fieldset",
    { class: "way-cards" },
    h("legend", { class: "unseen", text: texts().of("ways") }),
    ...choices.map((way, index) => choice(context, way, index, way === chosen)),
  );
}
