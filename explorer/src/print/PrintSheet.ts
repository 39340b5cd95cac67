// A sheet to carry: where from and where to, and of each floor on the way its map beside its steps.
// The maps are SVG over the floors' drawings, so that a printer draws them as sharp as it can.
import type { Step } from "../engine/Engine.js";
import { floorName } from "../panel/Context.js";
import { h } from "../panel/dom.js";
import { stepGroups, stepIcon } from "../panel/Steps.js";
import { pictureOver, sizeOf } from "../picture/FloorPicture.js";
import { lengthsOf, pictureOf, titleOf, venueName, type Shown } from "../picture/Shown.js";
import { s } from "../picture/svg.js";
import { codeOf } from "../share/code.js";
import { linkOf } from "../share/ShareDialog.js";
import type { Floor } from "../venue/Venue.js";

// In CSS pixels, as the map is on A4 and on Letter: so the names on it have the size of print.
const besideSteps = { width: 400, shapes: [1.15, 1.8] } as const;
const alone = { width: 680, shapes: [0.9, 2] } as const;

const leastSeconds = 45;

// Minutes that are hardly half of one would add up to more than the whole way takes.
function floorLength(shown: Shown, mm: number, seconds: number): string {
  return seconds < leastSeconds ? shown.context.texts().length(mm) : lengthsOf(shown, mm, seconds);
}

export class PrintSheet {
  readonly element: HTMLElement;
  #urls: string[] = [];
  #images: HTMLImageElement[] = [];

  constructor(shown: Shown) {
    const { context, found } = shown;
    const groups = found === null ? [] : stepGroups(found.way);
    const parts = groups.map((steps) => this.#part(shown, steps));
    const only = parts.length === 0 ? [this.#map(shown, shown.floor, alone)] : parts;
    this.element = h("section", { class: "print-sheet" }, this.#head(shown), ...only);
    this.element.lang = context.texts().language;
    document.body.append(this.element);
  }

  // When all the floors' drawings can be printed; one that is broken prints nothing.
  async ready(): Promise<void> {
    await Promise.all(this.#images.map((image) => image.decode().catch(() => undefined)));
  }

  remove(): void {
    this.element.remove();
    for (const url of this.#urls) URL.revokeObjectURL(url);
  }

  #head(shown: Shown): HTMLElement {
    const { context, found } = shown;
    const sum = found === null ? "" : lengthsOf(shown, found.way.mm, found.way.seconds);
    const link = linkOf(shown);
    const code = codeOf(link, context.texts().of("codeOf", { link }));
    return h(
      "header",
      { class: "print-head" },
      h(
        "div",
        {},
        h("p", { class: "print-venue", text: venueName(shown) }),
        h("h1", { class: "print-title", text: titleOf(shown) }),
        h("p", { class: "print-sum", text: sum }),
      ),
      code,
    );
  }

  #part(shown: Shown, steps: readonly Step[]): HTMLElement {
    const { context } = shown;
    const floor = context.venue.floors.get(steps[0]!.mapId);
    const sum = (of: (step: Step) => number) => steps.reduce((all, step) => all + of(step), 0);
    const [mm, seconds] = [sum((step) => step.mm), sum((step) => step.seconds)];
    const list = h("ol", { class: "print-steps" }, ...steps.map((step) => this.#step(shown, step)));
    const name = floor === undefined ? "" : floorName(context, floor);
    return h(
      "section",
      { class: "print-floor" },
      h(
        "div",
        { class: "print-floor-head" },
        h("h2", { class: "print-floor-name", text: name }),
        h("p", { class: "print-floor-length", text: floorLength(shown, mm, seconds) }),
      ),
      floor === undefined
        ? list
        : h("div", { class: "print-part" }, this.#map(shown, floor, besideSteps), list),
    );
  }

  #step({ context }: Shown, step: Step): HTMLElement {
    const length = step.mm >= 500 ? context.texts().length(step.mm) : "";
    return h(
      "li",
      { class: "print-step" },
      stepIcon(context, step),
      h("span", { text: step.text }),
      h("span", { class: "print-step-length", text: length }),
    );
  }

  #map(shown: Shown, floor: Floor, { width, shapes }: typeof besideSteps | typeof alone): HTMLElement {
    const picture = pictureOf(shown, floor, width, shapes);
    const { height } = sizeOf(picture);
    const map = s("svg", { class: "print-map", viewBox: `0 0 ${width} ${height}`, width, height });
    if (picture.drawing !== "") {
      const url = URL.createObjectURL(new Blob([picture.drawing], { type: "image/svg+xml" }));
      const [x, y, wide, high] = picture.drawn;
      const scale = width / picture.frame[2];
      const image = s("image", {
        href: url,
        x: (x - picture.frame[0]) * scale,
        y: (y - picture.frame[1]) * scale,
        width: wide * scale,
        height: high * scale,
        preserveAspectRatio: "none",
      });
      this.#urls.push(url);
      // Decoded here, it is there at once in the sheet.
      const ahead = new Image();
      ahead.src = url;
      this.#images.push(ahead);
      map.append(image);
    }
    map.append(pictureOver(picture));
    return h("div", {}, map);
  }
}

export async function print(shown: Shown): Promise<void> {
  const sheet = new PrintSheet(shown);
  await sheet.ready();
  addEventListener("afterprint", () => sheet.remove(), { once: true });
  window.print();
}
