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
import { toMercator } from "../venue/placement.js";
import type { Building, Point } from "../venue/Venue.js";

interface Box {
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
}

interface Placed {
  readonly building: Building;
  // In map units, and in metres of the projection with y down.
  readonly own: Box;
  readonly world: Box;
}

const margin = 28;
const labelHeight = 26;
// Lower buildings have their names on them.
const smallest = 90;

function boxAround(points: readonly Point[]): Box {
  const [xs, ys] = [points.map(([x]) => x), points.map(([, y]) => y)];
  const [left, top] = [Math.min(...xs), Math.min(...ys)];
  return { left, top, width: Math.max(...xs) - left, height: Math.max(...ys) - top };
}

const downward = ([x, y]: Point): Point => [x, -y];

// Between its corners; without any, around its waypoints.
function placedOf({ venue }: Context, building: Building): Placed | null {
  const { placement, corners } = building;
  if (placement === null || building.firstFloor === null) return null;
  const maps = new Set(building.floors.map((floor) => floor.map));
  const spots = [...venue.waypoints.values()].filter((spot) => maps.has(spot.map));
  const points = corners?.map(placement.fromDegrees) ?? spots.map((spot) => spot.at);
  const own = boxAround(points);
  if (!(own.width > 0 && own.height > 0)) return null;
  const ends: Point[] = [[own.left, own.top], [own.left + own.width, own.top + own.height]];
  const world = boxAround(ends.map((at) => downward(toMercator(placement.toDegrees(at)))));
  return { building, own, world };
}

export function placedBuildings(context: Context): Placed[] {
  return context.venue.buildings
    .map((building) => placedOf(context, building))
    .filter((each) => each !== null);
}

export class Overview {
  #context: Context;
  #element: HTMLElement;
  #urls: string[] = [];

  constructor(context: Context) {
    this.#context = context;
    this.#element = h("section", { class: "overview", attributes: { hidden: true } });
    document.getElementById("map")!.after(this.#element);
  }

  hide(): void {
    this.#element.hidden = true;
    this.#element.replaceChildren();
    for (const url of this.#urls.splice(0)) URL.revokeObjectURL(url);
  }

  show(): void {
    this.hide();
    this.#element.hidden = false;
    this.#element.setAttribute("aria-label", this.#context.texts().of("overview"));
    const placed = placedBuildings(this.#context);
    const around = boxAround(
      placed.flatMap(({ world: { left, top, width, height } }): Point[] => [
        [left, top],
        [left + width, top + height],
      ]),
    );
    const [width, height] = [innerWidth, innerHeight];
    const padding = paddingAround(document.getElementById("panel")!, document.getElementById("floors"));
    const free = {
      left: padding.left + margin,
      top: padding.top + margin,
      width: Math.max(60, width - padding.left - padding.right - 2 * margin),
      height: Math.max(60, height - padding.top - padding.bottom - 2 * margin - labelHeight),
    };
    const scale = Math.min(free.width / around.width, free.height / around.height);
    const put = ({ left, top, width, height }: Box): Box => ({
      left: free.left + (free.width - around.width * scale) / 2 + (left - around.left) * scale,
      top: free.top + (free.height - around.height * scale) / 2 + (top - around.top) * scale,
      width: width * scale,
      height: height * scale,
    });
    const parts = placed.map((each) => this.#building(each, put(each.world)));
    const names = [...this.#venueNames(placed, put), ...placed.map((each) => this.#name(each, put(each.world)))];
    this.#element.append(s("svg", { class: "overview-map", width, height }, ...parts, ...names));
  }

  // Below its building, or on it where there is little room around.
  #name({ building }: Placed, { left, top, width, height }: Box): SVGTextElement {
    const isSmall = height < smallest;
    const y = isSmall ? top + height / 2 + 4 : top + height + 19;
    const attributes = { class: isSmall ? "overview-name is-small" : "overview-name", x: left + width / 2, y };
    return s("text", attributes, nameIn(this.#context.texts().language, building.names));
  }

  // Each above its buildings, where there are several.
  #venueNames(placed: readonly Placed[], put: (box: Box) => Box): SVGTextElement[] {
    const ids = [...new Set(placed.map(({ building }) => building.venue))];
    if (ids.length < 2) return [];
    return ids.map((id) => {
      const own = placed.filter(({ building }) => building.venue === id);
      const boxes = own.map(({ world }) => put(world));
      const { left, top, width } = boxAround(
        boxes.flatMap((box): Point[] => [[box.left, box.top], [box.left + box.width, box.top]]),
      );
      const name = nameIn(this.#context.texts().language, own[0]!.building.venueNames);
      return s("text", { class: "overview-venue", x: left + width / 2, y: top - 12 }, name);
    });
  }

  #building({ building, own }: Placed, { left, top, width, height }: Box): SVGGElement {
    const { texts, store } = this.#context;
    const floor = building.firstFloor!;
    const open = () => store.update({ map: floor.map, isOverview: false });
    const corners = { x: left, y: top, width, height };
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
    group.addEventListener("keydown", (event) => {
      if (event.key !== "Enter" && event.key !== " ") return;
      event.preventDefault();
      open();
    });
    return group;
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
