// What of a way and of the state is drawn on one floor.
import type { FoundWay } from "./engine/CurrentWay.js";
import type { Way } from "./engine/Engine.js";
import type { Mark, Passage, ShownWay } from "./map/ways.js";
import { moverOf, nameOfEnd, placeOf, spotsOf, type Context } from "./panel/Context.js";
import type { End, State } from "./state/State.js";
import { distance } from "./venue/drawing.js";
import type { Sign } from "./venue/signs.js";
import type { Floor, Point, Venue } from "./venue/Venue.js";

const plain = { number: null, isNamedAbove: false, isOnSign: false } as const;

function arrowTo(venue: Venue, from: Floor, to: Floor | undefined): string {
  if (to === undefined) return "→";
  const rise = (to.level ?? 0) - (from.level ?? 0);
  const arrow = rise > 0 ? "↑" : rise < 0 ? "↓" : "→";
  const isElsewhere = to.building !== from.building && venue.buildings.length > 1;
  const names = to.building.venue === from.building.venue ? to.building.names : to.building.venueNames;
  return `${arrow} ${isElsewhere && rise === 0 ? names.name : to.shortName}`;
}

function passagesOn(venue: Venue, way: Way, floor: Floor): Passage[] {
  const passages: Passage[] = [];
  way.segments.forEach((segment, index) => {
    const next = way.segments[index + 1];
    const at = segment.mapPoints.at(-1);
    if (segment.mapId !== floor.map || next === undefined || at === undefined) return;
    if (next.mapId === floor.map) return;
    const label = arrowTo(venue, floor, venue.floors.get(next.mapId));
    passages.push({ at, toMap: next.mapId, label });
  });
  return passages;
}

export function linesOn(way: Way | null, map: number): Point[][] {
  const segments = way?.segments.filter((segment) => segment.mapId === map) ?? [];
  return segments.map((segment) => segment.mapPoints);
}

// How far from a mark its name reaches, as a part of the floor.
const reachOfName = 0.03;

// Whether a name below the first of the points would stand on the line that goes on from there.
function leadsDown(points: readonly Point[], { frame }: Floor): boolean {
  const [first] = points;
  if (first === undefined) return false;
  const far = points.find((at) => distance(first, at) > frame[2] * reachOfName) ?? points.at(-1)!;
  return far[1] - first[1] > Math.abs(far[0] - first[0]) / 3;
}

function pointsOf(context: Context, end: End | null, map: number): Point[] {
  if (end === null) return [];
  return spotsOf(context, end).filter((spot) => spot.map === map).map((spot) => spot.at);
}

// Where a stop is on a floor: at the end of the way to it, or without one where its place is.
function stopOn(context: Context, stop: number, end: End, found: FoundWay | null, map: number) {
  const leg = found?.legs.find((each) => each.stop === stop);
  const last = leg?.way.segments.at(-1);
  if (last === undefined) return pointsOf(context, end, map)[0];
  return last.mapId === map ? last.mapPoints.at(-1) : undefined;
}

// Whence the way comes to a stop, from that on.
function lineFrom(stop: number, found: FoundWay | null): Point[] {
  const leg = found?.legs.find((each) => each.stop === stop);
  return [...(leg?.way.segments.at(-1)?.mapPoints ?? [])].reverse();
}

function marksOn(
  context: Context,
  state: State,
  found: FoundWay | null,
  floor: Floor,
  signs: readonly Sign[],
): Mark[] {
  const marks: Mark[] = [];
  const label = (end: End) => nameOfEnd(context, end);
  const first = found?.way.segments[0];
  const onWay = first?.mapId === floor.map ? first.mapPoints[0] : undefined;
  const start = found === null ? pointsOf(context, state.from, floor.map)[0] : onWay;
  if (state.from !== null && start !== undefined) {
    const isNamedAbove = onWay !== undefined && leadsDown(first!.mapPoints, floor);
    marks.push({ ...plain, kind: "start", at: start, label: label(state.from), isNamedAbove });
  }
  const stops = state.to === null ? state.via : [...state.via, state.to];
  stops.forEach((end, stop) => {
    const at = stopOn(context, stop, end, found, floor.map);
    if (at === undefined) return;
    const number = stops.length > 1 ? stop + 1 : null;
    const kind = end === state.to ? "end" : "stop";
    const isNamedAbove = leadsDown(lineFrom(stop, found), floor);
    marks.push({ ...plain, kind, at, label: label(end), number, isNamedAbove });
  });
  if (state.place !== null) marks.push(...chosenMarks(context, state.place, floor, signs));
  return marks;
}

function chosenMarks(context: Context, end: End, floor: Floor, signs: readonly Sign[]): Mark[] {
  const meant = placeOf(context, end) ?? moverOf(context, end);
  const own = meant === null ? [] : signs.filter((sign) => (sign.place ?? sign.mover) === meant);
  const points = own.length > 0 ? own.map((sign) => sign.at) : pointsOf(context, end, floor.map);
  // Of many that are alike the name is said in the card.
  const label = points.length === 1 ? nameOfEnd(context, end) : "";
  const isOnSign = end.kind === "mover" && context.store.state.closed.includes(end.id);
  return points.map((at) => ({ ...plain, kind: "chosen", at, label, isOnSign }));
}

export function shownWay(
  context: Context,
  state: State,
  found: FoundWay | null,
  floor: Floor,
  signs: readonly Sign[],
): ShownWay {
  const others = found?.choices.filter((each) => each !== found.way) ?? [];
  return {
    others: others.flatMap((each) => linesOn(each, floor.map)),
    lines: linesOn(found?.way ?? null, floor.map),
    passages: found === null ? [] : passagesOn(context.venue, found.way, floor),
    marks: marksOn(context, state, found, floor, signs),
  };
}

// Names that a mark says already.
export function isMarked(context: Context, state: State, sign: Sign): boolean {
  if (sign.place === null) return false;
  return [state.place, state.from, ...state.via, state.to].some(
    (end) => end !== null && placeOf(context, end) === sign.place,
  );
}
