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
let browser;

before(async () => {
  browser = await Stage.browser();
});
after(() => browser.close());

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

  // A place has a name that tells it from all others, or only its waypoints, as anything else has.
  ofPlace(place) {
    return { name: this.named.includes(place) ? place.names.name : null, ids: idsOf(place) };
  }

  end(text) {
    const [letter, id] = [text[0], Number(text.slice(1))];
    if (letter === "w") return { name: null, ids: [id] };
    if (letter === "m") {
      return { name: null, ids: idsOf(this.read.movers.find((mover) => mover.id === id)) };
    }
    const kind = { a: "amenity", d: "destination" }[letter];
    return this.ofPlace(this.read.places.find((place) => place.kind === kind && place.id === id));
  }

  // The waypoint of an end from which one starts.
  first({ ids }) {
    return ids.find((id) => this.read.joined.has(id)) ?? ids[0];
  }

  // Of several waypoints the one that is cheapest to reach.
  async cheapest(ids, start, level) {
    if (ids.length === 1) return ids[0];
    const words = (id) => ["--from", start, "--to", id, "--accessibility", level].map(String);
    const ways = await Promise.all(ids.map((id) => this.ask("route", ...words(id))));
    const costs = ways.map(({ route }) => route.at(-1)?.cost ?? Infinity);
    return ids[costs.indexOf(Math.min(...costs))];
  }
}

const idsOf = ({ spots }) => spots.map((spot) => spot.waypoint);

// A way, or that there is none, or that none is needed.
async function assertSameSteps(page, told, [start, goal], level = 100) {
  const first = told.first(start);
  // Who stands at one of a place's doors is there; the command leads on to the next door.
  if (goal.ids.includes(first)) return page.getByText("You are there already.").first().waitFor();
  const from = start.name ?? first;
  const to = goal.name ?? (await told.cheapest(goal.ids, first, level));
  const texts = await told.steps(from, to, level);
  if (texts.length === 0) return page.locator(".missed").waitFor();
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

async function searchPairs(stage, told, count, random) {
  const pick = (all) => all[random(all.length)];
  await stage.with({}, async (page) => {
    for (let pair = 0; pair < count; pair += 1) {
      const from = pick(told.named);
      const to = pick(told.named.filter((each) => each !== from));
      await search(page, "Find a place", shownName(to));
      await page.getByRole("heading", { name: shownName(to) }).waitFor();
      await page.getByRole("button", { name: "Directions" }).click();
      await search(page, "Where do you start?", shownName(from));
      await assertSameSteps(page, told, [from, to].map((place) => told.ofPlace(place)));
      await page.getByRole("button", { name: "Close" }).click();
    }
  });
}

async function tapPairs(stage, told, count, random) {
  const { waypoints, joined } = told.read;
  const spots = [...waypoints.values()].filter(({ waypoint }) => joined.has(waypoint));
  await stage.with({}, async (page) => {
    for (let pair = 0; pair < count; ) {
      // Some way off the waypoint, as fingers are.
      const [start, goal] = [0, 1].map(() => {
        const { map, at } = spots[random(spots.length)];
        return { map, near: at, aside: [random(15) - 7, random(15) - 7] };
      });
      const from = await tap(page, "", start, told, "place");
      const to = await tap(page, `&from=${from}&level=0`, goal, told, "to");
      if (from === to) continue;
      await assertSameSteps(page, told, [from, to].map((end) => told.end(end)), 0);
      pair += 1;
    }
  });
}

for (const [index, venue] of venues.entries()) {
  if (venue.ids.length > 1) continue;
  test(`ways on ${venue.name} have the command's steps`, { skip: venue.skip }, async (context) => {
    await makeVenue(venue);
    const told = new Told(venue);
    const stage = await Stage.open({ browser, ...served(venue) });
    context.after(() => stage.close());
    const random = randomFrom(20_261_123 + index);
    const { searched, tapped } = pairsOf(venue);
    await context.test("between ends found by search", () => searchPairs(stage, told, searched, random));
    await context.test("between ends tapped, step-free", () => tapPairs(stage, told, tapped, random));
  });
}
