// What a tap is meant for: the sign or passage whose middle is nearest, of those that it touches. A
// name that has given way to another is found, too: its room is where the tap is.
import type { Point } from "../venue/Venue.js";

// Around a point of the map, in pixels.
export interface Target<What> {
  readonly what: What;
  readonly at: Point;
  // From the point to the middle of what is drawn.
  readonly offset: Point;
  // Half of its width and height.
  readonly half: Point;
}

const context = document.createElement("canvas").getContext("2d")!;
// A fingertip needs this much to either side.
const finger = 14;

export function halfOf(text: string, font: string): Point {
  context.font = font;
  const lines = text.split("\n");
  const width = Math.max(...lines.map((line) => context.measureText(line).width));
  return [width / 2, lines.length * 8];
}

export function touched<What>(
  pixel: Point,
  targets: readonly Target<What>[],
  pixelOf: (at: Point) => Point | null,
): What | null {
  let found: What | null = null;
  let least = Infinity;
  for (const { what, at, offset, half } of targets) {
    const middle = pixelOf(at);
    if (middle === null) continue;
    const across = Math.abs(pixel[0] - middle[0] - offset[0]);
    const down = Math.abs(pixel[1] - middle[1] - offset[1]);
    if (across > Math.max(half[0], finger) || down > Math.max(half[1], finger)) continue;
    const distance = Math.hypot(across, down);
    if (distance < least) [found, least] = [what, distance];
  }
  return found;
}
