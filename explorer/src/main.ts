// The page's first script: draws the first floor as soon as its document is there. Whatever else there
// is, such as the map, the panel and the library, waits for that picture.
import { fetchConfig, type Config } from "./config.js";
import { DocumentError, fetchDocuments, withOthers, type Documents } from "./documents.js";
import { FloorImage } from "./map/FloorImage.js";
import { fitted, paddingAround } from "./map/frame.js";
import { decodeAddress } from "./state/address.js";
import { applyColours, isDark } from "./theme/theme.js";
import { object, type Json } from "./venue/json.js";
import { readVenue, withOneFloor } from "./venue/read.js";
import { signedFloor } from "./venue/signs.js";

const mostWaiting = 500; // milliseconds

const map = document.getElementById("map")!;
const panel = document.getElementById("panel")!;
const status = document.getElementById("status")!;

// Its bytes: it is compiled where it runs, off the page's own thread.
async function fetchLibrary(): Promise<ArrayBuffer> {
  const response = await fetch("terncorekit.wasm");
  if (!response.ok) throw new Error(`terncorekit.wasm (${response.status})`);
  return response.arrayBuffer();
}

// Of the venue's document and the one building that is there.
function firstPicture(venue: Json, building: Json, wanted: number | null): FloorImage | null {
  const read = readVenue(venue, [withOneFloor(building, wanted)]);
  const floor = read.floors.get(wanted ?? NaN) ?? read.firstFloor;
  if (floor === null) return null;
  const image = new FloorImage(signedFloor(read, floor), isDark());
  const size = { width: map.clientWidth, height: map.clientHeight };
  image.put(fitted(floor.home, size, paddingAround(panel, null)), size);
  map.style.backgroundColor = image.ground;
  map.append(image.element);
  return image;
}

// Venues that the host names together are joined where their documents are made for that.
async function joinedTo(documents: Documents, { data, venues }: Config): Promise<Documents> {
  const others = venues.filter((id) => id !== documents.venue["id"]);
  if (others.length === 0 || !readVenue(documents.venue, documents.buildings).isInDegrees) return documents;
  return withOthers(documents, data, others);
}

async function begin(config: Config): Promise<void> {
  applyColours(config);
  const state = decodeAddress(location.hash);
  let image: FloorImage | null = null;
  const isOffered = config.venues.length === 0 || config.venues.includes(state.venue ?? NaN);
  const venue = (isOffered ? state.venue : null) ?? config.venues[0] ?? null;
  const own = await fetchDocuments(config.data, venue, {
    map: state.map,
    arrived: (document, building) => {
      image ??= firstPicture(document, building, state.map);
    },
  });
  const documents = await joinedTo(own, config);
  const first = image as FloorImage | null;
  // It is here already, but only run once the first picture stands, unless that takes long.
  await Promise.race([first?.decoded(), new Promise((passed) => setTimeout(passed, mostWaiting))]);
  const library = fetchLibrary();
  // Whoever needs it is told.
  library.catch(() => undefined);
  const { start } = await import("./app.js");
  start({ config, documents, library, image: first });
}

async function failed(error: unknown): Promise<void> {
  const { Texts } = await import("./texts/texts.js");
  const what = error instanceof DocumentError ? error.message : String(object(error)["message"]);
  status.textContent = new Texts(decodeAddress(location.hash).language).of("notLoaded", { what });
  status.dataset["isError"] = "";
}

fetchConfig().then(begin).catch(failed);
