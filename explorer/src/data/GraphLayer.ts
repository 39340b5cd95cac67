// The waypoints and ways of a floor, and rings where a check found something.
import Feature from "ol/Feature.js";
import LineString from "ol/geom/LineString.js";
import Point from "ol/geom/Point.js";
import VectorLayer from "ol/layer/Vector.js";
import VectorSource from "ol/source/Vector.js";
import { Circle, Fill, Stroke, Style, Text } from "ol/style.js";
import type { MapColours } from "../map/colours.js";
import { clutter } from "../map/signs.js";
import type { Floor, Point as MapPoint, Venue } from "../venue/Venue.js";
import { arrowOf } from "./arrows.js";
import type { Graph } from "./graph.js";
import type { Shade } from "./shades.js";

export interface ShownGraph {
  readonly venue: Venue;
  readonly graph: Graph;
  readonly floor: Floor;
  readonly shades: readonly Shade[];
  // The path that is chosen.
  readonly path: number | null;
  // Waypoints where something was found.
  readonly found: ReadonlySet<number>;
  readonly colours: MapColours;
}

const font = '600 11px "Inter", system-ui, sans-serif';
const turned = ([x, y]: MapPoint): [number, number] => [x, -y];

class Styles {
  #lines = new Map<string, Style[]>();
  #colourOf = new Map<number, string>();
  #colours: MapColours;

  constructor({ shades, colours }: ShownGraph) {
    this.#colours = colours;
    for (const { colour, types } of shades) for (const type of types) this.#colourOf.set(type, colour);
  }

  #colour(type: number): string {
    return this.#colourOf.get(type) ?? this.#colours.quiet;
  }

  line(type: number, isChosen: boolean): Style[] {
    const key = `${type} ${isChosen}`;
    const width = isChosen ? 6 : 2.5;
    const around = new Stroke({ lineCap: "round", color: this.#colours.paper, width: width + 2 });
    const own = new Stroke({ lineCap: "round", color: this.#colour(type), width });
    const made = this.#lines.get(key) ?? [new Style({ stroke: around }), new Style({ stroke: own })];
    this.#lines.set(key, made);
    return made;
  }

  // A dot alone is all that there is room for from afar.
  dot(id: number | null): Style {
    return new Style({
      image: new Circle({
        radius: id === null ? 2.5 : 4,
        fill: new Fill({ color: this.#colours.paper }),
        stroke: new Stroke({ color: this.#colours.ink, width: 1.5 }),
        declutterMode: "none",
      }),
      text: new Text({
        text: id === null ? "" : String(id),
        font,
        offsetY: 18,
        fill: new Fill({ color: this.#colours.ink }),
        stroke: new Stroke({ color: this.#colours.paper, width: 3 }),
      }),
      zIndex: 1,
    });
  }

  ring(isNear: boolean): Style {
    return new Style({
      image: new Circle({
        radius: isNear ? 10 : 6,
        stroke: new Stroke({ color: this.#colours.end, width: isNear ? 3.5 : 2.5 }),
        declutterMode: "none",
      }),
      zIndex: 3,
    });
  }

  arrow(text: string, type: number, index: number): Style {
    return new Style({
      text: new Text({
        text,
        font,
        offsetY: -16 - index * 19,
        declutterMode: "none",
        fill: new Fill({ color: "#ffffff" }),
        backgroundFill: new Fill({ color: this.#colour(type) }),
        backgroundStroke: new Stroke({ color: this.#colour(type), width: 3, lineJoin: "round" }),
        padding: [1, 3, 0, 4],
      }),
      zIndex: 2,
    });
  }
}

function lineFeatures({ venue, graph, floor, path }: ShownGraph, styles: Styles): Feature[] {
  const features: Feature[] = [];
  for (const link of graph.links) {
    const [from, to] = link.ends.map((id) => venue.waypoints.get(id)!);
    if (from!.map !== floor.map || to!.map !== floor.map) continue;
    const feature = new Feature(new LineString([turned(from!.at), turned(to!.at)]));
    feature.setStyle(styles.line(link.path.type, link.path.id === path));
    feature.set("path", link.path.id, true);
    features.push(feature);
  }
  return features;
}

// From where on ids and arrows can be read: so many pixels are a metre, or so many the floor.
const near = { metre: 9, floor: 1500 };

function nearResolution({ frame, mmPerUnit }: Floor): number {
  return mmPerUnit === null ? frame[2] / near.floor : 1000 / mmPerUnit / near.metre;
}

function dotFeatures({ venue, graph, floor, found }: ShownGraph, styles: Styles): Feature[] {
  const features: Feature[] = [];
  const limit = nearResolution(floor);
  for (const spot of venue.waypoints.values()) {
    if (spot.map !== floor.map) continue;
    const away = (graph.neighbours.get(spot.waypoint) ?? []).filter(
      (each) => venue.waypoints.get(each.waypoint)?.map !== floor.map,
    );
    const types = [...new Set(away.map((each) => each.path.type))];
    const arrows = types.map((type, index) => {
      const own = away.filter((each) => each.path.type === type);
      return styles.arrow(own.map((each) => arrowOf(venue, floor, each)).join("  "), type, index);
    });
    const ring = (isNear: boolean) => (found.has(spot.waypoint) ? [styles.ring(isNear)] : []);
    const close = [...ring(true), ...arrows, styles.dot(spot.waypoint)];
    const far = [...ring(false), styles.dot(null)];
    const feature = new Feature(new Point(turned(spot.at)));
    feature.setStyle((_, resolution) => (resolution <= limit ? close : far));
    feature.set("waypoint", spot.waypoint, true);
    features.push(feature);
  }
  return features;
}

export class GraphLayer {
  #source = new VectorSource();
  readonly layer = new VectorLayer({ source: this.#source, declutter: clutter, zIndex: 1 });

  clear(): void {
    this.#source.clear();
  }

  show(shown: ShownGraph): void {
    const styles = new Styles(shown);
    this.#source.clear(true);
    this.#source.addFeatures([...lineFeatures(shown, styles), ...dotFeatures(shown, styles)]);
  }
}
