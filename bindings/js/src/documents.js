// Documents of a venue folder that lies on a server.
import { TernError, notReached, refused } from "./TernError.js";

const isMissing = (status) => status === 404 || status === 410;

async function documentAt(fetch, url, signal) {
  let response;
  try {
    response = await fetch(url, { signal });
    if (isMissing(response.status)) return undefined;
    if (response.ok) return new Uint8Array(await response.arrayBuffer());
  } catch (cause) {
    if (signal?.aborted) throw cause;
    throw new TernError(notReached, `${url}: ${cause.message}`, undefined, { cause });
  }
  throw new TernError(refused, `${url}: HTTP ${response.status}`);
}

// The ids of a document's list, as it gives them. What it is that is wrong with a document, the
// library says better.
function idsIn(bytes, name) {
  try {
    const list = JSON.parse(new TextDecoder().decode(bytes))[name];
    const items = Array.isArray(list) ? list : list.items;
    return items.map(({ id }) => id).filter(Number.isSafeInteger);
  } catch {
    return [];
  }
}

// A map of paths to documents: those that full.json and venue/<id>/full.json list. Of the venues
// that are wanted, or of the only one.
export async function fetchDocuments(base, { venues, signal, fetch = globalThis.fetch } = {}) {
  const folder = folderUrl(base);
  const documents = new Map();
  const get = async (path) => {
    const bytes = await documentAt(fetch, new URL(path, folder).href, signal);
    if (bytes !== undefined) documents.set(path, bytes);
    return bytes;
  };
  const customer = await get("full.json");
  const listed = venues ?? idsIn(customer, "venues");
  if (venues === undefined && listed.length !== 1) return documents;
  const getVenue = async (id) => {
    const venue = await get(`venue/${id}/full.json`);
    const buildings = idsIn(venue, "buildings");
    await Promise.all(buildings.map((each) => get(`venue/${id}/building/${each}/full.json`)));
  };
  await Promise.all(listed.map(getVenue));
  return documents;
}

// A folder's URL, from where this runs.
export function folderUrl(base) {
  const url = new URL(base, globalThis.document?.baseURI ?? globalThis.location?.href);
  if (!url.pathname.endsWith("/")) url.pathname += "/";
  return url;
}
