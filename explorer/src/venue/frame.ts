// What a drawing says of its own size.
type Frame = readonly [number, number, number, number];

const start = /<svg\b[^>]*>/i;
const numbers = /[-+]?(?:\d+\.?\d*|\.\d+)(?:e[-+]?\d+)?/gi;

function attribute(tag: string, name: string): string | undefined {
  const found = new RegExp(`\\s${name}\\s*=\\s*(?:"([^"]*)"|'([^']*)')`, "i").exec(tag);
  return found?.[1] ?? found?.[2];
}

function isFrame(all: readonly number[]): boolean {
  return all.length === 4 && all.every(Number.isFinite) && all[2]! > 0 && all[3]! > 0;
}

function pixels(length: string): number {
  return Number(/^\s*([\d.]+)\s*(?:px)?\s*$/.exec(length)?.[1] ?? NaN);
}

// Null where it says nothing.
export function frameOf(drawing: string): Frame | null {
  const tag = start.exec(drawing)?.[0];
  if (tag === undefined) return null;
  const box = (attribute(tag, "viewBox")?.match(numbers) ?? []).map(Number);
  if (isFrame(box)) return box as unknown as Frame;
  const size = [0, 0, ...["width", "height"].map((name) => pixels(attribute(tag, name) ?? ""))];
  return isFrame(size) ? (size as unknown as Frame) : null;
}

// The drawing with a start tag of ours, so that it fills whatever size its image has.
export function withFrame(drawing: string, [x, y, width, height]: Frame): string {
  return drawing.replace(start, (tag) => {
    const kept = tag.replace(/\s(?:viewBox|width|height|xmlns|preserveAspectRatio)\s*=\s*("[^"]*"|'[^']*')/gi, "");
    const own =
      `<svg xmlns="http://www.w3.org/2000/svg" viewBox="${x} ${y} ${width} ${height}"` +
      ` width="${width}" height="${height}" preserveAspectRatio="none"`;
    return own + kept.slice("<svg".length);
  });
}
