// A part of a floor with a way on it, as SVG: sharp on paper, and what a PNG is drawn from.
import { wrapped } from "../map/lines.js";
import { symbolOf, labelFont } from "../map/signs.js";
import { pin, type Mark, type Passage, type ShownWay } from "../map/ways.js";
import { symbols } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import type { Sign } from "../venue/signs.js";
import type { Point } from "../venue/Venue.js";
import { pictureColours as colours } from "./colours.js";
import type { Frame } from "./crop.js";
import { s } from "./svg.js";

export interface PictureRequest {
  readonly frame: Frame;
  // Of the picture, in its own units; the height follows.
  readonly width: number;
  readonly way: ShownWay;
  readonly signs: readonly Sign[];
  readonly isHidden: (sign: Sign) => boolean;
  readonly language: string;
}

type Box = readonly [number, number, number, number];

const family = labelFont.replace(/^.*px /, "");
const lineHeight = 1.15;

function overlap(a: Box, b: Box): boolean {
  return a[0] < b[2] && b[0] < a[2] && a[1] < b[3] && b[1] < a[3];
}

const context = document.createElement("canvas").getContext("2d");

function widthOf(line: string, weight: number, size: number): number {
  if (context === null) return line.length * size * 0.6;
  context.font = `${weight} ${size}px ${family}`;
  return context.measureText(line).width;
}

// What is drawn first keeps its room; what would lie on it is left out.
class Drawing {
  readonly group = s("g", { "font-family": family });
  #taken: Box[] = [];
  #frame: Frame;
  #scale: number;
  readonly #edges: Box;

  constructor({ frame, width }: PictureRequest) {
    this.#frame = frame;
    this.#scale = width / frame[2];
    this.#edges = [0, 0, width, frame[3] * this.#scale];
  }

  at([x, y]: Point): Point {
    return [(x - this.#frame[0]) * this.#scale, (y - this.#frame[1]) * this.#scale];
  }

  isInside([x, y]: Point): boolean {
    const [left, top, right, bottom] = this.#edges;
    return x >= left && x <= right && y >= top && y <= bottom;
  }

  // The middle of what is so wide to either side, moved into the picture.
  within(x: number, half: number): number {
    const [left, , right] = this.#edges;
    return Math.min(Math.max(x, left + half + 2), Math.max(right - half - 2, half));
  }

  take(box: Box): boolean {
    if (this.#taken.some((each) => overlap(each, box))) return false;
    this.#taken.push(box);
    return true;
  }

  // Lines below each other around `x`, from `top` on; moved into the picture.
  text(words: string, x: number, top: number, weight: number, size: number, isNeeded: boolean): void {
    const lines = wrapped(words).split("\n");
    const half = Math.max(...lines.map((line) => widthOf(line, weight, size))) / 2;
    const middle = this.within(x, half);
    const box: Box = [middle - half, top, middle + half, top + lines.length * size * lineHeight];
    if (!this.take(box) && !isNeeded) return;
    const spans = lines.map((line, index) =>
      s("tspan", { x: middle, y: top + size * (0.85 + index * lineHeight) }, line),
    );
    const attributes = {
      "text-anchor": "middle",
      "font-size": size,
      "font-weight": weight,
      fill: colours.ink,
      stroke: colours.paper,
      "stroke-width": 3,
      "stroke-linejoin": "round",
      "paint-order": "stroke",
    };
    this.group.append(s("text", attributes, ...spans));
  }
}

function drawLine(drawing: Drawing, points: readonly Point[]): void {
  const path = points.map((point) => drawing.at(point).map((each) => each.toFixed(1)).join(" "));
  const line = { "stroke-linecap": "round", "stroke-linejoin": "round", fill: "none" };
  const strokes = [[colours.way, 8], [colours.accent, 5]] as const;
  for (const [stroke, width] of strokes) {
    const d = `M${path.join("L")}`;
    drawing.group.append(s("path", { ...line, d, stroke, "stroke-width": width }));
  }
}

function drawPassage(drawing: Drawing, { at, label }: Passage): void {
  const [x, y] = drawing.at(at);
  const size = 13;
  const half = widthOf(label, 700, size) / 2 + 6;
  const middle = drawing.within(x, half);
  drawing.take([middle - half, y - 32, middle + half, y + 8]);
  drawing.group.append(
    s("circle", { cx: x, cy: y, r: 5.5, fill: colours.way, stroke: colours.accent, "stroke-width": 3 }),
    s("rect", { x: middle - half, y: y - 32, width: 2 * half, height: 21, rx: 6, fill: colours.accent }),
    s(
      "text",
      { x: middle, y: y - 16.5, "text-anchor": "middle", "font-size": size, "font-weight": 700, fill: "#ffffff" },
      label,
    ),
  );
}

function pinInside(number: number | null): SVGElement {
  if (number === null) return s("circle", { cx: 12, cy: 12, r: 4.2, fill: colours.paper });
  const text = { x: 12, y: 16.3, "text-anchor": "middle", "font-size": 12.5, "font-weight": 700 };
  return s("text", { ...text, fill: colours.paper }, String(number));
}

function drawMark(drawing: Drawing, { kind, at, label, number, isNamedAbove }: Mark): void {
  const [x, y] = drawing.at(at);
  if (kind === "start") {
    const stroke = { stroke: colours.paper, "stroke-width": 3 };
    drawing.group.append(s("circle", { cx: x, cy: y, r: 8, fill: colours.start, ...stroke }));
    drawing.take([x - 9, y - 9, x + 9, y + 9]);
  } else {
    const fill = kind === "end" ? colours.end : colours.accent;
    drawing.group.append(
      s(
        "g",
        { transform: `translate(${x - 12} ${y - 31})` },
        s("path", { d: pin, fill, stroke: colours.paper, "stroke-width": 1.6 }),
        pinInside(number),
      ),
    );
    drawing.take([x - 12, y - 31, x + 12, y + 1]);
  }
  if (label === "") return;
  const size = 13;
  const lines = wrapped(label).split("\n").length;
  const above = (kind === "start" ? 12 : 33) + lines * size * lineHeight;
  const below = kind === "start" ? 12 : 4;
  drawing.text(label, x, isNamedAbove ? y - above : y + below, 600, size, true);
}

function drawSymbol(drawing: Drawing, sign: Sign, [x, y]: Point): void {
  const symbol = symbolOf(sign);
  if (!drawing.take([x - 10, y - 10, x + 10, y + 10])) return;
  const plate = sign.mover !== null ? colours.mover : symbol === "exit" ? colours.start : colours.amenity;
  drawing.group.append(
    s("circle", { cx: x, cy: y, r: 10, fill: plate, stroke: colours.paper, "stroke-width": 1.4 }),
    s("path", {
      transform: `translate(${x - 6.6} ${y - 6.6}) scale(.55)`,
      d: symbols[symbol],
      fill: "#ffffff",
      "fill-rule": "evenodd",
    }),
  );
}

function drawSigns(drawing: Drawing, { signs, isHidden, language }: PictureRequest): void {
  const shown = signs.filter((sign) => !isHidden(sign));
  const isName = (sign: Sign) => sign.place?.kind === "destination";
  for (const sign of [...shown.filter((each) => !isName(each)), ...shown.filter(isName)]) {
    const at = drawing.at(sign.at);
    if (!drawing.isInside(at)) continue;
    if (!isName(sign)) drawSymbol(drawing, sign, at);
    else drawing.text(nameIn(language, sign.place!.names), at[0], at[1] - 6, 500, 11, false);
  }
}

// What stands on the floor's drawing.
export function pictureOver(request: PictureRequest): SVGGElement {
  const drawing = new Drawing(request);
  const { lines, passages, marks } = request.way;
  for (const points of lines) drawLine(drawing, points);
  for (const passage of passages) drawPassage(drawing, passage);
  for (const mark of marks) drawMark(drawing, mark);
  drawSigns(drawing, request);
  return drawing.group;
}

export function sizeOf({ frame, width }: PictureRequest): { width: number; height: number } {
  return { width, height: Math.round((width * frame[3]) / frame[2]) };
}
