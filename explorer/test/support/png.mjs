// Pictures of PNG files as { width, height, rgb }, three bytes a pixel.
import { packages } from "./modules.mjs";

const { PNG } = packages("pngjs");

export function decodePng(file) {
  const { width, height, data } = PNG.sync.read(file);
  const rgb = new Uint8Array(width * height * 3);
  for (let pixel = 0; pixel < width * height; pixel += 1) {
    rgb.set(data.subarray(pixel * 4, pixel * 4 + 3), pixel * 3);
  }
  return { width, height, rgb };
}
