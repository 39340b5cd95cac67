// A venue as the page shows it. Points are in map units, with y down, as the drawings have them.
import type { Placement } from "./placement.js";

export type Point = readonly [number, number];

// A name, and those that the venue gives it in other languages, by codes such as "de".
export interface Names {
  readonly name: string;
  readonly others: ReadonlyMap<string, string>;
}

export interface Category extends Names {
  readonly id: number;
}

// A waypoint, and where it lies.
export interface Spot {
  readonly waypoint: number;
  readonly map: number;
  readonly at: Point;
}

export interface Place {
  readonly kind: "destination" | "amenity";
  readonly id: number;
  readonly names: Names;
  readonly categories: readonly Category[];
  readonly description: string;
  readonly keywords: readonly string[];
  // The venue's own SVG of an amenity, which its drawings repeat; empty where there is none.
  readonly symbol: string;
  // In the order of the venue's document; empty where it cannot be reached.
  readonly spots: readonly Spot[];
}

export interface Floor {
  readonly map: number;
  readonly names: Names;
  readonly shortName: string;
  readonly level: number | null;
  readonly building: Building;
  // SVG by a stranger: only ever shown as an image. Empty where there is none.
  readonly drawing: string;
  // Left, top, width and height of what is drawn.
  readonly frame: readonly [number, number, number, number];
  // The part of the frame where one can walk, with some air: what is shown first.
  readonly home: readonly [number, number, number, number];
  // Null where the map has no scale.
  readonly mmPerUnit: number | null;
}

export interface Building {
  readonly id: number;
  readonly names: Names;
  // The venue's id and name, and where on the globe that lies.
  readonly venue: number;
  readonly venueNames: Names;
  readonly placement: Placement | null;
  // Top left and bottom right as longitude and latitude; null where they are not said.
  readonly corners: readonly [Point, Point] | null;
  // From the top, those without a level last.
  readonly floors: readonly Floor[];
  readonly firstFloor: Floor | null;
}

export interface PathType {
  readonly id: number;
  readonly names: Names;
  readonly symbol: string;
  readonly accessibility: number;
}

// A lift, an escalator, a flight of stairs: waypoints that paths of one type join.
export interface Mover {
  // The smallest id of its waypoints.
  readonly id: number;
  // What all of its paths are called, or else what its type is.
  readonly names: Names;
  readonly type: PathType;
  readonly spots: readonly Spot[];
  // The pairs of waypoints that it joins.
  readonly edges: readonly Edge[];
}

// Two waypoints, whichever way one goes.
export type Edge = readonly [number, number];

// An accessibility level that admits more than the one before it.
export interface Level {
  readonly accessibility: number;
  // The types of movers that it does not admit.
  readonly without: readonly PathType[];
}

export interface Venue {
  readonly id: number;
  readonly names: Names;
  // Null where the venue does not say where on the globe it lies.
  readonly placement: Placement | null;
  // Whether its waypoints stand in its documents as longitude and latitude, to be joined to others.
  readonly isInDegrees: boolean;
  readonly buildings: readonly Building[];
  // By their maps.
  readonly floors: ReadonlyMap<number, Floor>;
  readonly firstFloor: Floor | null;
  readonly places: readonly Place[];
  readonly waypoints: ReadonlyMap<number, Spot>;
  // Waypoints that a path leads to.
  readonly joined: ReadonlySet<number>;
  readonly pathTypes: ReadonlyMap<number, PathType>;
  // What paths on foot join, each pair once for every path.
  readonly walks: readonly Edge[];
  readonly movers: readonly Mover[];
  // In ascending order, the last of which admits everything.
  readonly levels: readonly Level[];
}
