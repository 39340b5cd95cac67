// For who maintains the data: its waypoints and ways on the map, what each is, and what a check
// found, each where it is.
import type { Config } from "../config.js";
import type { Documents } from "../documents.js";
import type { MapColours } from "../map/colours.js";
import type { Context, DataParts } from "../panel/Context.js";
import { h, iconButton } from "../panel/dom.js";
import type { ColourBy, End, State } from "../state/State.js";
import type { Key } from "../texts/texts.js";
import { lineIcon } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import type { Floor, Point } from "../venue/Venue.js";
import { byKind, readFindings, spotsOf, type Finding } from "./findings.js";
import { readGraph, type Graph } from "./graph.js";
import { GraphLayer } from "./GraphLayer.js";
import { pathRecord, recordOf } from "./records.js";
import { shadesOf, type Shade } from "./shades.js";
import { recordAt, type Touched } from "./touched.js";

const kinds: Readonly<{ [kind: string]: Key }> = {
  island: "kind-island",
  oneWayTrap: "kind-oneWayTrap",
  unreachable: "kind-unreachable",
  notStepFree: "kind-notStepFree",
  floorWithoutMover: "kind-floorWithoutMover",
  moverToNowhere: "kind-moverToNowhere",
  danglingId: "kind-danglingId",
  repeatedId: "kind-repeatedId",
  zeroLength: "kind-zeroLength",
  longLink: "kind-longLink",
  throughWall: "kind-throughWall",
  missingScale: "kind-missingScale",
  missingLevel: "kind-missingLevel",
  missingName: "kind-missingName",
  repeatedName: "kind-repeatedName",
  placement: "kind-placement",
};

// More would be no list any more; the command tells of all.
const mostOfAKind = 100;

async function fetchFindings(address: string | null, venue: number): Promise<Finding[] | null> {
  if (address === null) return null;
  try {
    const asked = new URL(address);
    asked.searchParams.set("venue", String(venue));
    const response = await fetch(asked);
    return response.ok ? readFindings(await response.json()) : null;
  } catch {
    return null;
  }
}

export class DataView implements DataParts {
  #context: Context;
  #graph: Graph;
  #used: ReadonlySet<number>;
  #layer = new GraphLayer();
  // Null where the host names none, or none that can be read.
  #findings: readonly Finding[] | null;
  #open = new Set<string>();

  static async load(context: Context, documents: Documents, { findings: address }: Config): Promise<DataView> {
    const findings = await fetchFindings(address, context.venue.id);
    return new DataView(context, documents, findings);
  }

  private constructor(context: Context, documents: Documents, findings: readonly Finding[] | null) {
    this.#context = context;
    this.#graph = readGraph(context.venue, [documents, ...documents.others]);
    this.#used = new Set([...this.#graph.paths.values()].map((path) => path.type));
    this.#findings = findings;
  }

  get layer() {
    return this.#layer.layer;
  }

  show(floor: Floor, { data, path }: State, colours: MapColours): void {
    if (data === null) return this.#layer.clear();
    const { venue } = this.#context;
    const spots = (this.#findings ?? []).flatMap((each) => spotsOf(each, venue, this.#graph));
    const found = new Set(spots.map((spot) => spot.waypoint));
    const shades = this.#shades(data);
    this.#layer.show({ venue, graph: this.#graph, floor, shades, path, found, colours });
  }

  at(floor: Floor, at: Point, reach: number): Touched | null {
    return recordAt(this.#context.venue, this.#graph, floor, at, reach);
  }

  record(end: End): HTMLElement {
    const { texts } = this.#context;
    const record = recordOf(this.#context, this.#graph, end);
    const spots = end.kind === "waypoint" ? [end.id] : [];
    const found = (this.#findings ?? []).filter((each) =>
      spotsOf(each, this.#context.venue, this.#graph).some((spot) => spots.includes(spot.waypoint)),
    );
    if (found.length > 0) {
      const heading = h("h3", { class: "record-heading", text: texts().of("findings", { n: found.length }) });
      record.append(heading, h("ul", { class: "finding-list" }, ...found.map((each) => this.#finding(each))));
    }
    return record;
  }

  panel({ data, path }: State): HTMLElement[] {
    const { texts, store } = this.#context;
    const chosen = path === null ? undefined : this.#graph.paths.get(path);
    const head = h(
      "div",
      { class: "data-head" },
      h("h2", { class: "data-name", text: texts().of("data"), attributes: { tabindex: -1 } }),
      iconButton(lineIcon("close"), texts().of("closeData"), () => store.update({ data: null, path: null })),
    );
    return [
      head,
      ...(chosen === undefined ? [] : [pathRecord(this.#context, chosen)]),
      this.#colourChoice(data ?? "type"),
      this.#legend(data ?? "type"),
      ...this.#findingsParts(),
    ];
  }

  #shades(by: ColourBy): Shade[] {
    return shadesOf(this.#context.venue, this.#used, by);
  }

  #colourChoice(by: ColourBy): HTMLElement {
    const { texts, store } = this.#context;
    const choice = (value: ColourBy, key: Key) =>
      h(
        "label",
        { class: "choice" },
        h("input", {
          attributes: { type: "radio", name: "colours", value, checked: by === value },
          on: { change: () => store.update({ data: value }) },
        }),
        h("span", { text: texts().of(key) }),
      );
    const legend = h("legend", { class: "unseen", text: texts().of("colourBy") });
    return h("fieldset", { class: "choices" }, legend, choice("type", "byType"), choice("level", "byLevel"));
  }

  #legend(by: ColourBy): HTMLElement {
    const { texts, venue } = this.#context;
    const name = (type: number) => {
      const found = venue.pathTypes.get(type);
      return found === undefined ? String(type) : nameIn(texts().language, found.names);
    };
    const rows = this.#shades(by).map(({ colour, types, accessibility }) => {
      const count = [...this.#graph.paths.values()].filter((path) => types.includes(path.type)).length;
      const swatch = h("span", { class: "swatch" });
      swatch.style.backgroundColor = colour;
      const names = types.map(name).join(", ");
      const level = texts().of("accessLevel", { n: accessibility });
      return h(
        "li",
        { class: "legend-row" },
        swatch,
        h("span", { class: "legend-name", text: by === "type" ? names : level }),
        h("span", { class: "legend-more", text: by === "type" ? level : names }),
        h("span", { class: "legend-count", text: String(count) }),
      );
    });
    return h("ul", { class: "legend", attributes: { "aria-label": texts().of("paths") } }, ...rows);
  }

  #findingsParts(): HTMLElement[] {
    const { texts } = this.#context;
    const say = texts();
    if (this.#findings === null) {
      const command = h("code", { text: "tern check --data … --json > findings.json" });
      return [
        h("h3", { class: "record-heading", text: say.of("findingsNone") }),
        h("p", { class: "data-note" }, say.of("findingsMissing"), " ", command),
      ];
    }
    const heading = say.of("findings", { n: this.#findings.length });
    const parts = [...byKind(this.#findings)].map(([kind, all]) => this.#kind(kind, all));
    const nothing = h("p", { class: "data-note", text: say.of("nothingWrong") });
    return [
      h("h3", { class: "record-heading", text: heading }),
      ...(parts.length === 0 ? [nothing] : parts),
    ];
  }

  #kind(kind: string, all: readonly Finding[]): HTMLElement {
    const key = Object.hasOwn(kinds, kind) ? kinds[kind] : undefined;
    const name = key === undefined ? kind : this.#context.texts().of(key);
    const toggled = (event: Event) => {
      if ((event.target as HTMLDetailsElement).open) this.#open.add(kind);
      else this.#open.delete(kind);
    };
    return h(
      "details",
      { class: "kind", attributes: { open: this.#open.has(kind) }, on: { toggle: toggled } },
      h(
        "summary",
        { class: "kind-head" },
        h("span", { class: "kind-name", text: name }),
        h("span", { class: "kind-count", text: String(all.length) }),
      ),
      h("ul", { class: "finding-list" }, ...all.slice(0, mostOfAKind).map((each) => this.#finding(each))),
    );
  }

  // One that is nowhere on a map is only told of.
  #finding(finding: Finding): HTMLElement {
    const { venue, flyTo, store } = this.#context;
    const spot = spotsOf(finding, venue, this.#graph)[0];
    const floor = venue.floors.get(finding.map ?? NaN);
    const attributes = { lang: "en" };
    if (spot === undefined && floor === undefined) {
      return h("li", {}, h("p", { class: "finding", text: finding.message, attributes }));
    }
    const go = () => (spot === undefined ? store.update({ map: floor!.map }) : flyTo(spot.map, spot.at));
    return h(
      "li",
      {},
      h("button", {
        class: "finding",
        text: finding.message,
        attributes: { type: "button", ...attributes },
        on: { click: go },
      }),
    );
  }
}
