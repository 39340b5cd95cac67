// What fingers, a mouse and keys do to a picture: they move it and zoom it.
import type { Point } from "../venue/Venue.js";

export interface Moves {
  // By pixels.
  readonly by: (way: Point) => void;
  // What stands at a point of the window stays there; without one, what is in the middle.
  readonly zoom: (factor: number, at: Point | null) => void;
}

// A press that goes no farther is a click.
const leastDrag = 6;
const keyWay = 80;
const keyZoom = 1.5;
// Of a notch of a wheel, which is a hundred pixels.
const wheelZoom = 1.2;
const pixelsOfLine = 16;

const ways: Readonly<Record<string, Point>> = {
  ArrowLeft: [keyWay, 0],
  ArrowRight: [-keyWay, 0],
  ArrowUp: [0, keyWay],
  ArrowDown: [0, -keyWay],
};
const zooms: Readonly<Record<string, number>> = { "+": keyZoom, "=": keyZoom, "-": 1 / keyZoom };

const pointOf = ({ clientX, clientY }: MouseEvent): Point => [clientX, clientY];

function middleOf(points: readonly Point[]): Point {
  const sum = points.reduce<Point>(([x, y], at) => [x + at[0], y + at[1]], [0, 0]);
  return [sum[0] / points.length, sum[1] / points.length];
}

// How far two fingers are apart; one is no distance from itself.
function spreadOf([a, b]: readonly Point[]): number {
  return a === undefined || b === undefined ? 0 : Math.hypot(a[0] - b[0], a[1] - b[1]);
}

class Pointers {
  #element: HTMLElement;
  #moves: Moves;
  #down = new Map<number, Point>();
  #isDrag = false;
  #begin: Point = [0, 0];

  constructor(element: HTMLElement, moves: Moves) {
    this.#element = element;
    this.#moves = moves;
    element.addEventListener("pointerdown", (event) => this.#pressed(event));
    element.addEventListener("pointermove", (event) => this.#moved(event));
    for (const end of ["pointerup", "pointercancel"] as const) {
      element.addEventListener(end, ({ pointerId }) => this.#down.delete(pointerId));
    }
    element.addEventListener("click", (event) => this.#clicked(event), { capture: true });
  }

  #pressed(event: PointerEvent): void {
    if (event.button !== 0) return;
    if (this.#down.size === 0) {
      this.#isDrag = false;
      this.#begin = pointOf(event);
    }
    if (this.#down.size < 2) this.#down.set(event.pointerId, pointOf(event));
  }

  #moved(event: PointerEvent): void {
    if (!this.#down.has(event.pointerId)) return;
    const before = [...this.#down.values()];
    const isTwo = before.length > 1;
    const way = spreadOf([this.#begin, pointOf(event)]);
    if (!this.#isDrag && !isTwo && way < leastDrag) return;
    if (!this.#isDrag) this.#element.setPointerCapture(event.pointerId);
    this.#isDrag = true;
    this.#down.set(event.pointerId, pointOf(event));
    const after = [...this.#down.values()];
    const [from, to] = [middleOf(before), middleOf(after)];
    this.#moves.by([to[0] - from[0], to[1] - from[1]]);
    if (isTwo) this.#moves.zoom(spreadOf(after) / Math.max(1, spreadOf(before)), to);
  }

  // What ends a drag opens nothing.
  #clicked(event: Event): void {
    if (!this.#isDrag) return;
    this.#isDrag = false;
    event.stopPropagation();
  }
}

function wheelTurned(event: WheelEvent, { zoom }: Moves): void {
  event.preventDefault();
  const pixels = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? event.deltaY * pixelsOfLine : event.deltaY;
  zoom(wheelZoom ** (-pixels / 100), pointOf(event));
}

function keyPressed(event: KeyboardEvent, { by, zoom }: Moves): void {
  if (event.ctrlKey || event.metaKey || event.altKey) return;
  const [way, factor] = [ways[event.key], zooms[event.key]];
  if (way !== undefined) by(way);
  else if (factor !== undefined) zoom(factor, null);
  else return;
  event.preventDefault();
}

export function followGestures(element: HTMLElement, moves: Moves): void {
  new Pointers(element, moves);
  element.addEventListener("wheel", (event) => wheelTurned(event, moves), { passive: false });
  element.addEventListener("keydown", (event) => keyPressed(event, moves));
}
