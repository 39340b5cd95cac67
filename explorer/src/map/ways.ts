// The way on one floor, where it begins and ends, and where it goes on to another floor.
import Feature from "ol/Feature.js";
import LineString from "ol/geom/LineString.js";
import Point from "ol/geom/Point.js";
import VectorLayer from "ol/layer/Vector.js";
import VectorSource from "ol/source/Vector.js";
import { Circle, Fill, Icon, Stroke, Style, Text } from "ol/style.js";
import type { Point as MapPoint } from "../venue/Venue.js";
import type { MapColours } from "./colours.js";
import { halfOf, type Target } from "./touch.js";
import { wrapped } from "./lines.js";
import { clutter, labelFont } from "./signs.js";

// Where the way leaves the floor: to another one, by something or on foot.
export interface Passage {
  readonly at: MapPoint;
  readonly toMap: number;
  // Such as "↑ 2".
  readonly label: string;
}

export interface Mark {
  readonly kind: "start" | "stop" | "end" | "chosen";
  readonly at: MapPoint;
  readonly label: string;
  // Of a stop, where there are several.
  readonly number: number | null;
  // Whether its name stands above it, since the way leads downwards from it.
  readonly isNamedAbove: boolean;
  // Whether it stands on a sign that is seen beside it.
  readonly isOnSign: boolean;
}

export interface ShownWay {
  // Of ways that might be chosen instead.
  readonly others: readonly (readonly MapPoint[])[];
  readonly lines: readonly (readonly MapPoint[])[];
  readonly passages: readonly Passage[];
  readonly marks: readonly Mark[];
}

const passageFont = labelFont.replace("500", "700");
const passageHeight = 22;
const signHeight = 28;
// It is shown whatever else there is, and names keep away from it.
const always = "obstacle";
export const pin = "M12 31c5.5-8 10.5-12.7 10.5-19a10.5 10.5 0 1 0-21 0C1.5 18.3 6.5 23 12 31z";

function pinAddress(colour: string, border: string, number: number | null): string {
  const inside =
    number === null
      ? `<circle cx="12" cy="12" r="4.2" fill="${border}"/>`
      : `<text x="12" y="16.3" text-anchor="middle" font-family="system-ui, sans-serif"` +
        ` font-weight="700" font-size="12.5" fill="${border}">${number}</text>`;
  const text =
    `<svg xmlns="http://www.w3.org/2000/svg" width="52" height="68" viewBox="-1 -1 26 34">` +
    `<path d="${pin}" fill="${colour}" stroke="${border}" stroke-width="1.6"/>` +
    `${inside}</svg>`;
  return `data:image/svg+xml,${encodeURIComponent(text)}`;
}

function otherStyles(colours: MapColours): Style[] {
  const line = { lineCap: "round", lineJoin: "round" } as const;
  return [
    new Style({ stroke: new Stroke({ ...line, color: colours.way, width: 8 }), zIndex: -2 }),
    new Style({ stroke: new Stroke({ ...line, color: colours.other, width: 4.5 }), zIndex: -1 }),
  ];
}

function lineStyles(colours: MapColours): Style[] {
  const line = { lineCap: "round", lineJoin: "round" } as const;
  return [
    new Style({ stroke: new Stroke({ ...line, color: colours.way, width: 9 }) }),
    new Style({ stroke: new Stroke({ ...line, color: colours.accent, width: 5.5 }) }),
  ];
}

function passageStyle({ label }: Passage, colours: MapColours): Style {
  return new Style({
    text: new Text({
      text: label,
      font: passageFont,
      fill: new Fill({ color: colours.way }),
      backgroundFill: new Fill({ color: colours.accent }),
      backgroundStroke: new Stroke({ color: colours.accent, width: 5, lineJoin: "round" }),
      padding: [5, 7, 4, 8],
      offsetY: -passageHeight,
      declutterMode: always,
    }),
    image: new Circle({
      declutterMode: always,
      radius: 6,
      fill: new Fill({ color: colours.way }),
      stroke: new Stroke({ color: colours.accent, width: 3 }),
    }),
    zIndex: 3,
  });
}

// `below` and `above` are how far from its point a mark reaches.
function markText(mark: Mark, below: number, above: number, colours: MapColours): Text {
  return new Text({
    text: wrapped(mark.label),
    font: labelFont.replace("500 12.5px", "600 13.5px"),
    fill: new Fill({ color: colours.ink }),
    stroke: new Stroke({ color: colours.paper, width: 4 }),
    offsetY: mark.isNamedAbove ? -above : below,
    textBaseline: mark.isNamedAbove ? "bottom" : "top",
    declutterMode: always,
  });
}

function markStyle(mark: Mark, colours: MapColours): Style {
  const { kind, number } = mark;
  if (kind === "start") {
    return new Style({
      image: new Circle({
        declutterMode: always,
        radius: 8,
        fill: new Fill({ color: colours.start }),
        stroke: new Stroke({ color: colours.paper, width: 3.5 }),
      }),
      text: markText(mark, 14, 13, colours),
      zIndex: 4,
    });
  }
  const colour = kind === "end" ? colours.end : colours.accent;
  const lift = mark.isOnSign ? signHeight / 2 : 0;
  return new Style({
    image: new Icon({
      src: pinAddress(colour, colours.paper, number),
      width: 26,
      height: 34,
      anchor: [0.5, 0.96],
      displacement: [0, lift],
      declutterMode: always,
    }),
    text: markText(mark, 6 + lift, 36 + lift, colours),
    zIndex: 5,
  });
}

const turned = ([x, y]: MapPoint): [number, number] => [x, -y];

export class WayLayer {
  #source = new VectorSource();
  #targets: readonly Target<Passage>[] = [];
  readonly layer = new VectorLayer({
    source: this.#source,
    declutter: clutter,
    zIndex: 3,
  });

  show({ others, lines, passages, marks }: ShownWay, colours: MapColours): void {
    const features: Feature[] = [];
    for (const points of others) {
      const feature = new Feature(new LineString(points.map(turned)));
      feature.setStyle(otherStyles(colours));
      features.push(feature);
    }
    for (const points of lines) {
      const feature = new Feature(new LineString(points.map(turned)));
      feature.setStyle(lineStyles(colours));
      features.push(feature);
    }
    for (const passage of passages) {
      const feature = new Feature(new Point(turned(passage.at)));
      feature.setStyle(passageStyle(passage, colours));
      features.push(feature);
    }
    for (const mark of marks) {
      const feature = new Feature(new Point(turned(mark.at)));
      feature.setStyle(markStyle(mark, colours));
      features.push(feature);
    }
    this.#targets = passages.map((passage) => ({
      what: passage,
      at: passage.at,
      offset: [0, -passageHeight / 2],
      half: [halfOf(passage.label, passageFont)[0] + 8, passageHeight],
    }));
    this.#source.clear(true);
    this.#source.addFeatures(features);
  }

  get targets(): readonly Target<Passage>[] {
    return this.#targets;
  }
}
