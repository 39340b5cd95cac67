// A drawing's colours after dark: light becomes dark and dark light, and hues stay.
type Triple = readonly [number, number, number];

function hslOf([red, green, blue]: Triple): Triple {
  const most = Math.max(red, green, blue);
  const range = most - Math.min(red, green, blue);
  const lightness = most - range / 2;
  if (range === 0) return [0, 0, lightness];
  const saturation = range / (1 - Math.abs(2 * lightness - 1));
  if (most === red) return [((green - blue) / range + 6) % 6, saturation, lightness];
  if (most === green) return [(blue - red) / range + 2, saturation, lightness];
  return [(red - green) / range + 4, saturation, lightness];
}

function rgbOf([hue, saturation, lightness]: Triple): Triple {
  const channel = (offset: number) => {
    const k = (offset + hue * 2) % 12;
    const reach = saturation * Math.min(lightness, 1 - lightness);
    return lightness - reach * Math.max(-1, Math.min(k - 3, 9 - k, 1));
  };
  return [channel(0), channel(8), channel(4)];
}

// "#rgb", "#rrggbb" and either with an alpha, which stays.
export function darkened(colour: string): string {
  const digits = colour.slice(1);
  const wide = digits.length < 6 ? digits.replace(/./g, "$&$&") : digits;
  const bytes = [0, 2, 4].map((at) => parseInt(wide.slice(at, at + 2), 16) / 255);
  const [hue, saturation, lightness] = hslOf(bytes as unknown as Triple);
  const turned = 0.11 + 0.8 * (1 - lightness);
  // As strong as before, not as saturated: what is almost white would else become quite brown.
  const strength = saturation * (1 - Math.abs(2 * lightness - 1)) * 0.7;
  const dark: Triple = [hue, Math.min(1, strength / (1 - Math.abs(2 * turned - 1))), turned];
  const out = rgbOf(dark).map((each) => Math.round(each * 255).toString(16).padStart(2, "0"));
  return `#${out.join("")}${wide.slice(6)}`;
}

const named: Readonly<Record<string, string>> = { white: "#ffffff", black: "#000000" };
const colours =
  /((?:fill|stroke|stop-color|color)\s*[=:]\s*["']?\s*)(#[0-9a-f]{8}|#[0-9a-f]{6}|#[0-9a-f]{3,4}|white|black)\b/gi;

export function drawnDark(drawing: string): string {
  return drawing.replace(colours, (_, before: string, colour: string) =>
    before + darkened(named[colour.toLowerCase()] ?? colour),
  );
}
