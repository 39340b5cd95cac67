// An address as a QR code: what a camera reads off a screen or a sheet.
import { correction, generate } from "lean-qr/nano";
import { s } from "../picture/svg.js";

const quiet = 4;

// Null where the address is longer than a code can hold.
export function codeOf(address: string, label: string): SVGSVGElement | null {
  const code = made(address);
  if (code === null) return null;
  const size = code.size + 2 * quiet;
  let d = "";
  for (let y = 0; y < code.size; y += 1) {
    for (let x = 0; x < code.size; x += 1) {
      if (code.get(x, y)) d += `M${x + quiet} ${y + quiet}h1v1h-1z`;
    }
  }
  // Dark on white, on a dark page too: cameras expect it.
  return s(
    "svg",
    { class: "code", viewBox: `0 0 ${size} ${size}`, role: "img", "aria-label": label },
    s("rect", { width: size, height: size, fill: "#ffffff" }),
    s("path", { d, fill: "#000000", "shape-rendering": "crispEdges" }),
  );
}

function made(address: string) {
  try {
    return generate(address, { minCorrectionLevel: correction.M });
  } catch {
    return null;
  }
}
