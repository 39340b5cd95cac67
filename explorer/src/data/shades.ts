// Colours that people tell apart who do not see every colour, after M. Okabe and K. Ito, Color
// Universal Design (2008); as light as they are seen on a dark floor, and as dark as on a light one.
import type { ColourBy } from "../state/State.js";
import { walking } from "../venue/movers.js";
import type { Venue } from "../venue/Venue.js";

const walked = "#2f7fc1";
const others = ["#d55e00", "#00855f", "#b8479b", "#8a6d00", "#7557c9", "#1f8fa8"];
const levels = ["#00855f", "#8a6d00", "#d55e00", "#b8479b"];

export interface Shade {
  readonly colour: string;
  // The path types that are drawn in it.
  readonly types: readonly number[];
  readonly accessibility: number;
}

// Of the path types that there are paths of; one that the venue does not describe has level 0.
export function shadesOf(venue: Venue, used: ReadonlySet<number>, by: ColourBy): Shade[] {
  const level = (type: number) => venue.pathTypes.get(type)?.accessibility ?? 0;
  const types = [...used].sort((a, b) => a - b);
  if (by === "level") {
    const all = [...new Set(types.map(level))].sort((a, b) => a - b);
    return all.map((accessibility, index) => ({
      colour: levels[Math.min(index, levels.length - 1)]!,
      types: types.filter((type) => level(type) === accessibility),
      accessibility,
    }));
  }
  const movers = types.filter((type) => type !== walking);
  return types.map((type) => ({
    colour: type === walking ? walked : others[movers.indexOf(type) % others.length]!,
    types: [type],
    accessibility: level(type),
  }));
}
