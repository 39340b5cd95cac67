// How one gets about: a plain choice of what the venue's accessibility levels make different.
import { nameIn } from "../venue/names.js";
import type { Level } from "../venue/Venue.js";
import type { Context } from "./Context.js";
import { h } from "./dom.js";

function label(context: Context, level: Level, isLowest: boolean): string {
  const { texts } = context;
  if (level.without.length === 0) return texts().of("anyWay");
  if (isLowest) return texts().of("stepFree");
  const names = level.without.map((type) => nameIn(texts().language, type.names));
  return texts().of("without", { movers: texts().list(names) });
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

// Null where the venue makes no difference.
export function levelChoice(context: Context): HTMLElement | null {
  const { venue, store, texts } = context;
  const levels = [...venue.levels].reverse();
  if (levels.length < 2) return null;
  const chosen = store.state.level;
  const radios = levels.map((level) => {
    const isTop = level.without.length === 0;
    const isChosen = isTop
      ? chosen === null || chosen >= level.accessibility
      : levels.find((each) => each.accessibility <= (chosen ?? Infinity)) === level;
    const input = h("input", {
      attributes: { type: "radio", name: "level", value: level.accessibility, checked: isChosen },
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
