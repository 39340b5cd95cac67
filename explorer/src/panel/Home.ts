// What the panel shows before anything is chosen: all of the venue's places.
import { nameIn } from "../venue/names.js";
import { whereabouts, type Context } from "./Context.js";
import { lineIcon, type Line } from "../theme/icons.js";
import { h } from "./dom.js";
import { endOfPlace } from "./Search.js";

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

export function home(context: Context): HTMLElement[] {
  const { venue, texts, store } = context;
  const { language } = texts();
  const name = (place: (typeof venue.places)[number]) => nameIn(language, place.names);
  const byName = new Intl.Collator(language, { numeric: true }).compare;
  const places = venue.places
    .filter((each) => each.kind === "destination" && each.spots.length > 0)
    .sort((a, b) => byName(name(a), name(b)));
  const rows = places.map((place) =>
    h(
      "li",
      { class: "row-item" },
      h(
        "button",
        {
          class: "row",
          attributes: { type: "button" },
          on: { click: () => store.update({ place: endOfPlace(place) }) },
        },
        h("span", { class: "result-name", text: name(place) }),
        h("span", { class: "result-where", text: whereabouts(context, place) }),
      ),
    ),
  );
  return [
    h("h2", { class: "heading", text: texts().of("places") }),
    h("ul", { class: "rows" }, ...rows),
    foot(context),
  ];
}
