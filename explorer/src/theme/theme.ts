// Light or dark, and the colours of whoever hosts the page.
import type { Config } from "../config.js";

const dark = matchMedia("(prefers-color-scheme: dark)");

export function isDark(): boolean {
  return dark.matches;
}

export function onTheme(changed: () => void): void {
  dark.addEventListener("change", changed);
}

// One of the custom properties of theme.css.
export function colour(name: string): string {
  return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}

function luminance(hex: string): number {
  const channels = [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16) / 255);
  const [red, green, blue] = channels.map((each) =>
    each <= 0.04045 ? each / 12.92 : ((each + 0.055) / 1.055) ** 2.4,
  );
  return 0.2126 * red! + 0.7152 * green! + 0.0722 * blue!;
}

// What can be read on a colour.
function inkOn(hex: string): string {
  const light = 1.05 / (luminance(hex) + 0.05);
  return light >= 4.5 ? "#ffffff" : "#101418";
}

export function applyColours({ colours }: Config): void {
  const style = document.documentElement.style;
  const set = (suffix: string, hex: string | undefined) => {
    if (hex === undefined) return;
    style.setProperty(`--accent-${suffix}`, hex);
    style.setProperty(`--on-accent-${suffix}`, inkOn(hex));
  };
  set("light", colours["accent"]);
  set("dark", colours["accentDark"] ?? colours["accent"]);
}
