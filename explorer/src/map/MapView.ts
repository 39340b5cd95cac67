// The map: a floor, what stands on it and the way over it, moved by touch, wheel and keys.
import OlMap from "ol/Map.js";
import View from "ol/View.js";
import { easeOut } from "ol/easing.js";
import { boundingExtent, buffer, type Extent } from "ol/extent.js";
import { defaults as defaultInteractions } from "ol/interaction/defaults.js";
import Projection from "ol/proj/Projection.js";
import type MapBrowserEvent from "ol/MapBrowserEvent.js";
import type { Sign } from "../venue/signs.js";
import type { Floor, Point } from "../venue/Venue.js";
import type { Stretch } from "../venue/walked.js";
import type Layer from "ol/layer/Layer.js";
import { mapColours, type MapColours } from "./colours.js";
import type { FloorImage } from "./FloorImage.js";
import { FloorLayer } from "./FloorLayer.js";
import { fitted, type Padding } from "./frame.js";
import { ClosedLayer } from "./closed.js";
import { ReachLayer } from "./reach.js";
import { SignLayer } from "./signs.js";
import { SpotLayer } from "./spot.js";
import { touched, type Target } from "./touch.js";
import { WayLayer, type Passage, type ShownWay } from "./ways.js";

export interface Tap {
  readonly at: Point;
  readonly sign: Sign | null;
  readonly passage: Passage | null;
  // How far in map units a finger reaches.
  readonly reach: number;
}

export interface MapEvents {
  readonly tapped: (tap: Tap) => void;
  readonly turned: (radians: number) => void;
}

const fingertip = 14;
// What pins and names need around the points that they stand at.
const air = { up: 52, across: 56, down: 36 };
const flight = 450;
// How close one may look: so many pixels are a map unit, or a metre where there is a scale.
const closest = { unit: 8, metre: 90 };

const reducesMotion = matchMedia("(prefers-reduced-motion: reduce)");
const duration = () => (reducesMotion.matches ? 0 : flight);

function closestResolution(floor: Floor): number {
  return floor.mmPerUnit === null ? 1 / closest.unit : 1000 / floor.mmPerUnit / closest.metre;
}

export class MapView {
  #floor = new FloorLayer();
  #signs = new SignLayer();
  #closed = new ClosedLayer();
  #reach = new ReachLayer();
  #ways = new WayLayer();
  #spot = new SpotLayer();
  #map: OlMap;
  #padding: Padding;
  #target: HTMLElement;
  #colours = mapColours();
  #turned: MapEvents["turned"];
  #showAgain: (() => void) | null = null;

  constructor(target: HTMLElement, padding: Padding, events: MapEvents) {
    this.#target = target;
    this.#padding = padding;
    this.#map = new OlMap({
      target,
      controls: [],
      layers: [
        this.#floor,
        this.#reach.layer,
        this.#signs.layer,
        this.#closed.layer,
        this.#ways.layer,
        this.#spot.layer,
      ],
      // A tap is answered at once, and not only when no second one has followed it.
      interactions: defaultInteractions({ zoomDuration: 200, doubleClickZoom: false }),
    });
    this.#map.on("click", (event) => events.tapped(this.#tapOf(event)));
    this.#map.on("pointerdrag", () => (this.#showAgain = null));
    target.addEventListener("wheel", () => (this.#showAgain = null), { passive: true });
    this.#map.on("pointermove", (event) => this.#showWhetherTappable(event));
    target.addEventListener("keydown", (event) => this.#turnByKey(event));
    this.#turned = events.turned;
  }

  // All of the floor is shown, unless another one of the building is there already.
  showFloor(image: FloorImage): void {
    const before = this.#floor.image?.signed.floor;
    const { floor } = image.signed;
    this.#target.style.backgroundColor = image.ground;
    this.#floor.show(image);
    this.#spot.clear();
    if (before !== undefined && String(before.frame) === String(floor.frame)) {
      if (before.building.id !== floor.building.id) this.showAll();
      return;
    }
    const [x, y, width, height] = floor.frame;
    const extent: Extent = [x, -y - height, x + width, -y];
    const place = fitted(floor.home, this.#size(), this.#padding);
    const whole = fitted(floor.frame, this.#size(), this.#padding).resolution;
    const view = new View({
      projection: new Projection({ code: `floor-${floor.map}`, units: "pixels", extent }),
      center: [place.center[0], -place.center[1]],
      resolution: place.resolution,
      maxResolution: whole * 1.5,
      minResolution: Math.min(closestResolution(floor), place.resolution / 4),
      extent: buffer(extent, Math.max(width, height) / 2),
      constrainOnlyCenter: true,
      showFullExtent: true,
      smoothExtentConstraint: true,
    });
    view.on("change:rotation", () => this.#turned(view.getRotation()));
    this.#map.setView(view);
    this.#turned(0);
    this.#showAgain = () => this.showAll();
  }

  get image(): FloorImage | null {
    return this.#floor.image;
  }

  // What the panel covers has changed: what was to be seen is shown beside it again, unless somebody
  // has moved the map since.
  setPadding(padding: Padding): void {
    const names = ["top", "right", "bottom", "left"] as const;
    if (names.every((name) => this.#padding[name] === padding[name])) return;
    this.#padding = padding;
    this.#showAgain?.();
  }

  themeChanged(): void {
    this.#colours = mapColours();
  }

  showSigns(signs: readonly Sign[], hidden: (sign: Sign) => boolean, language: string): void {
    this.#signs.show(signs, hidden, language, this.#colours);
  }

  // Of movers that are out of order.
  showClosed(signs: readonly Sign[]): void {
    this.#closed.show(signs, this.#colours);
  }

  showReach(stretches: readonly Stretch[]): void {
    this.#reach.show(stretches, this.#colours);
  }

  showWay(way: ShownWay): void {
    this.#ways.show(way, this.#colours);
  }

  add(layer: Layer): void {
    this.#map.addLayer(layer);
  }

  get colours(): MapColours {
    return this.#colours;
  }

  showAll(): void {
    this.#showAgain = () => this.showAll();
    const floor = this.#floor.image?.signed.floor;
    if (floor === undefined) return;
    const place = fitted(floor.home, this.#size(), this.#padding);
    const center = [place.center[0], -place.center[1]];
    this.#animate({ center, resolution: place.resolution, rotation: 0 });
  }

  // So that all of the points are seen, and not closer than that is calm.
  showPoints(points: readonly Point[]): void {
    this.#spot.clear();
    if (points.length === 0) return;
    this.#showAgain = () => this.showPoints(points);
    const { top, right, bottom, left } = this.#padding;
    this.#map.getView().fit(boundingExtent(points.map(([x, y]) => [x, -y])), {
      size: this.#map.getSize()!,
      padding: [top + air.up, right + air.across, bottom + air.down, left + air.across],
      minResolution: this.#calmResolution(),
      duration: duration(),
      easing: easeOut,
    });
  }

  // The point, ringed, in the middle of what is free, at the nearness that is there or a calm one.
  flyTo([x, y]: Point): void {
    this.#showAgain = () => this.flyTo([x, y]);
    this.#spot.show([x, y], this.#colours);
    const view = this.#map.getView();
    const resolution = Math.min(view.getResolution() ?? 1, this.#calmResolution());
    const { top, right, bottom, left } = this.#padding;
    const across = ((right - left) / 2) * resolution;
    const down = ((bottom - top) / 2) * resolution;
    const [sin, cos] = [Math.sin(view.getRotation()), Math.cos(view.getRotation())];
    const center = [x + across * cos + down * sin, -(y + down * cos - across * sin)];
    this.#animate({ center, resolution });
  }

  // The point in the middle of what is free.
  middle(): Point {
    const { top, right, bottom, left } = this.#padding;
    const { width, height } = this.#size();
    const [x = 0, y = 0] = this.#map.getCoordinateFromPixel([
      (left + width - right) / 2,
      (top + height - bottom) / 2,
    ]);
    return [x, -y];
  }

  zoomBy(factor: number): void {
    this.#showAgain = null;
    const view = this.#map.getView();
    this.#animate({ resolution: view.getConstrainedResolution(view.getResolution()! / factor)! });
  }

  turnBy(radians: number): void {
    this.#showAgain = null;
    this.#animate({ rotation: this.#map.getView().getRotation() + radians });
  }

  turnUpright(): void {
    this.#animate({ rotation: 0 });
  }

  // Where a point of the floor is in the window.
  pixelOf([x, y]: Point): Point | null {
    const pixel = this.#map.getPixelFromCoordinate([x, -y]);
    return pixel === null ? null : [pixel[0]!, pixel[1]!];
  }

  // Half of what makes the whole floor fit, or a view of some forty metres.
  #calmResolution(): number {
    const floor = this.#floor.image!.signed.floor;
    const whole = fitted(floor.home, this.#size(), this.#padding).resolution;
    const metres = 40;
    const shorter = Math.min(this.#size().width, this.#size().height);
    const calm = floor.mmPerUnit === null ? whole / 3 : (metres * 1000) / floor.mmPerUnit / shorter;
    return Math.min(whole, calm);
  }

  #size() {
    return { width: this.#target.clientWidth, height: this.#target.clientHeight };
  }

  #animate(to: { center?: number[]; resolution?: number; rotation?: number }): void {
    const view = this.#map.getView();
    view.cancelAnimations();
    view.animate({ ...to, duration: duration(), easing: easeOut });
  }

  #tapOf(event: MapBrowserEvent): Tap {
    const [x = 0, y = 0] = event.coordinate;
    const passage = this.#touched(event.pixel, this.#ways.targets);
    const signs = [...this.#closed.targets, ...this.#signs.targets];
    const sign = passage === null ? this.#touched(event.pixel, signs) : null;
    const reach = fingertip * (this.#map.getView().getResolution() ?? 1);
    return { at: [x, -y], sign, passage, reach };
  }

  #touched<What>([x = 0, y = 0]: number[], targets: readonly Target<What>[]): What | null {
    return touched([x, y], targets, (at) => this.pixelOf(at));
  }

  #showWhetherTappable(event: MapBrowserEvent): void {
    if (event.dragging) return;
    const { sign, passage } = this.#tapOf(event);
    this.#target.classList.toggle("is-over", passage !== null || sign !== null);
  }

  #turnByKey(event: KeyboardEvent): void {
    this.#showAgain = null;
    if (!event.shiftKey || event.target !== this.#target) return;
    const turns: Record<string, number> = { ArrowLeft: -1, ArrowRight: 1 };
    const turn = turns[event.key];
    if (turn !== undefined) {
      this.turnBy((turn * Math.PI) / 8);
      event.preventDefault();
      event.stopPropagation();
    }
  }
}
