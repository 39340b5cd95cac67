#!/usr/bin/env node
// What the explorer takes on a slow machine, in Chromium with the page's thread throttled four times
// (workers are not, as Chromium has no such brake): until the first picture of a floor stands, until a
// way that the address names is told, from a tap on the largest floor to the picture that answers it,
// and how many pictures a second are drawn while that floor is dragged. Of the sample, of a
// generated venue of 3 500 waypoints and, where TERN_REALDATA has it, of an airport of as many.
// Medians, beside what they shall be at most or at least; `scripts/bench explorer` builds what it needs.
import { execFileSync, spawnSync } from "node:child_process";
import { existsSync, mkdirSync, readFileSync, readdirSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { fileURLToPath } from "node:url";
import { gzipSync } from "node:zlib";
import { chromiumOptions } from "../tests/support/chromium.mjs";
import { startServer } from "../explorer/serve.mjs";
import { modules } from "../explorer/test/support/modules.mjs";
import { pixelOf } from "../explorer/test/support/page.mjs";

const root = fileURLToPath(new URL("../", import.meta.url));
const { chromium } = createRequire(join(root, "build/explorer-packages/here"))("playwright-core");
const { readVenue, signedFloor } = await modules("venue/read", "venue/signs");
const page = join(root, "build/explorer");
const tern = process.env.TERN_COMMAND ?? join(root, "build/bin/tern");
const slowness = 4;
const turns = Number(process.env.TERN_BENCH_RUNS ?? 5);

function median(values) {
  return [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
}

// A page that has just been opened, with a cache of its own.
async function inPage(browser, address, use) {
  const context = await browser.newContext({ viewport: { width: 390, height: 844 } });
  const opened = await context.newPage();
  const session = await context.newCDPSession(opened);
  await session.send("Emulation.setCPUThrottlingRate", { rate: slowness });
  await opened.addInitScript(() => {
    globalThis.pictures = new Promise((resolve) => {
      new PerformanceObserver((list) => {
        for (const entry of list.getEntries()) resolve(entry.renderTime || entry.startTime);
      }).observe({ type: "element", buffered: true });
    });
    globalThis.tells = new Promise((resolve) => {
      new MutationObserver(() => {
        if (document.querySelector(".step-text") !== null) resolve(performance.now());
      }).observe(document, { childList: true, subtree: true });
    });
  });
  await opened.goto(address);
  const result = await use(opened);
  await context.close();
  return result;
}

const firstPicture = (opened) => opened.evaluate(() => globalThis.pictures);
const wayTold = (opened) => opened.evaluate(() => globalThis.tells);

// When the floor stands, and what comes with it is done.
async function atRest(opened) {
  await opened.locator("#floors button[aria-current]").waitFor();
  await opened.waitForTimeout(3000);
}

// From the end of a tap to the picture that has the card that answers it: that of the nearest waypoint,
// where a finger finds no sign. Chromium says when the picture that follows an event was shown, in steps
// of 8 ms; it has the card where that stood when the event had been worked on.
async function tapAnswered(opened, { largest, spot }) {
  await atRest(opened);
  const answered = opened.evaluate(
    () =>
      new Promise((resolve, reject) => {
        let card = Infinity;
        new MutationObserver((_, observer) => {
          if (document.querySelector(".card-name") === null) return;
          observer.disconnect();
          card = performance.now();
        }).observe(document.getElementById("panel"), { childList: true, subtree: true });
        new PerformanceObserver((list) => {
          const tap = list.getEntriesByName("pointerup")[0];
          if (tap === undefined) return;
          if (card <= tap.processingEnd) resolve(tap.duration);
          else reject(new Error("the card comes after the picture that follows the tap"));
        }).observe({ type: "event", durationThreshold: 16 });
      }),
  );
  await opened.waitForTimeout(200);
  await opened.mouse.click(...(await pixelOf(opened, spot.at, largest.frame)));
  return answered;
}

async function dragged(opened) {
  await atRest(opened);
  const place = () => opened.locator("img.floor").evaluate((image) => image.style.transform);
  const before = await place();
  await opened.mouse.move(195, 400);
  await opened.mouse.down();
  await opened.evaluate(() => {
    globalThis.drawn = [];
    const draw = (now) => {
      globalThis.drawn.push(now);
      requestAnimationFrame(draw);
    };
    requestAnimationFrame(draw);
  });
  const begin = Date.now();
  for (let i = 0; Date.now() - begin < 2000; i += 1) {
    await opened.mouse.move(195 + 90 * Math.sin(i / 9), 400 + 90 * Math.cos(i / 7));
  }
  const drawn = await opened.evaluate(() => globalThis.drawn);
  if ((await place()) === before) throw new Error("the floor does not follow the pointer");
  await opened.mouse.up();
  return ((drawn.length - 1) * 1000) / (drawn.at(-1) - drawn[0]);
}

// The two that lie farthest apart in the venue's order, and have a way between them.
function endsOf(folder, spots) {
  const from = spots[0].waypoint;
  for (const { waypoint } of [...spots].reverse()) {
    const words = ["route", "--data", folder, "--from", String(from), "--to", String(waypoint)];
    if (spawnSync(tern, words).status === 0) return [from, waypoint];
  }
  throw new Error(`no way leads from ${from}`);
}

// What is asked of a venue: the ends of a long way, the floor that takes most to draw, and of its
// waypoints the one that is farthest from all signs.
function questionsOf(folder) {
  const read = (path) => JSON.parse(readFileSync(join(folder, path), "utf8"));
  const document = read("venue/1/full.json");
  const buildings = document.buildings.items.map(({ id }) => read(`venue/1/building/${id}/full.json`));
  const venue = readVenue(document, buildings);
  const floors = [...venue.floors.values()];
  const largest = floors.reduce((one, other) => (other.drawing.length > one.drawing.length ? other : one));
  const spots = [...venue.waypoints.values()].filter(({ waypoint }) => venue.joined.has(waypoint));
  const { signs } = signedFloor(venue, largest);
  const room = ({ at }) => Math.min(...signs.map((sign) => Math.hypot(at[0] - sign.at[0], at[1] - sign.at[1])));
  const here = spots.filter(({ map }) => map === largest.map);
  const spot = here.reduce((one, other) => (room(other) > room(one) ? other : one));
  return { ends: endsOf(folder, spots), spot, largest };
}

async function measured(name, venue, mostMs) {
  const server = await startServer({ page, venue });
  const browser = await chromium.launch(chromiumOptions);
  const { ends, largest, spot } = questionsOf(venue);
  const onLargest = `#map=${largest.map}`;
  const rows = [
    [`first picture, ms, at most ${mostMs}`, "", firstPicture],
    ["way told, ms", `#from=w${ends[0]}&to=w${ends[1]}`, wayTold],
    ["tap answered, ms, at most 100", onLargest, (opened) => tapAnswered(opened, { largest, spot })],
    ["drag, pictures a second, at least 30", onLargest, dragged],
  ];
  for (const [what, hash, use] of rows) {
    const values = [];
    for (let turn = 0; turn < turns; turn += 1) {
      values.push(await inPage(browser, server.address + hash, use));
    }
    const range = `${Math.round(Math.min(...values))} to ${Math.round(Math.max(...values))}`;
    console.log(`${name}: ${what}: ${Math.round(median(values))} (${range})`);
  }
  await browser.close();
  await server.close();
}

// Makes a venue of the command's words.
function made(name, ...words) {
  const folder = join(root, "build/bench-explorer", name);
  rmSync(folder, { recursive: true, force: true });
  execFileSync(tern, [...words, "--out", folder], { stdio: "ignore" });
  return folder;
}

const loaded = readdirSync(page).filter((name) => /\.(html|js|css|wasm)$/.test(name));
const sizes = loaded.map((name) => [name, gzipSync(readFileSync(join(page, name)), { level: 9 }).length]);
for (const [name, size] of sizes) console.log(`${name}: ${size} bytes compressed`);
console.log(`all: ${sizes.reduce((sum, [, size]) => sum + size, 0)} bytes compressed`);

mkdirSync(join(root, "build/bench-explorer"), { recursive: true });
await measured("sample", join(root, "data/plaza"), 1000);
await measured("3 500 waypoints", made("mall", "generate", "--waypoints", "3500"), 2000);
const airport = join(process.env.TERN_REALDATA ?? root, "network/NaritaAirport");
if (existsSync(airport)) await measured("airport", made("airport", "import", airport), 2000);
