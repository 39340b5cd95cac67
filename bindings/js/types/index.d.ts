/** TernCoreKit: indoor maps and wayfinding, as WebAssembly. See docs/javascript.md. */

/** What went wrong, with the library's own codes: TN001 not reached, TN002 refused, TN003 no JSON,
 * TN006 a wrong argument, TN007 nothing found, TN008 everything else. */
export class TernError extends Error {
  constructor(code: string, message: string, description?: string, options?: { cause?: unknown });
  readonly code: string;
  readonly description: string;
}

/** A stretch of a route on one map, with sums from the route's start on. */
export interface Segment {
  mapId: number;
  /** The path type that leads on to the next segment; in the last one that of the last link. */
  mover: number | null;
  cost: number;
  pixelDistance: number;
  mmDistance: number;
  /** Ids of waypoints. */
  points: number[];
  /** Where they lie on the map. */
  mapPoints: [number, number][];
}

export type Direction =
  | "left"
  | "right"
  | "slight left"
  | "slight right"
  | "sharp left"
  | "sharp right"
  | "around";

/** A step that a person can follow. */
export interface Step {
  kind: "depart" | "turn" | "mover" | "crossing" | "arrive";
  direction: Direction | null;
  mapId: number;
  /** The waypoint where it begins. */
  at: number;
  mm: number;
  seconds: number;
  /** The path type of a lift, stairs or the like; null on foot. */
  mover: number | null;
  /** Where a mover or a crossing leads. */
  toMapId: number | null;
  landmark: { kind: "destination"; id: number } | null;
  text: string;
}

/** A destination or an amenity by its name. */
export interface Place {
  kind: "destination" | "amenity";
  id: number;
  name: string;
  mapIds: number[];
  waypoints: number[];
}

/** What is looked for. */
export interface Wanted {
  destination?: number;
  amenity?: number;
  pathType?: number;
}

/** Several that are looked for, of one kind or of more. */
export interface WantedLists {
  destinations?: number[];
  amenities?: number[];
  pathTypes?: number[];
}

export interface Element {
  kind: "destination" | "amenity" | "pathType";
  id: number;
}

/** Why there is no answer, with the library's own codes. */
export interface AnsweredError {
  code: string;
  message: string;
  description: string;
}

/** With several venues every request but a route names its `venue`. */
export interface Request {
  venue?: number;
  accessibility?: number;
}

export interface RouteRequest extends Request {
  from: number;
  to: number;
}

export interface RouteToAnyRequest extends Request {
  from: number;
  to: number[];
}

export interface AlternativesRequest extends RouteRequest {
  /** Such as { optimalPathMatchRatio: 0.6 }. */
  options?: Record<string, number> | null;
}

export interface DirectionsRequest extends RouteRequest {
  /** Such as "de"; left out: "en". */
  language?: string;
}

export interface TourRequest extends Request {
  from: number;
  destinations: number[];
}

/** A point on a map, in its own units. */
export interface SpotRequest {
  venue?: number;
  map: number;
  at: [number, number];
}

export interface NearestRequest extends SpotRequest, Wanted {}

export interface NearestOnMapRequest extends Request, WantedLists {
  from: number;
  toMap: number;
}

export interface NearestByWalkRequest extends Request, Wanted, WantedLists {
  from: number;
}

export interface ClosestByRouteRequest extends Request {
  candidates: number[];
  to: number;
}

export interface MatrixRequest extends Request {
  from: number[];
  to: number[];
}

export interface ReachRequest extends Request {
  /** One waypoint or several. */
  from: number | number[];
  metres?: number;
  cost?: number;
}

export interface PlacesRequest {
  text?: string;
  venue?: number;
}

/** Degrees of longitude and latitude, metres of the spherical Mercator projection, or pixels of the
 * venue's first map. */
export type Projection = "EPSG:4326" | "EPSG:3857" | "tern:local";

export interface ConvertRequest {
  venue?: number;
  point: [number, number];
  from: Projection;
  to: Projection;
}

export interface SolveRequest {
  venue?: number;
  /** A square of costs. */
  matrix: number[][];
}

/** The ways out of a waypoint, or into it. */
export interface NodeRequest {
  venue?: number;
  node: number;
}

export interface BlockNodeRequest extends NodeRequest {
  blocked: boolean;
}

/** The way from one waypoint to the next, but not that back. */
export interface BlockEdgeRequest {
  venue?: number;
  from: number;
  to: number;
  blocked: boolean;
}

export interface Alternatives {
  optimal: Segment[] | null;
  alternatives: Segment[][] | null;
}

export interface Directions {
  route: Segment[];
  steps: Step[];
  mm: number;
  seconds: number;
}

export interface Tour {
  legs: Segment[][];
  destinations: number[];
}

export interface Nearest {
  waypoint: number | null;
  element: Element | null;
  /** Waypoints where floors are changed. */
  connectors: number[];
  error: AnsweredError | null;
}

export interface NearestOnMap {
  waypoint: number | null;
  totalDistance: number | null;
  /** Waypoints where floors are changed. */
  connectors: number[];
  error: AnsweredError | null;
}

export interface NearestByWalk {
  waypoint: number | null;
  element: Element | null;
  route: Segment[];
  /** Only where the venue does not have what is looked for. */
  error?: AnsweredError;
}

/** Row by row: the way from `from[i]` to `to[j]` is at `i * columns + j`; Infinity: there is none. */
export interface Matrix {
  rows: number;
  columns: number;
  costs: Float64Array;
  mmDistances: Float64Array;
}

export interface Reached {
  waypoint: number;
  cost: number;
  mm: number;
}

/** The order in which to visit the rows of a matrix. */
export interface Solution {
  tour: number[];
  cost: number;
}

/** A link of the graph. */
export interface Neighbor {
  /** The waypoint that it leads to. */
  id: number;
  cost: number;
  distance: number;
  accessibility: number;
  edge: number;
  pathType: number;
}

/** A document's contents: text, bytes, or an object that JSON can say. */
export type DocumentContents = string | ArrayBuffer | ArrayBufferView | object;

/** Documents by their paths, such as "venue/1/full.json"; a function gives undefined for none. */
export type Documents =
  | Record<string, DocumentContents>
  | Map<string, DocumentContents>
  | ((path: string) => DocumentContents | null | undefined);

export interface OpenOptions {
  documents: Documents;
  /** Ids; several are joined by their exits. Left out: the only one. */
  venues?: number[];
}

export interface FetchOptions {
  venues?: number[];
  signal?: AbortSignal;
  fetch?: typeof fetch;
}

/** The documents below an address, by their paths, as `open` takes them: of the venues, or of the
 * only one. Those that are not there are left out; the library says which it needs. */
export function fetchDocuments(
  base: string | URL,
  options?: FetchOptions,
): Promise<Map<string, Uint8Array>>;

/** A loaded venue, or several that are joined. It is closed when it is collected; closing sooner
 * frees its memory sooner. */
export class Venue {
  private constructor();

  /** Opens a venue in the library that the functions of this module share. */
  static open(options: OpenOptions): Promise<Venue>;
  /** The same of documents below an address. */
  static fetch(base: string | URL, options?: FetchOptions): Promise<Venue>;

  /** The answer's text to a request's text, byte for byte that of `tern batch`; errors are answers. */
  answer(request: string): string;
  /** The answer to any request; an error is thrown. */
  ask(request: { op: string } & Record<string, unknown>): Record<string, unknown>;
  /** The texts of the answers, in order, as the requests come. */
  batch(
    requests: Iterable<string | object> | AsyncIterable<string | object>,
  ): AsyncGenerator<string, void, undefined>;

  /** Empty when there is no way. */
  route(request: RouteRequest): Segment[];
  /** To whichever is the cheapest to reach. */
  routeToAny(request: RouteToAnyRequest): Segment[];
  alternatives(request: AlternativesRequest): Alternatives;
  directions(request: DirectionsRequest): Directions;
  tour(request: TourRequest): Tour;
  /** In straight lines, floor by floor. */
  nearest(request: NearestRequest): Nearest;
  /** By walk: what is the cheapest to reach. */
  nearest(request: NearestByWalkRequest): NearestByWalk;
  nearestOnMap(request: NearestOnMapRequest): NearestOnMap;
  /** The waypoint closest to a point; null on a map without any. */
  closest(request: SpotRequest): number | null;
  /** Of the candidates the one with the shortest way. */
  closestByRoute(request: ClosestByRouteRequest): number | null;
  matrix(request: MatrixRequest): Matrix;
  reach(request: ReachRequest): Reached[];
  /** The best first; all of them without a text. */
  places(request?: string | PlacesRequest): Place[];
  /** A coordinate that is not finite is null. */
  convert(request: ConvertRequest): [number | null, number | null];
  /** The middle of the venue in degrees: longitude, latitude. */
  center(request?: { venue?: number }): [number, number];
  solve(request: SolveRequest): Solution;
  neighbors(request: NodeRequest): Neighbor[];

  /** Closes a way, or opens it again. A block holds for all that is asked of this venue later. */
  blockEdge(request: BlockEdgeRequest): void;
  /** The same for the ways into a waypoint from those that it has links to. */
  blockEntry(request: BlockNodeRequest): void;
  /** The same for the ways out of a waypoint. */
  blockExit(request: BlockNodeRequest): void;

  /** Closing twice means nothing; what is asked afterwards is a TernError. */
  close(): void;
}

export interface HubOptions {
  /** Scheme and host, "https://maps.example.com". */
  host: string;
  customerId: number;
  /** The credentials, which go to that host only. All hubs of one `load` share the last ones. */
  clientId: string;
  clientSecret: string;
  locale?: string;
  geoJSON?: boolean;
  /** False: what is kept is used without asking the service. */
  autoReloadCache?: boolean;
}

export interface ListedVenue {
  id: number;
  externalId: string;
  name: string;
}

/** A mapping service, and what is kept of its answers. */
export class Hub {
  private constructor();

  static open(options: HubOptions): Promise<Hub>;

  /** Loads venues, which are joined when they are several; left out: the only one. */
  load(options?: { venues?: number[] }): Promise<Venue>;
  list(): Promise<ListedVenue[]>;
  /** What is under way ends with an error; venues that were loaded stay. */
  close(): void;
}

/** Where a hub keeps what it loads. Each function answers at once: what lies in IndexedDB is read
 * beforehand. `write` and `remove` say by false that they could not. */
export interface Files {
  read(path: string): Uint8Array | string | null | undefined;
  write(path: string, bytes: Uint8Array): boolean | void;
  remove(path: string): boolean | void;
  list(prefix: string): Iterable<string>;
}

/** Files that are kept as long as the library is. */
export class FilesInMemory implements Files {
  read(path: string): Uint8Array | undefined;
  write(path: string, bytes: Uint8Array): void;
  remove(path: string): boolean;
  list(prefix: string): string[];
}

export type Wasm = string | URL | Response | BufferSource | WebAssembly.Module;

export interface LoadOptions {
  /** Where terncorekit.wasm is, or what it holds; left out: beside this package. */
  wasm?: Wasm | Promise<Wasm>;
  /** What the library's memory may grow to, 4 MiB at least; left out: 4 GiB. */
  maximumBytes?: number;
  /** For hubs and documents; left out: the global one. */
  fetch?: typeof fetch;
  /** Left out: in memory. */
  files?: Files;
  /** Takes lines that tell of broken documents; left out: nobody does. */
  log?: (line: string) => void;
}

/** The library, with a memory and a state of its own. */
export class Tern {
  private constructor();

  static load(options?: LoadOptions): Promise<Tern>;
  readonly version: string;
  /** What the library's memory has grown to. */
  readonly memoryBytes: number;

  open(options: OpenOptions): Venue;
  fetch(base: string | URL, options?: FetchOptions): Promise<Venue>;
  hub(options: HubOptions): Hub;
}

export function load(options?: LoadOptions): Promise<Tern>;
