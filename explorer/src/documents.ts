// The venue's documents: each is fetched once, for the page and for the library.
import { integer, items, object, type Json } from "./venue/json.js";
import type { VenueDocuments } from "./venue/joined.js";
import { firstBuildingId } from "./venue/read.js";

export interface Documents {
  // By their paths, as the library takes them.
  readonly bytes: ReadonlyMap<string, Uint8Array>;
  readonly customer: Json;
  readonly venue: Json;
  readonly buildings: readonly Json[];
  // Those of the venues that this one is joined to.
  readonly others: readonly VenueDocuments[];
}

export class DocumentError extends Error {}

class MissingError extends DocumentError {}

async function fetched(base: string, path: string): Promise<Uint8Array> {
  let response: Response;
  try {
    response = await fetch(base + path);
  } catch {
    throw new DocumentError(path);
  }
  const isMissing = response.status === 404 || response.status === 410;
  if (isMissing) throw new MissingError(`${path} (${response.status})`);
  if (!response.ok) throw new DocumentError(`${path} (${response.status})`);
  return new Uint8Array(await response.arrayBuffer());
}

// A building that is listed and not there is left out, as the library leaves it out.
async function orNull(building: Promise<Json>): Promise<Json | null> {
  try {
    return await building;
  } catch (error) {
    if (error instanceof MissingError) return null;
    throw error;
  }
}

// The building that holds the map, or the venue's first one, is handed over as soon as it is there.
interface Wanted {
  readonly map: number | null;
  readonly arrived: (venue: Json, building: Json) => void;
}

function holds(building: Json, map: number): boolean {
  return items(building["floors"]).some((floor) => integer(object(floor["map"])["id"]) === map);
}

// `base` is a folder's address, with a slash at its end. `venue` null: the first one that is listed.
export async function fetchDocuments(
  base: string,
  venue: number | null,
  wanted: Wanted,
): Promise<Documents> {
  const bytes = new Map<string, Uint8Array>();
  const get = async (path: string) => {
    const contents = await fetched(base, path);
    bytes.set(path, contents);
    try {
      return object(JSON.parse(new TextDecoder().decode(contents)));
    } catch {
      throw new DocumentError(path);
    }
  };
  const customerComing = get("full.json");
  const id = venue ?? integer(items((await customerComing)["venues"])[0]?.["id"]);
  if (id === null) throw new DocumentError("full.json");
  const [customer, document] = await Promise.all([customerComing, get(`venue/${id}/full.json`)]);
  const listed = items(document["buildings"]);
  const ids = listed.map((each) => integer(each["id"])).filter((each) => each !== null);
  const first = firstBuildingId(document);
  const buildings = await Promise.all(
    ids.map(async (each) => {
      const building = await orNull(get(`venue/${id}/building/${each}/full.json`));
      if (building === null) return null;
      const isWanted = wanted.map === null ? each === first : holds(building, wanted.map);
      if (isWanted) wanted.arrived(document, building);
      return building;
    }),
  );
  const there = buildings.filter((each) => each !== null);
  return { bytes, customer, venue: document, buildings: there, others: [] };
}

// Adds further venues, all of whose documents lie in the same folder.
export async function withOthers(
  documents: Documents,
  base: string,
  venues: readonly number[],
): Promise<Documents> {
  const wanted = { map: null, arrived: () => undefined };
  const all = await Promise.all(venues.map((id) => fetchDocuments(base, id, wanted)));
  const bytes = new Map([documents, ...all].flatMap((each) => [...each.bytes]));
  return { ...documents, bytes, others: all };
}
