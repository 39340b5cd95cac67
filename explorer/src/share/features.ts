// The way as a FeatureCollection of RFC 7946, as `tern route --picture` writes it to a file that
// ends in .geojson: docs/formats.md says what it holds.
import type { Shown } from "../picture/Shown.js";
import { nameOfEnd } from "../panel/Context.js";
import { nameIn } from "../venue/names.js";
import type { Point } from "../venue/Venue.js";

interface Feature {
  readonly type: "Feature";
  readonly geometry:
    | { readonly type: "Point"; readonly coordinates: Point }
    | { readonly type: "LineString"; readonly coordinates: readonly Point[] };
  readonly properties: Readonly<Record<string, unknown>>;
}

export interface FeatureCollection {
  readonly type: "FeatureCollection";
  readonly features: readonly Feature[];
}

// About a millimetre: more digits would only say how numbers are stored.
const rounded = (degrees: number) => Math.round(degrees * 1e8) / 1e8;

// Null where the venue does not say where on the globe it lies, or nothing leads anywhere.
export function featuresOf({ context, state, found }: Shown): FeatureCollection | null {
  const { venue } = context;
  const { language } = context.texts();
  if (found === null || venue.placement === null) return null;
  const { way } = found;
  const features: Feature[] = [];
  const add = (kind: string, name: string, map: number, points: readonly Point[], metres: number | null) => {
    const floor = venue.floors.get(map);
    const building = floor === undefined ? "" : nameIn(language, floor.building.names);
    const placement = floor?.building.placement ?? venue.placement!;
    const positions = points.map((at) => placement.toDegrees(at).map(rounded) as unknown as Point);
    const [first] = positions;
    features.push({
      type: "Feature",
      geometry:
        positions.length === 1
          ? { type: "Point", coordinates: first! }
          : { type: "LineString", coordinates: positions },
      properties: {
        kind,
        ...(name === "" ? {} : { name }),
        floor: floor === undefined ? "" : nameIn(language, floor.names),
        mapId: map,
        building: building === "" ? null : building,
        metres: metres === null ? null : Math.round(metres * 1000) / 1000,
      },
    });
  };
  const nameOf = (end: typeof state.from) => (end === null ? "" : nameOfEnd(context, end));
  let walked: number | null = 0;
  let before = 0;
  way.segments.forEach((segment, index) => {
    const points = segment.mapPoints;
    const { mapId } = segment;
    const isLast = index === way.segments.length - 1;
    const scale = venue.floors.get(mapId)?.mmPerUnit ?? null;
    // Sums begin anew where the way has a stop.
    const length = segment.pixelDistance - (segment.pixelDistance < before ? 0 : before);
    const metres = scale === null ? null : (length * scale) / 1000;
    before = segment.pixelDistance;
    if (points.length === 0) return;
    if (index === 0) add("start", nameOf(state.from), mapId, points.slice(0, 1), 0);
    walked = walked === null || metres === null ? null : walked + metres;
    if (points.length > 1) add("walk", "", mapId, points, metres);
    if (isLast) return add("goal", nameOf(state.to), mapId, points.slice(-1), walked);
    const mover = venue.pathTypes.get(segment.mover ?? NaN);
    if (mover !== undefined) add("mover", nameIn(language, mover.names), mapId, points.slice(-1), walked);
  });
  return { type: "FeatureCollection", features };
}
