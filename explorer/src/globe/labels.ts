// The names of buildings and venues in the overview. What would lie on another name is left out, of
// the smaller building, until one looks closer.
import type { Context } from "../panel/Context.js";
import { s } from "../picture/svg.js";
import { nameIn } from "../venue/names.js";
import type { Placed } from "./ground.js";
import { boxAround, cornersOf, seen, type Box, type Sight } from "./sight.js";

// Lower buildings have their names on them.
const smallest = 90;
const lineHeight = 20;
const letterWidth = 8.5;

interface Name {
  readonly text: string;
  readonly className: string;
  // The middle of its line, from the base on.
  readonly x: number;
  readonly y: number;
}

// Below its building, or on it where there is little room around.
function ofBuilding({ texts }: Context, { building, ground }: Placed, sight: Sight): Name {
  const { left, top, width, height } = seen(sight, ground);
  const isSmall = height < smallest;
  return {
    text: nameIn(texts().language, building.names),
    className: isSmall ? "overview-name is-small" : "overview-name",
    x: left + width / 2,
    y: isSmall ? top + height / 2 + 4 : top + height + 19,
  };
}

// Each above its buildings, where there are several.
function ofVenues({ texts }: Context, placed: readonly Placed[], sight: Sight): Name[] {
  const ids = [...new Set(placed.map(({ building }) => building.venue))];
  if (ids.length < 2) return [];
  return ids.map((id) => {
    const own = placed.filter(({ building }) => building.venue === id);
    const { left, top, width } = boxAround(own.flatMap(({ ground }) => cornersOf(seen(sight, ground))));
    return {
      text: nameIn(texts().language, own[0]!.building.venueNames),
      className: "overview-venue",
      x: left + width / 2,
      y: top - 12,
    };
  });
}

function boxOf({ text, x, y }: Name): Box {
  const width = text.length * letterWidth;
  return { left: x - width / 2, top: y - lineHeight, width, height: lineHeight };
}

function overlap(a: Box, b: Box): boolean {
  const isApart =
    a.left > b.left + b.width ||
    b.left > a.left + a.width ||
    a.top > b.top + b.height ||
    b.top > a.top + a.height;
  return !isApart;
}

export function namesOver(context: Context, placed: readonly Placed[], sight: Sight): SVGTextElement[] {
  const area = ({ ground }: Placed) => ground.width * ground.height;
  const largestFirst = [...placed].sort((a, b) => area(b) - area(a));
  const all = [
    ...ofVenues(context, placed, sight),
    ...largestFirst.map((each) => ofBuilding(context, each, sight)),
  ];
  const shown: Name[] = [];
  for (const name of all) {
    if (!shown.some((each) => overlap(boxOf(each), boxOf(name)))) shown.push(name);
  }
  return shown.map(({ text, className, x, y }) => s("text", { class: className, x, y }, text));
}
