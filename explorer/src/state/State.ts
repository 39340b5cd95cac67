// What the page shows, as plain values: everything that an address can say.

// One end of a way: a place of the venue, a waypoint, a mover, or any mover of a path type.
export interface End {
  readonly kind: "destination" | "amenity" | "waypoint" | "mover" | "pathType";
  readonly id: number;
}

export type ColourBy = "type" | "level";

export interface State {
  // Null: the venue that comes first.
  readonly venue: number | null;
  // The map of the floor; null: where the venue begins.
  readonly map: number | null;
  // The place whose card is open.
  readonly place: End | null;
  readonly from: End | null;
  readonly via: readonly End[];
  readonly to: End | null;
  // Which of several ways to the goal is shown; 0 is the best one.
  readonly way: number;
  // The accessibility level; null: everything may be taken.
  readonly level: number | null;
  // Movers that are out of order, by their ids.
  readonly closed: readonly number[];
  // Whether all buildings are shown from above.
  readonly isOverview: boolean;
  // By what the ways of the data are coloured; null: they are not shown.
  readonly data: ColourBy | null;
  // The path of the data that is chosen.
  readonly path: number | null;
  // The category whose places are listed; null: all places are.
  readonly category: number | null;
  // In how many minutes it is shown how far one gets from the start.
  readonly reach: number | null;
  // Null: as the browser wants it.
  readonly language: string | null;
}

// What may be asked for.
export const reachMinutes: readonly number[] = [2, 5, 10];

export const emptyState: State = {
  venue: null,
  map: null,
  place: null,
  from: null,
  via: [],
  to: null,
  way: 0,
  level: null,
  closed: [],
  isOverview: false,
  data: null,
  path: null,
  category: null,
  reach: null,
  language: null,
};

export function isSameEnd(a: End | null, b: End | null): boolean {
  return a === b || (a !== null && b !== null && a.kind === b.kind && a.id === b.id);
}
