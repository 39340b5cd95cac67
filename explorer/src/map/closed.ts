// Movers that are out of order: always seen, whatever else there is.
import Feature from "ol/Feature.js";
import Point from "ol/geom/Point.js";
import VectorLayer from "ol/layer/Vector.js";
import VectorSource from "ol/source/Vector.js";
import { Icon, Style } from "ol/style.js";
import { barredAddress } from "../theme/icons.js";
import type { Sign } from "../venue/signs.js";
import type { MapColours } from "./colours.js";
import { symbolOf } from "./signs.js";
import type { Target } from "./touch.js";

const size = 30;

export class ClosedLayer {
  #source = new VectorSource<Feature<Point>>();
  #targets: readonly Target<Sign>[] = [];
  readonly layer = new VectorLayer({ source: this.#source, zIndex: 2.5 });

  show(signs: readonly Sign[], { alarm, paper }: MapColours): void {
    const features = signs.map((sign) => {
      const feature = new Feature(new Point([sign.at[0], -sign.at[1]]));
      const src = barredAddress(symbolOf(sign), alarm, paper);
      feature.setStyle(new Style({ image: new Icon({ src, width: size, height: size }) }));
      return feature;
    });
    const half = [size / 2, size / 2] as const;
    this.#targets = signs.map((sign) => ({ what: sign, at: sign.at, offset: [0, 0], half }));
    this.#source.clear(true);
    this.#source.addFeatures(features);
  }

  get targets(): readonly Target<Sign>[] {
    return this.#targets;
  }
}
