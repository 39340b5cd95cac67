// What the page tells of a way is what the command tells of it, however its ends were chosen.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Stage, pixelOf, search, stepsIn } from "./support/page.mjs";
import {
  command,
  makeVenue,
  namedIn,
  namedPlaces,
  randomFrom,
  readPages,
  served,
  shownName,
  venues,
} from "./support/venues.mjs";

// So many are searched for, and so many are tapped: fifty where the page is loaded soon.
const pairsOf = (venue) => (venue.isReal ? { searched: 10, tapped: 5 } : { searched: 25, tapped: 25 });
let loads = 0;
const stages = [];
let browser;

before(async () => {
  browser = await Stage.browser();
});
after(async () => {
  for (const stage of stages) await stage.close();
  await browser.close();
});

// A venue, and what the command says of it.
class Told {
  constructor(venue) {
    this.venue = venue;
    this.read = readPages(venue);
    this.named = namedPlaces(this.read);
  }

  async ask(...words) {
    return JSON.parse(await command(...words, "--json", ...namedIn(this.venue)));
  }

  async steps(from, to, level) {
    const ends = ["--from", String(from), "--to", String(to), "--accessibility", String(level)];
    const { steps } = await this.ask("route", ...ends, "--steps");
    return steps.map((step) => step.text);
  }

  // A place by its name, if no other one has that; anything else by its waypoints.
  end(text) {
    const [letter, id] = [text[0], Number(text.slice(1))];
    if (letter === "w") return { ids: [id] };
    if (letter === "m") return { ids: idsOf(this.read.movers.find((mover) => mover.id === id)) };
    const isMeant = (place) => place.kind === { a: "amenity", d: "destination" }[letter] && place.id === id;
    const named = this.named.find(isMeant);
    return named === undefined ? { ids: idsOf(this.read.places.find(isMeant)) } : { name: named.names.name };
  }

  // What the command is told of an end to start from.
  start({ name, ids }) {
    return name ?? ids.find((id) => this.read.joined.has(id)) ?? ids[0];
  }

  // And of a goal: of several waypoints the one that is cheapest to reach.
  async goal({ name, ids }, start, level) {
    if (name !== undefined || ids.length === 1) return name ?? ids[0];
    if (ids.includes(start)) return start;
    const ways = ids.map((id) => this.ask("route", ...["--from", start, "--to", id, "--accessibility", level].map(String)));
    const costs = (await Promise.all(ways)).map(({ route }) => route.at(-1)?.cost ?? Infinity);
    return ids[costs.indexOf(Math.min(...costs))];
  }
}

const idsOf = ({ spots }) => spots.map((spot) => spot.waypoint);

// A way, or that there is none, or that none is needed.
async function assertSameSteps(page, told, ends, level = 100) {
  const from = told.start(ends[0]);
  const to = await told.goal(ends[1], from, level);
  const texts = await told.steps(from, to, level);
  if (texts.length === 0) {
    return page.locator(".missed").or(page.getByText("You are there already.")).waitFor();
  }
  await page.waitForFunction(
    (last) => [...document.querySelectorAll(".step-text")].at(-1)?.textContent === last,
    texts.at(-1),
  );
  assert.deepEqual(await stepsIn(page), texts, `${from} to ${to}`);
}

// Opens the page anew, taps a pixel of a floor, and says which end of a way was chosen there.
async function tap(page, hash, { map, near, aside }, told, name) {
  const floor = told.read.floors.get(map);
  await page.goto(`${new URL(page.url()).origin}/?${loads++}#map=${map}${hash}`);
  await page.locator("#floors button[aria-current]").waitFor();
  const middle = await pixelOf(page, near, floor.frame);
  const pixel = [0, 1].map((axis) => Math.round(middle[axis]) + aside[axis]);
  const at = await pointAt(page, pixel, floor.frame);
  await page.mouse.click(...pixel);
  const isThere = new RegExp(`[#&]${name}=[admw]\\d+`);
  await page.waitForURL(isThere);
  const end = isThere.exec(page.url())[0].split("=")[1];
  // Elsewhere than on a sign the nearest waypoint is meant.
  if (end.startsWith("w")) {
    const { waypoint } = await told.ask("closest", "--map", String(map), "--at", at.join(","));
    assert.equal(Number(end.slice(1)), waypoint);
  }
  return end;
}

// Which point of the map a pixel of the window shows.
async function pointAt(page, [x, y], [left, top, width, height]) {
  const box = await page.locator("img.floor").boundingBox();
  return [left + ((x - box.x) / box.width) * width, top + ((y - box.y) / box.height) * height];
}

for (const [index, venue] of venues.entries()) {
  if (venue.ids.length > 1) continue;
  const random = randomFrom(20_261_123 + index);
  const pick = (all) => all[random(all.length)];
  let told;
  let stage;

  test(`${venue.name}: pairs found by search have the command's steps`, { skip: venue.skip }, async () => {
    await makeVenue(venue);
    told = new Told(venue);
    stage = await Stage.open({ browser, ...served(venue) });
    stages.push(stage);
    await stage.with({}, async (page) => {
      for (let pair = 0; pair < pairsOf(venue).searched; pair += 1) {
        const from = pick(told.named);
        const to = pick(told.named.filter((each) => each !== from));
        await search(page, "Find a place", shownName(to));
        await page.getByRole("heading", { name: shownName(to) }).waitFor();
        await page.getByRole("button", { name: "Directions" }).click();
        await search(page, "Where do you start?", shownName(from));
        await assertSameSteps(page, told, [from, to].map(({ names }) => names));
        await page.getByRole("button", { name: "Close" }).click();
      }
    });
  });

  test(`${venue.name}: pairs that are tapped have them, step-free`, { skip: venue.skip }, async () => {
    const spots = [...told.read.waypoints.values()].filter(({ waypoint }) => told.read.joined.has(waypoint));
    await stage.with({}, async (page) => {
      for (let pairs = 0; pairs < pairsOf(venue).tapped; ) {
        // Some way off the waypoint, as fingers are.
        const [start, goal] = [0, 1].map(() => {
          const { map, at } = pick(spots);
          return { map, near: at, aside: [random(15) - 7, random(15) - 7] };
        });
        const from = await tap(page, "", start, told, "place");
        const to = await tap(page, `&from=${from}&level=0`, goal, told, "to");
        if (from === to) continue;
        await assertSameSteps(page, told, [from, to].map((end) => told.end(end)), 0);
        pairs += 1;
      }
    });
  });
}
