/** The same as ./index.js in a worker: every function gives a promise. */
import {
  Alternatives,
  AlternativesRequest,
  Directions,
  DirectionsRequest,
  DocumentContents,
  HubOptions,
  ListedVenue,
  Matrix,
  MatrixRequest,
  NearestByWalk,
  NearestByWalkRequest,
  NearestOnMap,
  NearestOnMapRequest,
  Place,
  PlacesRequest,
  ReachRequest,
  Reached,
  RouteRequest,
  Segment,
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
  alternatives(request: AlternativesRequest): Promise<Alternatives>;
  directions(request: DirectionsRequest): Promise<Directions>;
  tour(request: TourRequest): Promise<Tour>;
  nearest(request: NearestOnMapRequest): Promise<NearestOnMap>;
  nearest(request: NearestByWalkRequest): Promise<NearestByWalk>;
  matrix(request: MatrixRequest): Promise<Matrix>;
  reach(request: ReachRequest): Promise<Reached[]>;
  places(request?: string | PlacesRequest): Promise<Place[]>;
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
  fetch(base: string | URL, options?: { venues?: number[] }): Promise<RemoteVenue>;
  hub(options: HubOptions): Promise<RemoteHub>;
  memoryBytes(): Promise<number>;
  /** Ends the worker, and with it all that was opened in it. */
  close(): Promise<void>;
}

export function startWorker(options?: WorkerOptions): Promise<WorkerTern>;
