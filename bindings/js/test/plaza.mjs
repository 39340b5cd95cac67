// The sample venue, and what tests share.
import { readFileSync } from "node:fs";

export const plazaFolder = new URL("../../../data/plaza/", import.meta.url);

export function plazaDocument(path) {
  try {
    return readFileSync(new URL(path, plazaFolder));
  } catch {
    return undefined;
  }
}

const paths = [
  "full.json",
  "venue/1/full.json",
  "venue/1/building/1/full.json",
  "venue/1/building/2/full.json",
];
export const plazaDocuments = () =>
  Object.fromEntries(paths.map((path) => [path, plazaDocument(path)]));

// A service that fetch() would ask: answers requests by `respond(url, request)`.
export function fetchOf(respond) {
  const asked = [];
  const fetch = async (url, request = {}) => {
    asked.push(String(url));
    request.signal?.throwIfAborted();
    return respond(new URL(url), request);
  };
  return { fetch, asked };
}
