// What of a floor's drawing the page says itself: names of places and symbols of amenities. They are
// taken out, and where they stood is where the page puts its own, in the reader's language.
import { folded } from "./names.js";
import type { Point } from "./Venue.js";

// Something that a drawing may hold: a place by its names, or whatever has a symbol.
export interface Drawn<Key> {
  readonly key: Key;
  readonly name: string;
  readonly symbol: string;
  // Where it is reached on this floor.
  readonly near: readonly Point[];
}

export interface Cleared<Key> {
  readonly drawing: string;
  // Where each stood, as often as it did.
  readonly at: ReadonlyMap<Key, readonly Point[]>;
}

interface Run {
  readonly begin: number;
  readonly end: number;
  readonly words: string;
  readonly at: Point;
}

interface Found<Key> {
  readonly key: Key;
  readonly at: Point;
  readonly ranges: readonly (readonly [number, number])[];
}

const mostRuns = 4;
const texts = /<text\b([^<>]*)>([^<>]*)<\/text>/g;
const entities: Readonly<Record<string, string>> = {
  "&amp;": "&", "&lt;": "<", "&gt;": ">", "&quot;": '"', "&apos;": "'", "&#39;": "'",
};

const numbers = {
  x: /(?:^|\s)x="([-\d.]+)"/,
  y: /(?:^|\s)y="([-\d.]+)"/,
  "font-size": /(?:^|\s)font-size="([-\d.]+)"/,
};

function numberIn(attributes: string, name: keyof typeof numbers): number {
  return Number(numbers[name].exec(attributes)?.[1] ?? NaN);
}

function runsOf(drawing: string, scale: number): Run[] {
  const runs: Run[] = [];
  for (const found of drawing.matchAll(texts)) {
    const [all, attributes = "", words = ""] = found;
    const height = numberIn(attributes, "font-size") || 0;
    runs.push({
      begin: found.index,
      end: found.index + all.length,
      words: folded(words.replace(/&[a-z#\d]+;/g, (each) => entities[each] ?? each)),
      at: [
        numberIn(attributes, "x") * scale,
        (numberIn(attributes, "y") - height * 0.35) * scale,
      ],
    });
  }
  return runs;
}

function middleOf(points: readonly Point[]): Point {
  const sum = points.reduce<Point>(([x, y], at) => [x + at[0], y + at[1]], [0, 0]);
  return [sum[0] / points.length, sum[1] / points.length];
}

// Names may be broken into lines, each a text of its own.
function foundNames<Key>(runs: readonly Run[], wanted: ReadonlyMap<string, Key>): Found<Key>[] {
  const all: Found<Key>[] = [];
  for (let first = 0; first < runs.length; first += 1) {
    let words = "";
    for (let last = first; last < Math.min(first + mostRuns, runs.length); last += 1) {
      words = words === "" ? runs[last]!.words : `${words} ${runs[last]!.words}`;
      const key = wanted.get(words);
      if (key === undefined) continue;
      const used = runs.slice(first, last + 1);
      const ranges = used.map(({ begin, end }) => [begin, end] as const);
      all.push({ key, at: middleOf(used.map((run) => run.at)), ranges });
      first = last;
      break;
    }
  }
  return all;
}

const symbolPath = /<path\b[^>]*\bd="M([-\d.]+) ([-\d.]+)(m[^"]{8,})"/;
const ending = /<path d="M([-\d.]+) ([-\d.]+)$/;
const plate = /<rect\b[^<>]*\/>$/;

// A symbol is drawn by its path, moved; a plate behind it goes with it.
function foundSymbols<Key>(
  drawing: string,
  { key, symbol }: Drawn<Key>,
  scale: number,
): Found<Key>[] {
  const [, x = "", y = "", tail = ""] = symbolPath.exec(symbol) ?? [];
  if (tail === "") return [];
  const [left, top, width, height] = symbolFrame(symbol);
  const all: Found<Key>[] = [];
  for (let at = drawing.indexOf(tail); at >= 0; at = drawing.indexOf(tail, at + 1)) {
    const before = ending.exec(drawing.slice(Math.max(0, at - 60), at));
    const close = drawing.indexOf("/>", at);
    if (before === null || close < 0) continue;
    let begin = at - before[0].length;
    begin -= plate.exec(drawing.slice(Math.max(0, begin - 120), begin))?.[0].length ?? 0;
    const middle: Point = [
      (Number(before[1]) - Number(x) + left + width / 2) * scale,
      (Number(before[2]) - Number(y) + top + height / 2) * scale,
    ];
    all.push({ key, at: middle, ranges: [[begin, close + 2]] });
  }
  return all;
}

function symbolFrame(symbol: string): readonly [number, number, number, number] {
  const box = /viewBox="([-\d.]+) ([-\d.]+) ([-\d.]+) ([-\d.]+)"/.exec(symbol)?.slice(1).map(Number);
  return (box as [number, number, number, number] | undefined) ?? [0, 0, 0, 0];
}

export function distance(a: Point, b: Point): number {
  return Math.hypot(a[0] - b[0], a[1] - b[1]);
}

// One group around all of it may scale it.
const scales = /^\s*<svg\b[^<>]*>\s*<g transform="scale\(([\d.]+)\)">/;
// Nothing is read out of a drawing that moves what it draws, but for names that stand upright.
const movesThings = /transform\s*=\s*["']\s*(?!rotate\([-\d.]+ [-\d.]+ [-\d.]+\)["'])/;

// `reach` is how far from a place's door its name or symbol may stand.
export function cleared<Key>(
  drawing: string,
  wanted: readonly Drawn<Key>[],
  reach: number,
): Cleared<Key> {
  const at = new Map<Key, Point[]>();
  const scaled = scales.exec(drawing);
  if (movesThings.test(drawing.slice(scaled?.[0].length ?? 0))) return { drawing, at };
  const scale = Number(scaled?.[1] ?? 1);
  const byKey = new Map(wanted.map((each) => [each.key, each]));
  const named = wanted.filter((each) => each.name !== "");
  const names = new Map(named.map((each) => [folded(each.name), each.key]));
  const found = [
    ...foundNames(runsOf(drawing, scale), names),
    ...wanted.flatMap((each) => (each.symbol === "" ? [] : foundSymbols(drawing, each, scale))),
  ].filter((each) => byKey.get(each.key)!.near.some((door) => distance(door, each.at) <= reach));
  for (const each of found) at.set(each.key, [...(at.get(each.key) ?? []), each.at]);
  return { drawing: without(drawing, found.flatMap((each) => each.ranges)), at };
}

function without(text: string, ranges: readonly (readonly [number, number])[]): string {
  let kept = "";
  let done = 0;
  for (const [begin, end] of [...ranges].sort((a, b) => a[0] - b[0])) {
    if (begin < done) continue;
    kept += text.slice(done, begin);
    done = end;
  }
  return kept + text.slice(done);
}
