// What is known of a place, or of a spot on the floor, and the ways from and to it.
import { lineIcon } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import { reachMinutes, type End } from "../state/State.js";
import {
  floorName,
  floorsJoined,
  moverOf,
  nameOfEnd,
  placeOf,
  spotsOf,
  startOf,
  waypointsOf,
  whereabouts,
  type Context,
} from "./Context.js";
import { h, iconButton } from "./dom.js";
import { closingSwitch } from "./OutOfOrder.js";
import { mostVia } from "./Stops.js";

function where(context: Context, end: End): string {
  const place = placeOf(context, end);
  if (place !== null) return whereabouts(context, place);
  const mover = moverOf(context, end);
  if (mover !== null) return floorsJoined(context, mover);
  const [spot] = spotsOf(context, end);
  const floor = context.venue.floors.get(spot?.map ?? NaN);
  return floor === undefined ? "" : floorName(context, floor);
}

function kinds(context: Context, end: End): string {
  const { language } = context.texts();
  const categories = placeOf(context, end)?.categories ?? [];
  return categories.map((each) => nameIn(language, each)).join(", ");
}

// How far it is from the start, once that is known.
async function tellWalk(context: Context, end: End, told: HTMLElement): Promise<void> {
  const { engine, store, texts } = context;
  const { from, level } = store.state;
  const start = from === null ? null : startOf(context, from);
  const to = waypointsOf(context, end);
  if (start === null || to.length === 0 || to.includes(start)) return;
  try {
    const way = await engine.way({ from: start, to, level, language: texts().language });
    if (way === null) return;
    told.textContent = `${texts().length(way.mm)} · ${texts().minutes(way.seconds)}`;
  } catch (error) {
    context.failed(error);
  }
}

export function placeCard(context: Context, end: End): HTMLElement {
  const { store, texts } = context;
  const say = texts();
  const words = [kinds(context, end), where(context, end)].filter((each) => each !== "");
  const walk = h("p", { class: "card-walk" });
  const mover = moverOf(context, end);
  void tellWalk(context, end, walk);
  const { from, via, to } = store.state;
  const isOnWay = from !== null && to !== null && via.length < mostVia;
  const stop = () => store.update({ via: [...via, end], place: null });
  const reach = () => store.update({ from: end, via: [], to: null, place: null, reach: reachMinutes[1]! });
  const go = () => store.update({ to: end, place: null });
  const data = store.state.data === null ? null : context.data();
  const start = () => store.update({ from: end, place: null });
  return h(
    "section",
    { class: "card", attributes: { "aria-labelledby": "card-name" } },
    h(
      "div",
      { class: "card-head" },
      h("h2", {
        class: "card-name",
        text: nameOfEnd(context, end),
        attributes: { id: "card-name", tabindex: -1 },
      }),
      h(
        "div",
        { class: "card-corner" },
        iconButton(lineIcon("share"), say.of("share"), context.share),
        iconButton(lineIcon("close"), say.of("close"), () => store.update({ place: null })),
      ),
    ),
    h("p", { class: "card-where", text: words.join(" · ") }),
    walk,
    mover === null ? null : closingSwitch(context, mover),
    h(
      "div",
      { class: "card-actions" },
      h(
        "button",
        { class: "button is-main", attributes: { type: "button" }, on: { click: go } },
        lineIcon("go"),
        say.of(store.state.from === null ? "directions" : "goHere"),
      ),
      h(
        "button",
        { class: "button", attributes: { type: "button" }, on: { click: start } },
        lineIcon("start"),
        say.of("startHere"),
      ),
      h(
        "button",
        { class: "button", attributes: { type: "button" }, on: { click: reach } },
        lineIcon("reach"),
        say.of("howFarHere"),
      ),
      !isOnWay
        ? null
        : h(
            "button",
            { class: "button", attributes: { type: "button" }, on: { click: stop } },
            lineIcon("plus"),
            say.of("addStop"),
          ),
    ),
    data === null ? null : data.record(end),
  );
}
