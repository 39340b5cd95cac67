// The spot that somebody was led to, as by a step of the way.
import Feature from "ol/Feature.js";
import Point from "ol/geom/Point.js";
import VectorLayer from "ol/layer/Vector.js";
import VectorSource from "ol/source/Vector.js";
import { Circle, Stroke, Style } from "ol/style.js";
import type { Point as MapPoint } from "../venue/Venue.js";
import type { MapColours } from "./colours.js";

export class SpotLayer {
  #source = new VectorSource<Feature<Point>>();
  readonly layer = new VectorLayer({ source: this.#source, zIndex: 4 });

  show([x, y]: MapPoint, { paper, accent }: MapColours): void {
    const feature = new Feature(new Point([x, -y]));
    const ring = (color: string, width: number) =>
      new Style({ image: new Circle({ radius: 17, stroke: new Stroke({ color, width }) }) });
    feature.setStyle([ring(paper, 6), ring(accent, 3)]);
    this.clear();
    this.#source.addFeature(feature);
  }

  clear(): void {
    this.#source.clear();
  }
}
