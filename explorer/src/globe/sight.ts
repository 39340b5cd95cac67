// Which part of the ground is seen: what lies at x of it stands at left + x * scale in the window.
import type { Point } from "../venue/Venue.js";

export interface Sight {
  readonly scale: number;
  readonly left: number;
  readonly top: number;
}

export interface Box {
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
}

export function boxAround(points: readonly Point[]): Box {
  const [xs, ys] = [points.map(([x]) => x), points.map(([, y]) => y)];
  const [left, top] = [Math.min(...xs), Math.min(...ys)];
  return { left, top, width: Math.max(...xs) - left, height: Math.max(...ys) - top };
}

export function cornersOf({ left, top, width, height }: Box): Point[] {
  return [[left, top], [left + width, top + height]];
}

// Where a part of the ground stands in the window.
export function seen({ scale, left, top }: Sight, box: Box): Box {
  return {
    left: left + box.left * scale,
    top: top + box.top * scale,
    width: box.width * scale,
    height: box.height * scale,
  };
}

// All of `ground` in the middle of what is free of the window, as large as it fits.
export function fitted(ground: Box, free: Box): Sight {
  const scale = Math.min(free.width / ground.width, free.height / ground.height);
  return centred({ scale, left: 0, top: 0 }, ground, free);
}

// The middle of a part of the ground in the middle of what is free.
export function centred({ scale }: Sight, part: Box, free: Box): Sight {
  return {
    scale,
    left: free.left + free.width / 2 - (part.left + part.width / 2) * scale,
    top: free.top + free.height / 2 - (part.top + part.height / 2) * scale,
  };
}

export function moved({ scale, left, top }: Sight, [across, down]: Point): Sight {
  return { scale, left: left + across, top: top + down };
}

// What stands at `at` in the window stays there.
export function zoomed({ scale, left, top }: Sight, factor: number, [x, y]: Point): Sight {
  return { scale: scale * factor, left: x + (left - x) * factor, top: y + (top - y) * factor };
}

function between(value: number, least: number, most: number): number {
  return Math.min(Math.max(value, least), most);
}

// So that the middle of what is free is on the ground.
export function kept(sight: Sight, ground: Box, free: Box): Sight {
  const { left, top, width, height } = seen(sight, ground);
  const [x, y] = [free.left + free.width / 2, free.top + free.height / 2];
  const across = between(left, x - width, x) - left;
  const down = between(top, y - height, y) - top;
  return moved(sight, [across, down]);
}
