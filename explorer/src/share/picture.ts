// The floor that is shown, with the way on it, as a PNG. It is drawn here; nothing is sent.
import { pictureColours as colours } from "../picture/colours.js";
import { pictureOver, sizeOf } from "../picture/FloorPicture.js";
import { lengthsOf, pictureOf, titleOf, venueName, type Shown } from "../picture/Shown.js";
import { floorName } from "../panel/Context.js";
import { s, svgName } from "../picture/svg.js";

const width = 800;
const sharpness = 2;
const headHeight = 84;
const edge = 20;
const shapes = [0.8, 1.6] as const;

// As a data address and no blob's: browsers may hold a canvas that a blob's SVG was drawn on to be
// another origin's, and give nothing of it away.
async function imageOf(svg: string): Promise<HTMLImageElement> {
  const image = new Image();
  image.src = `data:image/svg+xml,${encodeURIComponent(svg)}`;
  await image.decode();
  return image;
}

function fitting(words: string, font: string): string {
  const context = document.createElement("canvas").getContext("2d")!;
  context.font = font;
  const isFitting = (text: string) => context.measureText(text).width <= width - 2 * edge;
  if (isFitting(words)) return words;
  const letters = [...words];
  while (letters.length > 1 && !isFitting(`${letters.join("")}…`)) letters.pop();
  return `${letters.join("")}…`;
}

function headOf(shown: Shown): SVGGElement {
  const { context, floor, found } = shown;
  const title = titleOf(shown);
  const where = floorName(context, floor);
  const words = [venueName(shown), where === title ? "" : where];
  if (found !== null) words.push(lengthsOf(shown, found.way.mm, found.way.seconds));
  const below = words.filter((each) => each !== "").join(" · ");
  const family = "system-ui, sans-serif";
  const line = (text: string, y: number, size: number, weight: number, fill: string) => {
    const attributes = { x: edge, y, "font-family": family, "font-size": size, "font-weight": weight, fill };
    return s("text", attributes, fitting(text, `${weight} ${size}px ${family}`));
  };
  return s("g", {}, line(title, 38, 24, 650, colours.ink), line(below, 64, 15, 400, colours.quiet));
}

export async function pngOf(shown: Shown): Promise<Blob> {
  const picture = pictureOf(shown, shown.floor, width, shapes);
  const { height } = sizeOf(picture);
  const over = s("svg", {
    xmlns: svgName,
    width: width * sharpness,
    height: (height + headHeight) * sharpness,
    viewBox: `0 0 ${width} ${height + headHeight}`,
  });
  const map = s("svg", { y: headHeight, width, height, viewBox: `0 0 ${width} ${height}` });
  map.append(pictureOver(picture));
  over.append(map, headOf(shown));
  const canvas = document.createElement("canvas");
  canvas.width = width * sharpness;
  canvas.height = (height + headHeight) * sharpness;
  const drawn = canvas.getContext("2d")!;
  drawn.fillStyle = colours.paper;
  drawn.fillRect(0, 0, canvas.width, canvas.height);
  drawn.scale(sharpness, sharpness);
  if (picture.drawing !== "") {
    const [x, y, wide, high] = picture.drawn;
    const scale = width / picture.frame[2];
    drawn.save();
    drawn.beginPath();
    drawn.rect(0, headHeight, width, height);
    drawn.clip();
    // A drawing that is broken shows nothing, here as on the map.
    const image = await imageOf(picture.drawing).catch(() => null);
    const left = (x - picture.frame[0]) * scale;
    const top = (y - picture.frame[1]) * scale + headHeight;
    if (image !== null) drawn.drawImage(image, left, top, wide * scale, high * scale);
    drawn.restore();
  }
  const marks = await imageOf(new XMLSerializer().serializeToString(over));
  drawn.drawImage(marks, 0, 0, width, height + headHeight);
  return new Promise((made, failed) => {
    canvas.toBlob((blob) => (blob === null ? failed(new Error("PNG")) : made(blob)), "image/png");
  });
}
