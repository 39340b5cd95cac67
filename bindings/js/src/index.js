import { Hub } from "./Hub.js";
import { Tern } from "./Tern.js";
import { Venue } from "./Venue.js";

export { TernError } from "./TernError.js";
export { fetchDocuments } from "./documents.js";
export { FilesInMemory } from "./files.js";
export { Hub, Tern, Venue };

// The library, loaded anew: with a memory and a state of its own.
export function load(options) {
  return Tern.load(options);
}

let shared;

// The one that the functions below share, loaded when it is first needed.
function sharedTern() {
  shared ??= load();
  shared.catch(() => (shared = undefined));
  return shared;
}

Venue.open = async (options) => (await sharedTern()).open(options);
Venue.fetch = async (base, options) => (await sharedTern()).fetch(base, options);
Hub.open = async (options) => (await sharedTern()).hub(options);
