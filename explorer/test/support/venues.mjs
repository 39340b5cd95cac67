// The venues that the page is held to: the sample, two that the command generates, and real buildings
// from open data where TERN_REALDATA names their folder, which are in no repository.
import { execFile } from "node:child_process";
import { existsSync, mkdirSync, readFileSync, rmSync } from "node:fs";
import { join } from "node:path";
import { promisify } from "node:util";
import { modules, root } from "./modules.mjs";

const { readJoined, nameIn } = await modules("venue/joined", "venue/names");
const run = promisify(execFile);
const tern = process.env.TERN_COMMAND ?? join(root, "build/bin/tern");
const out = join(root, "build/explorer-tests/venues");

// What the command prints. One that finds nothing says so in the same form.
export async function command(...words) {
  const { stdout } = await run(tern, words, { maxBuffer: 1e9 }).catch((error) => {
    if (error.code !== 1) throw error;
    return error;
  });
  return stdout;
}

function ofOpenData(name, path, ...words) {
  const data = process.env.TERN_REALDATA ?? "";
  const source = join(data, path);
  const isThere = data !== "" && existsSync(source);
  const skip = !isThere && `the data of ${path} is not here: TERN_REALDATA names no folder that holds it`;
  return { name, skip, isReal: true, make: ["import", source, ...words] };
}

const all = [
  { name: "the sample", folder: join(root, "data/plaza") },
  { name: "a mall", make: ["generate", "--seed", "11", "--floors", "5"] },
  { name: "joined venues", make: ["generate", "--venues", "2"], ids: [1, 2] },
  ofOpenData("a railway station", "network/ShinyokohamaStation"),
  ofOpenData("an airport", "network/NaritaAirport"),
  ofOpenData("an underground mall", "network/NagoyaUnimall"),
  ofOpenData("a campus", "imdf/campus"),
  ofOpenData("a station of a transit feed", "gtfs/boston", "--station", "place-pktrm"),
  ofOpenData("a fire station", "osm/fire-station.osm"),
];

export const venues = all.map((each) => ({
  folder: join(out, each.name.replaceAll(" ", "-")),
  ids: [1],
  skip: false,
  isReal: false,
  ...each,
}));

// Writes its folder anew, unless it is in the repository.
export async function makeVenue({ folder, make }) {
  if (make === undefined) return;
  rmSync(folder, { recursive: true, force: true });
  mkdirSync(out, { recursive: true });
  await command(...make, "--out", folder);
}

// The words by which a call of the command names the venue.
export function namedIn({ folder, ids }) {
  return ["--data", folder, ...(ids.length > 1 ? ["--venue", ids.join(",")] : [])];
}

// How a server shows it to the page.
export function served({ folder, ids }) {
  const files = ids.length > 1 ? { "config.json": JSON.stringify({ venues: ids }) } : {};
  return { venue: folder, files };
}

// As the page reads it.
export function readPages({ folder, ids }) {
  const document = (path) => JSON.parse(readFileSync(join(folder, path), "utf8"));
  const documents = ids.map((id) => {
    const venue = document(`venue/${id}/full.json`);
    const buildings = (venue.buildings?.items ?? []).map((each) => each.id);
    return {
      venue,
      buildings: buildings.map((each) => document(`venue/${id}/building/${each}/full.json`)),
    };
  });
  return readJoined(documents);
}

export const shownName = ({ names }) => nameIn("en", names);

// The places that the command and the page each know by a name that no other one has.
export function namedPlaces({ places }) {
  const isOnly = (all) => (name) => all.indexOf(name) === all.lastIndexOf(name);
  const isOnlyTold = isOnly(places.map(({ names }) => names.name));
  const isOnlyShown = isOnly(places.map(shownName));
  return places.filter(
    (place) => place.spots.length > 0 && isOnlyTold(place.names.name) && isOnlyShown(shownName(place)),
  );
}

// The same numbers each time (Numerical Recipes' generator).
export function randomFrom(seed) {
  let state = seed;
  return (below) => {
    state = (Math.imul(state, 1_664_525) + 1_013_904_223) >>> 0;
    return Math.floor((state / 2 ** 32) * below);
  };
}
