// Where on the globe a venue lies: the corners of its first map as longitude and latitude, between
// which the spherical Mercator projection (EPSG:3857) is stretched, as the library does it.
import { frameOf } from "./frame.js";
import { list, number, object, text, type Json } from "./json.js";
import type { Point } from "./Venue.js";

export interface Placement {
  // Longitude and latitude in degrees, of a point in map units.
  readonly toDegrees: (at: Point) => Point;
  readonly fromDegrees: (degrees: Point) => Point;
}

const radius = 6_378_137;

export function toMercator([longitude, latitude]: Point): Point {
  const half = (latitude * Math.PI) / 360 + Math.PI / 4;
  return [(longitude * Math.PI * radius) / 180, Math.log(Math.tan(half)) * radius];
}

export function fromMercator([x, y]: Point): Point {
  const half = Math.atan(Math.exp(y / radius)) - Math.PI / 4;
  return [(x / radius / Math.PI) * 180, (half / Math.PI) * 360];
}

// A corner stands in documents as latitude and longitude.
function cornerOf(value: unknown): Point | null {
  const [latitude, longitude] = list(value).map(number);
  if (latitude == null || longitude == null) return null;
  if (Math.abs(longitude) > 180 || Math.abs(latitude) >= 90) return null;
  return toMercator([longitude, latitude]);
}

// Null where the document does not say it. `firstMap` is the one that lies between the corners.
export function placementOf(venue: Json, firstMap: Json): Placement | null {
  const corners = object(venue["coordinates"]);
  const [topLeft, bottomRight] = [cornerOf(corners["topLeft"]), cornerOf(corners["bottomRight"])];
  const frame = frameOf(text(firstMap["svg"]));
  const width = number(firstMap["width"]) ?? frame?.[2] ?? 0;
  const height = number(firstMap["height"]) ?? frame?.[3] ?? 0;
  if (topLeft === null || bottomRight === null || width <= 0 || height <= 0) return null;
  const across = (bottomRight[0] - topLeft[0]) / width;
  const down = (bottomRight[1] - topLeft[1]) / height;
  if (across === 0 || down === 0) return null;
  return {
    toDegrees: ([x, y]) => fromMercator([topLeft[0] + x * across, topLeft[1] + y * down]),
    fromDegrees: (degrees) => {
      const [x, y] = toMercator(degrees);
      return [(x - topLeft[0]) / across, (y - topLeft[1]) / down];
    },
  };
}
