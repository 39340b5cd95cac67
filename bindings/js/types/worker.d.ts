/** The same as ./index.js in a worker: every function gives a promise. */
import {
  Alternatives,
  AlternativesRequest,
  BlockEdgeRequest,
  BlockNodeRequest,
  ClosestByRouteRequest,
  ConvertRequest,
  Directions,
  DirectionsRequest,
  DocumentContents,
  HubOptions,
  ListedVenue,
  Matrix,
  MatrixRequest,
  Nearest,
  NearestByWalk,
  NearestByWalkRequest,
  NearestOnMap,
  NearestOnMapRequest,
  NearestRequest,
  Neighbor,
  NodeRequest,
  Place,
  PlacesRequest,
  ReachRequest,
  Reached,
  RouteRequest,
  RouteToAnyRequest,
  Segment,
  Solution,
  SolveRequest,
  SpotRequest,
  TernError,
  Tour,
  TourRequest,
} from "./index.js";

export { TernError };

export class RemoteVenue {
  private constructor();
  answer(request: string): Promise<string>;
  ask(request: { op: string } & Record<string, unknown>): Promise<Record<string, unknown>>;
  batch(
    requests: Iterable<string | object> | AsyncIterable<string | object>,
  ): AsyncGenerator<string, void, undefined>;
  route(request: RouteRequest): Promise<Segment[]>;
  routeToAny(request: RouteToAnyRequest): Promise<Segment[]>;
  alternatives(request: AlternativesRequest): Promise<Alternatives>;
  directions(request: DirectionsRequest): Promise<Directions>;
  tour(request: TourRequest): Promise<Tour>;
  nearest(request: NearestRequest): Promise<Nearest>;
  nearest(request: NearestByWalkRequest): Promise<NearestByWalk>;
  nearestOnMap(request: NearestOnMapRequest): Promise<NearestOnMap>;
  closest(request: SpotRequest): Promise<number | null>;
  closestByRoute(request: ClosestByRouteRequest): Promise<number | null>;
  matrix(request: MatrixRequest): Promise<Matrix>;
  reach(request: ReachRequest): Promise<Reached[]>;
  places(request?: string | PlacesRequest): Promise<Place[]>;
  convert(request: ConvertRequest): Promise<[number | null, number | null]>;
  center(request?: { venue?: number }): Promise<[number, number]>;
  solve(request: SolveRequest): Promise<Solution>;
  neighbors(request: NodeRequest): Promise<Neighbor[]>;
  blockEdge(request: BlockEdgeRequest): Promise<void>;
  blockEntry(request: BlockNodeRequest): Promise<void>;
  blockExit(request: BlockNodeRequest): Promise<void>;
  close(): Promise<void>;
}

export class RemoteHub {
  private constructor();
  load(options?: { venues?: number[] }): Promise<RemoteVenue>;
  list(): Promise<ListedVenue[]>;
  close(): Promise<void>;
}

export interface WorkerOptions {
  wasm?: string | ArrayBuffer | ArrayBufferView | WebAssembly.Module;
  maximumBytes?: number;
}

export class WorkerTern {
  private constructor();
  readonly version: string;
  open(options: {
    documents: Record<string, DocumentContents> | Map<string, DocumentContents>;
    venues?: number[];
  }): Promise<RemoteVenue>;
  /** Rejects at once with the signal's reason when that is aborted. */
  fetch(
    base: string | URL,
    options?: { venues?: number[]; signal?: AbortSignal },
  ): Promise<RemoteVenue>;
  hub(options: HubOptions): Promise<RemoteHub>;
  memoryBytes(): Promise<number>;
  /** Ends the worker, and with it all that was opened in it. */
  close(): Promise<void>;
}

export function startWorker(options?: WorkerOptions): Promise<WorkerTern>;
