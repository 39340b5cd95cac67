// All buildings where they lie on the globe, each with its first floor. Nothing else is drawn around
// them: no map of the world is asked for.
import { paddingAround } from "../map/frame.js";
import type { Context } from "../panel/Context.js";
import { h } from "../panel/dom.js";
import { s } from "../picture/svg.js";
import { isDark } from "../theme/theme.js";
import { drawnDark } from "../venue/colours.js";
import { withFrame } from "../venue/frame.js";
import { nameIn } from "../venue/names.js";
import type { Building, Point } from "../venue/Venue.js";
import { followGestures } from "./gestures.js";
import { groundOf, placedBuildings, type Placed } from "./ground.js";
import { namesOver } from "./labels.js";
import { centred, fitted, kept, moved, seen, zoomed, type Box, type Sight } from "./sight.js";

const margin = 28;
const labelHeight = 26;
const leastRoom = 60;
// So many times as large as where all of it is seen.
const mostZoom = 24;

export class Overview {
  #context: Context;
  #element: HTMLElement;
  #placed: readonly Placed[];
  #ground: Box;
  #sight: Sight = { scale: 1, left: 0, top: 0 };
  // Whether somebody has moved it: then it stays.
  #isMoved = false;
  // What is drawn already: its words and colours.
  #drawn = "";
  #picture: SVGSVGElement | null = null;
  #parts = s("g", {});
  #names = s("g", { class: "overview-names" });
  #urls: string[] = [];

  constructor(context: Context) {
    this.#context = context;
    this.#placed = placedBuildings(context);
    this.#ground = groundOf(this.#placed);
    this.#element = h("section", { class: "overview", attributes: { hidden: true } });
    followGestures(this.#element, {
      by: (way) => this.#look(moved(this.#sight, way)),
      zoom: (factor, at) => this.zoomBy(factor, at),
    });
    document.getElementById("map")!.after(this.#element);
  }

  hide(): void {
    this.#element.hidden = true;
    this.#element.replaceChildren();
    this.#drawn = "";
    this.#isMoved = false;
    for (const url of this.#urls.splice(0)) URL.revokeObjectURL(url);
  }

  // Called again whenever the window, what covers it, the words or the colours may have changed.
  show(): void {
    this.#element.hidden = false;
    const drawn = JSON.stringify([this.#context.texts().language, isDark()]);
    if (drawn !== this.#drawn) this.#draw();
    this.#drawn = drawn;
    this.#picture!.setAttribute("width", String(innerWidth));
    this.#picture!.setAttribute("height", String(innerHeight));
    const all = fitted(this.#ground, this.#free());
    this.#put(this.#isMoved ? kept(this.#sight, this.#ground, this.#free()) : all);
  }

  // `at` is a point of the window that stays; null: the middle of what is free.
  zoomBy(factor: number, at: Point | null = null): void {
    const free = this.#free();
    const least = fitted(this.#ground, free).scale;
    const scale = Math.min(Math.max(this.#sight.scale * factor, least), least * mostZoom);
    const middle: Point = [free.left + free.width / 2, free.top + free.height / 2];
    this.#look(zoomed(this.#sight, scale / this.#sight.scale, at ?? middle));
  }

  #look(sight: Sight): void {
    this.#isMoved = true;
    this.#put(kept(sight, this.#ground, this.#free()));
  }

  #put(sight: Sight): void {
    this.#sight = sight;
    const { left, top, scale } = sight;
    this.#parts.setAttribute("transform", `translate(${left} ${top}) scale(${scale})`);
    this.#names.replaceChildren(...namesOver(this.#context, this.#placed, sight));
  }

  // What the panel and the floors leave of the window.
  #free(): Box {
    const strip = document.getElementById("floors")!;
    const padding = paddingAround(document.getElementById("panel")!, strip);
    const top = Math.max(padding.top, strip.offsetTop + strip.offsetHeight);
    return {
      left: padding.left + margin,
      top: top + margin,
      width: Math.max(leastRoom, innerWidth - padding.left - padding.right - 2 * margin),
      height: Math.max(leastRoom, innerHeight - top - padding.bottom - 2 * margin - labelHeight),
    };
  }

  #draw(): void {
    for (const url of this.#urls.splice(0)) URL.revokeObjectURL(url);
    this.#element.setAttribute("aria-label", this.#context.texts().of("overview"));
    this.#parts.replaceChildren(...this.#placed.map((each) => this.#building(each)));
    this.#picture = s("svg", { class: "overview-map" }, this.#parts, this.#names);
    this.#element.replaceChildren(this.#picture);
  }

  #building(placed: Placed): SVGGElement {
    const { building, own, ground } = placed;
    const { texts, store } = this.#context;
    const floor = building.firstFloor!;
    const open = () => store.update({ map: floor.map, isOverview: false });
    const corners = { x: ground.left, y: ground.top, width: ground.width, height: ground.height };
    const group = s(
      "g",
      {
        class: "overview-building",
        role: "button",
        tabindex: 0,
        "aria-label": texts().of("openBuilding", { building: this.#longName(building) }),
      },
      s("rect", { class: "overview-paper", ...corners }),
      this.#drawing(building, own, corners),
      s("rect", { class: "overview-edge", ...corners }),
    );
    group.addEventListener("click", open);
    group.addEventListener("focus", () => this.#bringIn(placed));
    group.addEventListener("keydown", (event) => {
      if (event.key !== "Enter" && event.key !== " ") return;
      event.preventDefault();
      open();
    });
    return group;
  }

  // What the keyboard comes to is seen.
  #bringIn({ ground }: Placed): void {
    const free = this.#free();
    const { left, top, width, height } = seen(this.#sight, ground);
    const [x, y] = [left + width / 2 - free.left, top + height / 2 - free.top];
    const isIn = x >= 0 && x <= free.width && y >= 0 && y <= free.height;
    if (!isIn) this.#look(centred(this.#sight, ground, free));
  }

  #longName(building: Building): string {
    const { texts, venue } = this.#context;
    const name = nameIn(texts().language, building.names);
    const isAmongVenues = venue.buildings.some((each) => each.venue !== building.venue);
    return isAmongVenues ? `${name}, ${nameIn(texts().language, building.venueNames)}` : name;
  }

  // What of the floor's drawing is the building's.
  #drawing(building: Building, own: Box, corners: Readonly<Record<string, number>>): SVGSVGElement {
    const { drawing, frame } = building.firstFloor!;
    const viewBox = `${own.left} ${own.top} ${own.width} ${own.height}`;
    const part = s("svg", { ...corners, viewBox, preserveAspectRatio: "none" });
    if (drawing === "") return part;
    const framed = withFrame(drawing, frame);
    const shown = isDark() ? drawnDark(framed) : framed;
    const url = URL.createObjectURL(new Blob([shown], { type: "image/svg+xml" }));
    this.#urls.push(url);
    const [x, y, width, height] = frame;
    part.append(s("image", { href: url, x, y, width, height, preserveAspectRatio: "none" }));
    return part;
  }
}
