// How one gets about: a plain choice of what the venue's accessibility levels make different.
import type { Level } from "../venue/Venue.js";
import { typeName, type Context } from "./Context.js";
import { h } from "./dom.js";

function label(context: Context, level: Level, isLowest: boolean): string {
  const { texts } = context;
  if (level.without.length === 0) return texts().of("anyWay");
  if (isLowest) return texts().of("stepFree");
  const names = new Set(level.without.map((type) => typeName(context, type)));
  return texts().of("without", { movers: texts().list([...names]) });
}

export function levelName(context: Context, accessibility: number): string {
  const { levels } = context.venue;
  const level = levels.find((each) => each.accessibility === accessibility);
  return level === undefined ? "" : label(context, level, level === levels[0]);
}

export function chooseLevel({ venue, store }: Context, accessibility: number): void {
  const isTop = accessibility === venue.levels.at(-1)?.accessibility;
  store.update({ level: isTop ? null : accessibility });
}

// More do not stand beside each other.
const mostBeside = 3;

function isChosenOf({ store }: Context, levels: readonly Level[], level: Level): boolean {
  const chosen = store.state.level;
  if (level.without.length === 0) return chosen === null || chosen >= level.accessibility;
  return levels.find((each) => each.accessibility <= (chosen ?? Infinity)) === level;
}

// Null where the venue makes no difference.
export function levelChoice(context: Context): HTMLElement | null {
  const { venue, texts } = context;
  const levels = [...venue.levels].reverse();
  if (levels.length < 2) return null;
  if (levels.length > mostBeside) return levelSelect(context, levels);
  const radios = levels.map((level) => {
    const checked = isChosenOf(context, levels, level);
    const input = h("input", {
      attributes: { type: "radio", name: "level", value: level.accessibility, checked },
      on: { change: () => chooseLevel(context, level.accessibility) },
    });
    const isLowest = level === levels.at(-1);
    return h("label", { class: "choice" }, input, h("span", { text: label(context, level, isLowest) }));
  });
  return h(
    "fieldset",
    { class: "choices" },
    h("legend", { class: "unseen", text: texts().of("how") }),
    ...radios,
  );
}

function levelSelect(context: Context, levels: readonly Level[]): HTMLElement {
  const { texts } = context;
  const options = levels.map((level) =>
    h("option", {
      text: label(context, level, level === levels.at(-1)),
      attributes: { value: level.accessibility, selected: isChosenOf(context, levels, level) },
    }),
  );
  const changed = (event: Event) => chooseLevel(context, Number((event.target as HTMLSelectElement).value));
  const attributes = { "aria-label": texts().of("how") };
  return h("select", { class: "select level-select", attributes, on: { change: changed } }, ...options);
}
