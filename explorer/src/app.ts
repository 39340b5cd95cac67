// Puts the parts together once the first floor is drawn.
import { afterPicture } from "./afterPicture.js";
import type { Config } from "./config.js";
import type { DataView } from "./data/DataView.js";
import type { Documents } from "./documents.js";
import { CurrentWay, type FoundWay } from "./engine/CurrentWay.js";
import { closedMovers, followClosings } from "./engine/closings.js";
import { CurrentReach, type Reach } from "./engine/CurrentReach.js";
import type { Joined } from "./engine/joined.js";
import { Engine, type Way } from "./engine/Engine.js";
import { FloorImage } from "./map/FloorImage.js";
import { paddingAround } from "./map/frame.js";
import { MapView, type Tap } from "./map/MapView.js";
import { shadeCount } from "./map/shades.js";
import { Controls } from "./panel/Controls.js";
import {
  endOfMover,
  floorName,
  hasOverview,
  isThere,
  startOf,
  waypointsOf,
  type Context,
  type OfferedVenue,
} from "./panel/Context.js";
import { FloorStrip } from "./panel/FloorStrip.js";
import { Panel, viewOf } from "./panel/Panel.js";
import { endOfPlace } from "./panel/Search.js";
import { Sheet } from "./panel/Sheet.js";
import { isMarked, linesOn, shownWay } from "./shownWay.js";
import { decodeAddress } from "./state/address.js";
import { followAddress } from "./state/history.js";
import { isSameEnd, type End, type State } from "./state/State.js";
import { Store } from "./state/Store.js";
import { Texts } from "./texts/texts.js";
import { isDark, onTheme } from "./theme/theme.js";
import { closestWaypoint } from "./venue/closest.js";
import { integer, items } from "./venue/json.js";
import { nameIn, namesOf } from "./venue/names.js";
import type { Overview } from "./globe/Overview.js";
import type { Shown } from "./picture/Shown.js";
import { readJoined } from "./venue/joined.js";
import { signedFloor, type Sign, type SignedFloor } from "./venue/signs.js";
import type { Floor, Point, Venue } from "./venue/Venue.js";
import { walkedOn } from "./venue/walked.js";

export interface Beginning {
  readonly config: Config;
  readonly documents: Documents;
  readonly library: Promise<ArrayBuffer>;
  readonly image: FloorImage | null;
}

const byId = (id: string) => document.getElementById(id)!;

// What only some ask for. It comes once the rest stands, so that it is there without a network, too.
const parts = {
  share: () => import("./share/ShareDialog.js"),
  print: () => import("./print/PrintSheet.js"),
  data: () => import("./data/DataView.js"),
  overview: () => import("./globe/Overview.js"),
};

async function loadParts(): Promise<void> {
  await Promise.allSettled(Object.values(parts).map((load) => load()));
}

class App {
  #config: Config;
  #context: Context;
  #way: CurrentWay;
  #reach: CurrentReach;
  #map: MapView;
  #panel: Panel;
  #strip: FloorStrip;
  #controls: Controls;
  #sheet: Sheet;
  #texts: Texts;
  #documents: Documents;
  #data: DataView | null = null;
  #overview: Overview | null = null;
  #signed = new Map<number, SignedFloor>();
  // The waypoints of the way that is shown.
  #shownWay = "[]";
  #status = byId("status");

  constructor({ config, documents, library, image }: Beginning) {
    const venue = readJoined([documents, ...documents.others]);
    const store = new Store(decodeAddress(location.hash));
    if (!hasOverview(venue)) store.update({ isOverview: false });
    this.#config = config;
    this.#documents = documents;
    this.#texts = new Texts(store.state.language);
    // Before anybody else: whoever is told of another language asks for its words.
    store.subscribe((state, before) => {
      if (state.language !== before.language) this.#texts = new Texts(state.language);
    });
    const joined = venue.isInDegrees ? this.#joined(venue) : null;
    const engine = new Engine({ library, documents: documents.bytes, venue: venue.id, joined });
    this.#context = {
      store,
      venue,
      venues: documents.others.length === 0 ? offeredVenues(config, documents) : [],
      logo: config.logo,
      engine,
      texts: () => this.#texts,
      say: (text) => this.#say(text),
      failed: (error) => this.#failed(error),
      flyTo: (map, at) => this.#flyTo(map, at),
      share: () => void this.#share(),
      print: () => void this.#print(),
      data: () => this.#data,
      middle: () => ({ map: this.#floor(store.state).map, at: this.#map.middle() }),
    };
    store.update(this.#known(store.state));
    followClosings(store, venue, engine, (error) => this.#failed(error));
    this.#sheet = new Sheet(byId("panel"), this.#context.texts, () => setTimeout(() => this.#layoutChanged()));
    this.#way = new CurrentWay(
      engine,
      store,
      {
        stops: (state) => this.#stops(state),
        language: () => this.#texts.language,
        levels: venue.levels.map((level) => level.accessibility),
      },
      (error) => this.#failed(error),
    );
    this.#reach = new CurrentReach(
      engine,
      store,
      ({ from }) => from && startOf(this.#context, from),
      (error) => this.#failed(error),
    );
    this.#panel = new Panel(this.#context, this.#way, this.#reach, byId("panel"), this.#sheet);
    this.#strip = new FloorStrip(this.#context, byId("floors"));
    this.#controls = new Controls(byId("controls"), this.#context.texts, {
      zoomed: (factor) => this.#zoomBy(factor),
      upright: () => this.#map.turnUpright(),
    });
    this.#tellLanguage();
    this.#strip.show(this.#floor(store.state), new Set());
    this.#map = new MapView(byId("map"), this.#padding(), {
      tapped: (tap) => this.#tapped(tap),
      turned: (radians) => this.#controls.turned(radians),
    });
    this.#showFloor(store.state, image);
    this.#reach.subscribe((found) => this.#reachChanged(found));
    void this.#reach.search(store.state);
    engine
      .ready()
      .then(loadParts, (error) => this.#say(this.#texts.of("noLibrary", { what: message(error) })));
    if (config.refused.length > 0) {
      this.#say(this.#texts.of("refused", { names: config.refused.join(", ") }));
    }
    this.#follow(store);
    this.#followWays(store.state);
    if (store.state.data !== null) void this.#loadData();
  }

  #joined(venue: Venue): Joined {
    const ids = [...new Set(venue.buildings.map((building) => building.venue))];
    return {
      venue,
      ids,
      tell: {
        depart: () => this.#texts.of("stepStart"),
        into: ({ building }) => {
          const name = nameIn(this.#texts.language, building.venueNames);
          return this.#texts.of("stepInto", { name });
        },
        arrive: () => this.#texts.of("stepArrive"),
      },
    };
  }

  // Once it comes, the first way leaves the floor that the address names, or that somebody chose
  // meanwhile; each later one is shown from its start.
  #followWays(state: State): void {
    let isFirst = true;
    this.#way.subscribe((found) => {
      if (found.kind === "searching") return;
      const { map, place, isOverview } = this.#context.store.state;
      const staysHere = place !== null || isOverview || (isFirst && map !== null);
      isFirst = false;
      this.#wayChanged(found.kind === "found" ? found.way : null, staysHere);
    });
    void this.#way.search(state);
    if (state.place !== null && state.map === null) this.#showPlace(state);
  }

  // An address may be older than the venue is: what it names and is not there any more is left out.
  #known(state: State): State {
    const named = [state.place, state.from, ...state.via, state.to];
    const isKnown = (end: End) => isThere(this.#context, end);
    if (named.every((end) => end === null || isKnown(end))) return state;
    this.#warn(this.#texts.of("notThere"));
    const orNull = (end: End | null) => (end !== null && isKnown(end) ? end : null);
    return {
      ...state,
      place: orNull(state.place),
      from: orNull(state.from),
      via: state.via.filter(isKnown),
      to: orNull(state.to),
    };
  }

  #follow(store: Store): void {
    followAddress(store, (state) => this.#known(state));
    store.subscribe((state, before) => this.#changed(state, before));
    onTheme(() => {
      this.#map.themeChanged();
      this.#showFloor(store.state, null);
    });
    addEventListener("keydown", (event) => this.#printByKey(event));
    addEventListener("resize", () => this.#layoutChanged());
    byId("to-search").addEventListener("click", () => byId("panel").querySelector("input")?.focus());
  }

  // The floor that a state shows. A venue without any floor has nothing to show.
  #floor({ map }: State): Floor {
    const { floors, firstFloor } = this.#context.venue;
    const floor = floors.get(map ?? NaN) ?? firstFloor;
    if (floor === null) throw new Error(this.#texts.of("nothingFound"));
    return floor;
  }

  #signedOf(floor: Floor): SignedFloor {
    const signed = this.#signed.get(floor.map) ?? signedFloor(this.#context.venue, floor);
    this.#signed.set(floor.map, signed);
    return signed;
  }

  #found(): FoundWay | null {
    const { found } = this.#way;
    return found.kind === "found" ? found : null;
  }

  #changed(state: State, before: State): void {
    // Another venue is another page, with documents and a library of its own, once the address says so.
    if (state.venue !== before.venue) return afterPicture(() => location.reload());
    if (state.language !== before.language) {
      this.#tellLanguage();
      this.#controls.refresh();
      this.#panel.refresh();
    }
    if (state.isOverview && !hasOverview(this.#context.venue)) {
      return this.#context.store.update({ isOverview: false });
    }
    // Whatever is looked for is on a floor.
    const names = ["map", "place", "from", "to"] as const;
    const isLeft = before.isOverview && names.some((name) => state[name] !== before[name]);
    if (state.isOverview && isLeft) return this.#context.store.update({ isOverview: false });
    if (state.data !== null && before.data === null) void this.#loadData();
    const isChosen = state.place !== null && !isSameEnd(state.place, before.place);
    if (this.#floor(state) !== this.#floor(before)) this.#showFloor(state, null);
    else if (!isChosen) this.#draw(state);
    if (isChosen) this.#showPlace(state);
  }

  #tellLanguage(): void {
    const { venue } = this.#context;
    const name = this.#config.name || nameIn(this.#texts.language, venue.names);
    document.documentElement.lang = this.#texts.language;
    document.title = name === "" ? this.#texts.of("title") : name;
    byId("to-search").textContent = this.#texts.of("toSearch");
    this.#sheet.hold(this.#sheet.height);
  }

  // The image of the floor is made anew, unless it is there already.
  #showFloor(state: State, ready: FloorImage | null): void {
    const floor = this.#floor(state);
    const signed = this.#signedOf(floor);
    // It was made of one floor alone: what leads there from others may have changed the drawing.
    const isSame = ready?.signed.floor.map === floor.map && ready.signed.drawing === signed.drawing;
    const isReady = isSame && ready.isDark === isDark();
    if (!isReady) ready?.release();
    const image = isReady ? ready : new FloorImage(signed, isDark());
    this.#map.showFloor(image);
    byId("map").setAttribute("aria-label", this.#texts.of("map", { floor: floorName(this.#context, floor) }));
    this.#draw(state);
  }

  #draw(state: State): void {
    const floor = this.#floor(state);
    const { signs } = this.#signedOf(floor);
    const found = viewOf(state) === "home" ? null : this.#found();
    const closed = new Set(closedMovers(this.#context.venue, state));
    const isClosed = (sign: Sign) => sign.mover !== null && closed.has(sign.mover);
    // Among the data movers are told of by their arrows.
    const isHidden = (sign: Sign) =>
      isClosed(sign) ||
      isMarked(this.#context, state, sign) ||
      (state.data !== null && sign.mover !== null);
    this.#map.showSigns(signs, isHidden, this.#texts.language);
    this.#map.showClosed(signs.filter(isClosed));
    this.#map.showWay(shownWay(this.#context, state, found, floor, signs));
    void this.#showOverview(state);
    this.#data?.show(floor, state, this.#map.colours);
    this.#showReach(floor);
    if (this.#reach.found === null) {
      this.#strip.show(floor, new Set(found?.way.segments.map((segment) => segment.mapId)));
    }
  }

  #wayChanged(way: Way | null, staysHere: boolean): void {
    const { store } = this.#context;
    const walked = JSON.stringify(way?.segments.map(({ points }) => points) ?? []);
    // Only its words are new, or what it might be compared with.
    if (walked === this.#shownWay) return this.#draw(store.state);
    this.#shownWay = walked;
    const first = way?.segments[0]?.mapId;
    const map = this.#floor(store.state).map;
    if (first === undefined || first === map || staysHere) this.#draw(store.state);
    else store.update({ map: first });
    // Whose card is open is seen.
    if (store.state.place !== null) return;
    this.#map.showPoints(linesOn(way, this.#floor(store.state).map).flat());
  }

  #showReach(floor: Floor): void {
    const { venue } = this.#context;
    const { found } = this.#reach;
    const walked = found && walkedOn(venue, floor, found.mm, found, shadeCount);
    this.#map.showReach(walked ?? []);
    if (found === null) return;
    const maps = [...found.mm.keys()].map((waypoint) => venue.waypoints.get(waypoint)?.map ?? NaN);
    this.#strip.show(floor, new Set(maps), "inReach");
  }

  // All that is in reach is shown on the floor where it begins.
  #reachChanged(found: Reach | null): void {
    const { store, venue } = this.#context;
    const [start] = found?.mm.keys() ?? [];
    const map = venue.waypoints.get(start ?? NaN)?.map;
    if (map !== undefined) store.update({ map });
    this.#draw(store.state);
    if (found === null) return;
    const walked = walkedOn(venue, this.#floor(store.state), found.mm, found, shadeCount);
    this.#map.showPoints(walked.flatMap(({ points }) => points));
  }

  // Where it is on this floor, or on the first where it is.
  #showPlace(state: State): void {
    const { venue, store } = this.#context;
    const { place } = state;
    const ids = waypointsOf(this.#context, place!);
    const spots = ids.map((id) => venue.waypoints.get(id)).filter((spot) => spot !== undefined);
    const map = this.#floor(state).map;
    const here = spots.filter((spot) => spot.map === map);
    const shown = here.length > 0 ? here : spots.filter((spot) => spot.map === spots[0]!.map);
    if (shown[0] !== undefined && shown[0].map !== map) store.update({ map: shown[0].map });
    // Its card is what was asked for: the map follows in the next picture.
    afterPicture(() => {
      this.#layoutChanged();
      this.#draw(store.state);
      if (isSameEnd(store.state.place, place)) this.#map.showPoints(shown.map((spot) => spot.at));
    });
  }

  #tapped({ at, sign, passage, reach }: Tap): void {
    const { store, venue } = this.#context;
    const { state } = store;
    const record = state.data === null ? null : this.#data?.at(this.#floor(state), at, reach) ?? null;
    if (record?.path !== undefined) return store.update({ path: record.path, place: null });
    if (record !== null) return this.#choose({ place: { kind: "waypoint", id: record.waypoint } });
    if (passage !== null) return this.#goOn(passage.toMap);
    if (sign?.place != null) return this.#choose({ place: endOfPlace(sign.place) });
    if (sign?.mover != null) return this.#choose({ place: endOfMover(sign.mover) });
    const waypoint = closestWaypoint(venue, this.#floor(state).map, at);
    if (waypoint !== null) this.#choose({ place: { kind: "waypoint", id: waypoint } });
  }

  // What is tapped fills the end that is missing; else its card is opened.
  #choose({ place }: Pick<State, "place">): void {
    const { store } = this.#context;
    const { state } = store;
    if (viewOf(state) === "way" && state.from === null) store.update({ from: place });
    else if (viewOf(state) === "way" && state.to === null) store.update({ to: place });
    else store.update({ place });
  }

  #goOn(map: number): void {
    const { store } = this.#context;
    store.update({ map });
    this.#draw(store.state);
    this.#map.showPoints(linesOn(this.#found()?.way ?? null, map).flat());
  }

  #flyTo(map: number, at: Point): void {
    this.#context.store.update({ map });
    this.#map.flyTo(at);
  }

  async #share(): Promise<void> {
    try {
      const { openShare } = await parts.share();
      openShare(this.#shown());
    } catch (error) {
      this.#failed(error);
    }
  }

  #zoomBy(factor: number): void {
    if (this.#context.store.state.isOverview) this.#overview?.zoomBy(factor);
    else this.#map.zoomBy(factor);
  }

  async #showOverview({ isOverview }: State): Promise<void> {
    byId("map").inert = isOverview;
    if (!isOverview) return this.#overview?.hide();
    try {
      const { Overview } = await parts.overview();
      this.#overview ??= new Overview(this.#context);
      if (this.#context.store.state.isOverview) this.#overview.show();
    } catch (error) {
      this.#failed(error);
    }
  }

  async #loadData(): Promise<void> {
    if (this.#data !== null) return;
    try {
      const { DataView } = await parts.data();
      const data = await DataView.load(this.#context, this.#documents, this.#config);
      this.#data ??= data;
      this.#map.add(this.#data.layer);
      this.#panel.refresh();
      this.#draw(this.#context.store.state);
    } catch (error) {
      this.#failed(error);
    }
  }

  async #print(): Promise<void> {
    try {
      const { print } = await parts.print();
      await print(this.#shown());
    } catch (error) {
      this.#failed(error);
    }
  }

  #shown(): Shown {
    const { state } = this.#context.store;
    return {
      context: this.#context,
      state,
      found: viewOf(state) === "way" ? this.#found() : null,
      floor: this.#floor(state),
      name: this.#config.name,
    };
  }

  #stops(state: State): (readonly number[])[] | null {
    if (state.from === null || state.to === null) return null;
    const start = startOf(this.#context, state.from);
    const stops = [...state.via, state.to].map((end) => waypointsOf(this.#context, end));
    return [start === null ? [] : [start], ...stops];
  }

  // The window as it stands is nothing to carry.
  #printByKey(event: KeyboardEvent): void {
    if (event.key !== "p" || !(event.ctrlKey || event.metaKey) || event.shiftKey || event.altKey) return;
    event.preventDefault();
    void this.#print();
  }

  #padding() {
    return paddingAround(byId("panel"), byId("floors"));
  }

  #layoutChanged(): void {
    // Before there is a map, nothing is covered.
    if (this.#map === undefined) return;
    this.#map.setPadding(this.#padding());
    if (this.#context.store.state.isOverview) void this.#showOverview(this.#context.store.state);
  }

  #say(text: string): void {
    this.#status.textContent = text;
    delete this.#status.dataset["isError"];
  }

  // For everybody to see.
  #warn(text: string): void {
    this.#say(text);
    this.#status.dataset["isError"] = "";
  }

  #failed(error: unknown): void {
    this.#warn(this.#texts.of("failed", { what: message(error) }));
  }
}

// Those that the configuration names, of those that the documents list.
function offeredVenues({ venues }: Config, { customer }: Documents): OfferedVenue[] {
  const listed = items(customer["venues"]).map((record) => ({
    id: integer(record["id"]) ?? 0,
    names: namesOf(record),
  }));
  return venues.length === 0 ? listed : listed.filter((each) => venues.includes(each.id));
}

function message(error: unknown): string {
  return error instanceof Error ? error.message : String(error);
}

export function start(beginning: Beginning): void {
  new App(beginning);
}
