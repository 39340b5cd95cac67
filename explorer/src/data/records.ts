// What the data says of a waypoint, a place or a path: for whoever has to find it in its source.
import { floorName, type Context } from "../panel/Context.js";
import { h } from "../panel/dom.js";
import type { End } from "../state/State.js";
import { distance } from "../venue/drawing.js";
import { nameIn } from "../venue/names.js";
import type { Spot } from "../venue/Venue.js";
import type { Graph, Neighbour, Path } from "./graph.js";

function typeName({ venue, texts }: Context, type: number): string {
  const found = venue.pathTypes.get(type);
  return found === undefined ? String(type) : `${nameIn(texts().language, found.names)} (${type})`;
}

function levelOf({ venue, texts }: Context, type: number): string {
  return texts().of("accessLevel", { n: venue.pathTypes.get(type)?.accessibility ?? 0 });
}

export function waypointButton(context: Context, spot: Spot, words: string): HTMLElement {
  const choose = () => {
    context.store.update({ place: { kind: "waypoint", id: spot.waypoint } });
    context.flyTo(spot.map, spot.at);
  };
  return h("button", {
    class: "record-link",
    text: words,
    attributes: { type: "button" },
    on: { click: choose },
  });
}

// Two words to a row: what it is, and what the data says.
function facts(rows: readonly (readonly [string, string])[]): HTMLElement {
  const cells = rows
    .filter(([, value]) => value !== "")
    .flatMap(([name, value]) => [h("dt", { text: name }), h("dd", { text: value })]);
  return h("dl", { class: "facts" }, ...cells);
}

function neighbourRow(context: Context, spot: Spot, neighbour: Neighbour): HTMLElement | null {
  const { venue, texts } = context;
  const there = venue.waypoints.get(neighbour.waypoint);
  if (there === undefined) return null;
  const floor = venue.floors.get(there.map);
  const scale = floor?.mmPerUnit ?? null;
  const isHere = there.map === spot.map;
  const direction = neighbour.isOut ? (neighbour.isIn ? "bothWays" : "onlyOut") : "onlyIn";
  const arrow = { bothWays: "↔", onlyOut: "→", onlyIn: "←" }[direction];
  const length = scale === null ? "" : texts().length(distance(there.at, spot.at) * scale);
  const words = [
    typeName(context, neighbour.path.type),
    levelOf(context, neighbour.path.type),
    texts().of("pathId", { id: neighbour.path.id }),
    isHere ? length : floor === undefined ? String(there.map) : floorName(context, floor),
  ];
  return h(
    "li",
    { class: "neighbour" },
    h("span", { class: "neighbour-arrow", text: arrow, attributes: { "aria-hidden": "true" } }),
    h("span", { class: "unseen", text: texts().of(direction) }),
    waypointButton(context, there, String(neighbour.waypoint)),
    h("span", { class: "neighbour-words", text: words.filter((each) => each !== "").join(" · ") }),
  );
}

function placesAt({ venue, texts }: Context, waypoint: number): string {
  const here = venue.places.filter((place) => place.spots.some((spot) => spot.waypoint === waypoint));
  const { language } = texts();
  return here.map((place) => `${nameIn(language, place.names)} (${place.kind} ${place.id})`).join(", ");
}

function waypointRecord(context: Context, graph: Graph, spot: Spot): HTMLElement[] {
  const { venue, texts } = context;
  const say = texts();
  const floor = venue.floors.get(spot.map);
  const neighbours = graph.neighbours.get(spot.waypoint) ?? [];
  const rows = neighbours.map((each) => neighbourRow(context, spot, each));
  return [
    facts([
      [say.of("waypoint"), String(spot.waypoint)],
      [say.of("sourceCode"), graph.codes.get(spot.waypoint) ?? ""],
      [say.of("mapAndFloor"), `${spot.map}${floor === undefined ? "" : ` · ${floorName(context, floor)}`}`],
      [say.of("position"), spot.at.map((each) => Number(each.toFixed(2))).join(", ")],
      [say.of("placesHere"), placesAt(context, spot.waypoint)],
    ]),
    h("h3", { class: "record-heading", text: say.of("neighbours", { n: rows.length }) }),
    h("ul", { class: "neighbours" }, ...rows),
  ];
}

function placeRecord(context: Context, end: End): HTMLElement[] {
  const { venue, texts } = context;
  const place = venue.places.find((each) => each.kind === end.kind && each.id === end.id);
  if (place === undefined) return [];
  const spots = place.spots.map((spot) =>
    h(
      "li",
      { class: "neighbour" },
      waypointButton(context, spot, String(spot.waypoint)),
      h("span", { class: "neighbour-words", text: String(spot.map) }),
    ),
  );
  return [
    facts([
      [texts().of("record"), `${place.kind} ${place.id}`],
      [texts().of("keywords"), place.keywords.join(", ")],
    ]),
    h("h3", { class: "record-heading", text: texts().of("waypointsOf", { n: spots.length }) }),
    h("ul", { class: "neighbours" }, ...spots),
  ];
}

export function recordOf(context: Context, graph: Graph, end: End): HTMLElement {
  const spot = end.kind === "waypoint" ? context.venue.waypoints.get(end.id) : undefined;
  const rows = spot === undefined ? placeRecord(context, end) : waypointRecord(context, graph, spot);
  return h("section", { class: "record" }, ...rows);
}

export function pathRecord(context: Context, path: Path): HTMLElement {
  const { venue, texts } = context;
  const say = texts();
  const directions = ["bothDirections", "upOnly", "downOnly"] as const;
  const waypoints = path.waypoints.map((id) => {
    const spot = venue.waypoints.get(id);
    const link = spot === undefined ? String(id) : waypointButton(context, spot, String(id));
    return h("li", { class: "neighbour" }, link);
  });
  return h(
    "section",
    { class: "record" },
    h("h3", {
      class: "record-heading",
      text: say.of("pathId", { id: path.id }),
      attributes: { tabindex: -1, id: "path-record" },
    }),
    facts([
      [say.of("name"), path.name],
      [say.of("pathType"), typeName(context, path.type)],
      [say.of("accessibility"), levelOf(context, path.type)],
      [say.of("direction"), say.of(directions[path.direction] ?? "bothDirections")],
      [say.of("mapAndFloor"), String(path.map)],
    ]),
    h("ul", { class: "neighbours is-row" }, ...waypoints),
  );
}
