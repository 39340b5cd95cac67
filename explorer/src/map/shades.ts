// Shades of the accent, the first as strong as it is, the last pale.
import { colour } from "../theme/theme.js";

export const shadeCount = 12;
const palest = 0.22;

function mixed(a: string, b: string, part: number): string {
  const bytes = [1, 3, 5].map((at) => {
    const [first, second] = [a, b].map((each) => parseInt(each.slice(at, at + 2), 16));
    return Math.round(first! * part + second! * (1 - part));
  });
  return `#${bytes.map((each) => each.toString(16).padStart(2, "0")).join("")}`;
}

export function shades(): string[] {
  const [accent, paper] = [colour("accent"), colour("paper")];
  const step = (1 - palest) / (shadeCount - 1);
  return Array.from({ length: shadeCount }, (_, index) => mixed(accent, paper, 1 - index * step));
}
