// What the page tells of a way is what the command tells of it, however its ends were chosen.
import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { promisify } from "node:util";
import { modules, root } from "./support/modules.mjs";
import { Stage, pixelOf, search, stepsIn } from "./support/page.mjs";

const { readVenue } = await modules("venue/read");
const run = promisify(execFile);
const tern = process.env.TERN_COMMAND ?? join(root, "build/bin/tern");
const folder = join(root, "data/plaza");
const document = (path) => JSON.parse(readFileSync(join(folder, path), "utf8"));
const plaza = readVenue(document("venue/1/full.json"), [
  document("venue/1/building/1/full.json"),
  document("venue/1/building/2/full.json"),
]);
const destinations = plaza.places.filter((place) => place.kind === "destination");
const waypoints = [...plaza.waypoints.values()].filter(({ waypoint }) => plaza.joined.has(waypoint));
let stage;

before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

// The same numbers each time (Numerical Recipes' generator).
let state = 20_261_123;
function random(below) {
  state = (Math.imul(state, 1_664_525) + 1_013_904_223) >>> 0;
  return Math.floor((state / 2 ** 32) * below);
}

async function told(...words) {
  const { stdout } = await run(tern, [...words, "--data", folder, "--json"]);
  return JSON.parse(stdout);
}

async function answered(request) {
  const asked = run(tern, ["batch", "--data", folder]);
  asked.child.stdin.end(JSON.stringify(request));
  return JSON.parse((await asked).stdout);
}

// The steps of the route that the command finds between two names or waypoints.
async function stepsOf(from, to, level) {
  const ends = ["--from", String(from), "--to", String(to)];
  const { route } = await told("route", ...ends, "--accessibility", String(level));
  const [start, goal] = [route[0].points[0], route.at(-1).points.at(-1)];
  const asked = { op: "directions", from: start, to: goal, accessibility: level };
  const directions = await answered(asked);
  assert.deepEqual(directions.route, route);
  return directions.steps.map((step) => step.text);
}

async function assertSameSteps(page, from, to, level = 100) {
  const texts = await stepsOf(from, to, level);
  assert.ok(texts.length > 0);
  await page.waitForFunction(
    (last) => [...document.querySelectorAll(".step-text")].at(-1)?.textContent === last,
    texts.at(-1),
  );
  assert.deepEqual(await stepsIn(page), texts, `${from} to ${to}`);
}

test("twenty-five pairs found by search have the command's steps", async () => {
  await stage.with({}, async (page) => {
    for (let pair = 0; pair < 25; pair += 1) {
      const from = destinations[random(destinations.length)];
      const others = destinations.filter((each) => each !== from);
      const to = others[random(others.length)];
      await search(page, "Find a place", to.names.name);
      await page.getByRole("heading", { name: to.names.name }).waitFor();
      await page.getByRole("button", { name: "Directions" }).click();
      await search(page, "Where do you start?", from.names.name);
      await assertSameSteps(page, from.names.name, to.names.name);
      await page.getByRole("button", { name: "Close" }).click();
    }
  });
});

// Opens the page anew, taps a point of a floor, and says which end of a way was chosen there.
async function tap(page, hash, { map, at }, name) {
  const floor = plaza.floors.get(map);
  await page.evaluate((next) => history.replaceState(null, "", next), `#map=${map}${hash}`);
  await page.reload();
  await page.locator("#floors button[aria-current]").waitFor();
  await page.mouse.click(...(await pixelOf(page, at, floor.frame)));
  const isThere = new RegExp(`[#&]${name}=[admw]\\d+`);
  await page.waitForURL(isThere);
  return isThere.exec(page.url())[0].split("=")[1];
}

// What the command calls it. A waypoint has to be the one that is nearest to where it was tapped.
async function commandEnd(end, { map, at }) {
  const id = Number(end.slice(1));
  const kind = { a: "amenity", d: "destination" }[end[0]];
  if (kind !== undefined) {
    return plaza.places.find((place) => place.kind === kind && place.id === id).names.name;
  }
  const { waypoint } = await told("closest", "--map", String(map), "--at", at.join(","));
  assert.equal(id, waypoint);
  return id;
}

// Since movers can be tapped, a tap beside one does not always choose an end: known, and not mended.
const known = { todo: "a tap beside a mover may choose no end" };
test("twenty-five pairs that are tapped have the command's steps, step-free", known, async () => {
  await stage.with({}, async (page) => {
    for (let pairs = 0; pairs < 25; ) {
      // Some way off the waypoint, as fingers are.
      const [start, goal] = [0, 1].map(() => {
        const { map, at } = waypoints[random(waypoints.length)];
        return { map, at: [at[0] + random(41) - 20, at[1] + random(41) - 20] };
      });
      const place = await tap(page, "", start, "place");
      const to = await tap(page, `&from=${place}&level=0`, goal, "to");
      // The command knows no mover by a name of its own.
      if ([place, to].some((end) => end.startsWith("m"))) continue;
      const ends = [await commandEnd(place, start), await commandEnd(to, goal)];
      if (ends[0] === ends[1]) continue;
      await assertSameSteps(page, ...ends, 0);
      pairs += 1;
    }
  });
});
