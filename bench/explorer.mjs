#!/usr/bin/env node
// What the explorer takes on a slow machine, in Chromium with its CPU throttled four times: until the
// first picture of a floor stands, until a way that the address names is told, from a tap to its
// answer, and how many pictures a second are drawn while the map is dragged. Of the sample, and of a
// generated venue of 3 500 waypoints. Medians; `scripts/bench explorer` builds what it needs.
import { execFileSync } from "node:child_process";
import { readFileSync, readdirSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { fileURLToPath } from "node:url";
import { gzipSync } from "node:zlib";
import { chromiumOptions } from "../tests/support/chromium.mjs";
import { startServer } from "../explorer/serve.mjs";

const root = fileURLToPath(new URL("../", import.meta.url));
const { chromium } = createRequire(join(root, "build/explorer-packages/here"))("playwright-core");
const page = join(root, "build/explorer");
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

// From the end of a tap to the card that answers it.
async function tapAnswered(opened) {
  await opened.locator("#floors button[aria-current]").waitFor();
  await opened.waitForTimeout(3000);
  const answered = opened.evaluate(
    () =>
      new Promise((resolve) => {
        let begin = 0;
        addEventListener("pointerup", (event) => { begin = event.timeStamp; }, true);
        new MutationObserver(() => {
          if (document.querySelector(".card-name") !== null) resolve(performance.now() - begin);
        }).observe(document.getElementById("panel"), { childList: true, subtree: true });
      }),
  );
  await opened.waitForTimeout(200);
  const box = await opened.locator("img.floor").boundingBox();
  await opened.mouse.click(195, Math.min(Math.max(box.y + box.height / 4, 120), 600));
  return answered;
}

async function dragged(opened) {
  await opened.locator("#floors button[aria-current]").waitFor();
  await opened.waitForTimeout(3000);
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
  await opened.mouse.up();
  const drawn = await opened.evaluate(() => globalThis.drawn);
  return ((drawn.length - 1) * 1000) / (drawn.at(-1) - drawn[0]);
}

async function measured(name, venue, [from, to]) {
  const server = await startServer({ page, venue });
  const browser = await chromium.launch(chromiumOptions);
  const rows = [
    ["first picture, ms", "", firstPicture],
    ["way told, ms", `#from=w${from}&to=w${to}`, wayTold],
    ["tap answered, ms", "", tapAnswered],
    ["drag, pictures a second", "", dragged],
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

const loaded = readdirSync(page).filter((name) => /\.(html|js|css|wasm)$/.test(name));
const sizes = loaded.map((name) => [name, gzipSync(readFileSync(join(page, name)), { level: 9 }).length]);
for (const [name, size] of sizes) console.log(`${name}: ${size} bytes compressed`);
console.log(`all: ${sizes.reduce((sum, [, size]) => sum + size, 0)} bytes compressed`);

const mall = join(root, "build/bench-explorer");
execFileSync("rm", ["-rf", mall]);
const tern = process.env.TERN_COMMAND ?? join(root, "build/bin/tern");
execFileSync(tern, ["generate", "--out", mall, "--waypoints", "3500"]);
const { buildings } = JSON.parse(readFileSync(join(mall, "venue/1/full.json"), "utf8"));
const building = JSON.parse(
  readFileSync(join(mall, `venue/1/building/${buildings.items[0].id}/full.json`), "utf8"),
);
const ends = [building.floors.items[0], building.floors.items.at(-1)];
await measured("sample", join(root, "data/plaza"), [14016, 12025]);
await measured("3 500 waypoints", mall, ends.map((floor) => floor.map.waypoints.items[0].id));
