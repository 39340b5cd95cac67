// Which part of a floor a picture shows.
import type { Floor, Point } from "../venue/Venue.js";

export type Frame = Floor["frame"];

const border = { metres: 12, part: 0.12 };
// No part is smaller than this: what is around it is what one knows it by.
const least = { metres: 45, part: 0.3 };

// As wide and high as `shape` says, around the middle of what is there.
function stretched([x, y, width, height]: Frame, shape: number): Frame {
  const wide = Math.max(width, height * shape);
  const high = Math.max(height, width / shape);
  return [x - (wide - width) / 2, y - (high - height) / 2, wide, high];
}

function units(floor: Floor, { metres, part }: { metres: number; part: number }): number {
  const longer = Math.max(floor.frame[2], floor.frame[3]);
  return floor.mmPerUnit === null ? part * longer : (metres * 1000) / floor.mmPerUnit;
}

// Moved to where there is something to see, as far as it is smaller than the floor.
function within(begin: number, length: number, first: number, whole: number): number {
  if (length >= whole) return first + (whole - length) / 2;
  return Math.min(Math.max(begin, first), first + whole - length);
}

// The points with some air around them; all of the floor when there are none. `narrowest` and
// `widest` bound the width as a multiple of the height.
export function cropped(
  floor: Floor,
  points: readonly Point[],
  [narrowest, widest]: readonly [number, number],
): Frame {
  const shaped = (frame: Frame) => {
    const shape = Math.min(Math.max(frame[2] / frame[3], narrowest), widest);
    return stretched(frame, shape);
  };
  if (points.length === 0) return shaped(floor.frame);
  const [xs, ys] = [points.map(([x]) => x), points.map(([, y]) => y)];
  const [left, top] = [Math.min(...xs), Math.min(...ys)];
  const [across, down] = [Math.max(...xs) - left, Math.max(...ys) - top];
  const air = units(floor, border);
  const smallest = units(floor, least);
  const width = Math.max(across + 2 * air, smallest);
  const height = Math.max(down + 2 * air, smallest);
  const around: Frame = [left + across / 2 - width / 2, top + down / 2 - height / 2, width, height];
  const [x, y, wide, high] = shaped(around);
  return [
    within(x, wide, floor.frame[0], floor.frame[2]),
    within(y, high, floor.frame[1], floor.frame[3]),
    wide,
    high,
  ];
}
