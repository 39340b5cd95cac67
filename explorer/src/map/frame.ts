// Where a floor lies in the window: what the first picture and the map both go by.
export interface Padding {
  readonly top: number;
  readonly right: number;
  readonly bottom: number;
  readonly left: number;
}

export interface Size {
  readonly width: number;
  readonly height: number;
}

// A map point in the middle of the window, map units in a pixel of it, and radians clockwise.
export interface Place {
  readonly center: readonly [number, number];
  readonly resolution: number;
  readonly rotation: number;
}

type Frame = readonly [number, number, number, number];

// The frame as large as it fits into what the padding leaves of the window.
export function fitted([x, y, width, height]: Frame, size: Size, padding: Padding): Place {
  const across = Math.max(1, size.width - padding.left - padding.right);
  const down = Math.max(1, size.height - padding.top - padding.bottom);
  const resolution = Math.max(width / across, height / down);
  return {
    center: [
      x + width / 2 + ((padding.right - padding.left) / 2) * resolution,
      y + height / 2 + ((padding.bottom - padding.top) / 2) * resolution,
    ],
    resolution,
    rotation: 0,
  };
}

// How CSS puts an image of the frame there.
export function transformOf([x, y]: Frame, place: Place, size: Size): string {
  const { center, resolution, rotation } = place;
  return (
    `translate(${size.width / 2}px, ${size.height / 2}px) rotate(${rotation}rad) ` +
    `scale(${1 / resolution}) translate(${x - center[0]}px, ${y - center[1]}px)`
  );
}

// As layout.css has it.
const isBeside = matchMedia("(min-width: 48rem)");

// What of the window the panel and the floor strip leave to the map, wherever they are moving from.
export function paddingAround(panel: HTMLElement, strip: HTMLElement | null): Padding {
  const air = 16;
  if (isBeside.matches) {
    return { top: air, right: 5 * air, bottom: air, left: panel.offsetLeft + panel.offsetWidth + air };
  }
  const top = strip === null ? 0 : strip.offsetTop + strip.offsetHeight;
  return { top: top + air, right: air, bottom: innerHeight - panel.offsetTop + air, left: air };
}
