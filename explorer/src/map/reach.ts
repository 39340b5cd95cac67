// How far one gets: the walks of a floor, the paler the farther.
import Feature from "ol/Feature.js";
import MultiLineString from "ol/geom/MultiLineString.js";
import VectorLayer from "ol/layer/Vector.js";
import VectorSource from "ol/source/Vector.js";
import { Stroke, Style } from "ol/style.js";
import type { Stretch } from "../venue/walked.js";
import type { MapColours } from "./colours.js";
import { shades } from "./shades.js";

const line = { lineCap: "round", lineJoin: "round" } as const;

export class ReachLayer {
  #source = new VectorSource<Feature<MultiLineString>>();
  readonly layer = new VectorLayer({ source: this.#source, zIndex: 1 });

  show(stretches: readonly Stretch[], colours: MapColours): void {
    this.#source.clear(true);
    if (stretches.length === 0) return;
    const feature = (own: readonly Stretch[], color: string, width: number, zIndex: number) => {
      const lines = own.map(({ points }) => points.map(([x, y]) => [x, -y]));
      const made = new Feature(new MultiLineString(lines));
      made.setStyle(new Style({ stroke: new Stroke({ ...line, color, width }), zIndex }));
      return made;
    };
    // The nearest on top.
    const shaded = shades().map((color, shade) =>
      feature(stretches.filter((each) => each.shade === shade), color, 7, 20 - shade),
    );
    this.#source.addFeatures([feature(stretches, colours.way, 10.5, 0), ...shaded]);
  }
}
