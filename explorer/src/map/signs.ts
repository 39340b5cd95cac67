// Names and symbols on the map. What would lie on one another is left out until one looks closer.
import Feature from "ol/Feature.js";
import Point from "ol/geom/Point.js";
import VectorLayer from "ol/layer/Vector.js";
import VectorSource from "ol/source/Vector.js";
import { Fill, Icon, Stroke, Style, Text } from "ol/style.js";
import { plateAddress, symbolFor } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import type { Sign } from "../venue/signs.js";
import type { MapColours } from "./colours.js";
import { wrapped } from "./lines.js";
import { halfOf, type Target } from "./touch.js";

export const labelFont = '500 12.5px "Inter", system-ui, sans-serif';
// What keeps clear of each other, on any layer.
export const clutter = "signs";
const symbolSize = 24;

export function symbolOf({ place, mover }: Sign) {
  if (mover !== null) return symbolFor([mover.type.names.name]);
  return symbolFor([place?.names.name ?? "", ...(place?.keywords ?? [])]);
}

function nameStyle(sign: Sign, language: string, colours: MapColours): Style {
  return new Style({
    text: new Text({
      text: wrapped(nameIn(language, sign.place!.names)),
      font: labelFont,
      fill: new Fill({ color: colours.ink }),
      stroke: new Stroke({ color: colours.paper, width: 3 }),
      padding: [3, 4, 3, 4],
      overflow: true,
    }),
  });
}

function symbolStyle(sign: Sign, colours: MapColours): Style {
  const symbol = symbolOf(sign);
  const isExit = symbol === "exit";
  const plate = sign.mover !== null ? colours.mover : isExit ? colours.exit : colours.amenity;
  return new Style({
    image: new Icon({
      src: plateAddress(symbol, plate, "#ffffff", colours.paper),
      width: symbolSize,
      height: symbolSize,
    }),
    zIndex: 1,
  });
}

function targetOf(sign: Sign, language: string): Target<Sign> {
  const isName = sign.place?.kind === "destination";
  const half = isName
    ? halfOf(wrapped(nameIn(language, sign.place.names)), labelFont)
    : ([symbolSize / 2, symbolSize / 2] as const);
  return { what: sign, at: sign.at, offset: [0, 0], half };
}

export class SignLayer {
  #source = new VectorSource<Feature<Point>>();
  #targets: readonly Target<Sign>[] = [];
  // What is drawn, and how: most changes of the page leave it as it is.
  #drawn: readonly unknown[] = [];
  readonly layer = new VectorLayer({ source: this.#source, declutter: clutter, zIndex: 2 });

  // `hidden` are those that something else stands for, such as the pin of the chosen place.
  show(
    signs: readonly Sign[],
    hidden: (sign: Sign) => boolean,
    language: string,
    colours: MapColours,
  ): void {
    const shown = signs.filter((sign) => !hidden(sign));
    const drawn = [language, colours, ...shown];
    if (drawn.length === this.#drawn.length && drawn.every((each, at) => each === this.#drawn[at])) return;
    this.#drawn = drawn;
    const features = shown.map((sign) => {
      const feature = new Feature(new Point([sign.at[0], -sign.at[1]]));
      const isName = sign.place?.kind === "destination";
      feature.setStyle(isName ? nameStyle(sign, language, colours) : symbolStyle(sign, colours));
      return feature;
    });
    this.#targets = shown.map((sign) => targetOf(sign, language));
    this.#source.clear(true);
    this.#source.addFeatures(features);
  }

  get targets(): readonly Target<Sign>[] {
    return this.#targets;
  }
}
