// At every width, by day and after dark, on every venue, by keyboard alone and without a network once
// the page is loaded: every floor is shown, and the way that is told is the command's. Each venue is
// shown at each width once, and in either light.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { assertOpenToAll, assertWithinWindow } from "./support/bars.mjs";
import { Stage, loaded, sizes, stepsIn, tabTo } from "./support/page.mjs";
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

let browser;

before(async () => {
  browser = await Stage.browser();
});
after(() => browser.close());

// The maps of the floors that the command lists.
async function listedMaps({ folder, ids }) {
  const maps = [];
  for (const id of ids) {
    const words = ["--data", folder, "--venue", String(id), "--json"];
    const { buildings } = JSON.parse(await command("floors", ...words));
    const own = buildings.flatMap(({ floors }) => floors.map((floor) => floor.mapId));
    assert.equal(own.length, JSON.parse(await command("info", ...words)).floors);
    maps.push(...own);
  }
  return maps.sort((a, b) => a - b);
}

// Shows one floor after the other, and gives their maps.
async function shownMaps(page, { floors }) {
  const maps = [];
  const select = page.locator("select.building");
  const buildings =
    (await select.count()) === 0
      ? [null]
      : await select.locator("option:not([value=overview])").evaluateAll((all) => all.map(({ value }) => value));
  for (const building of buildings) {
    if (building !== null) await select.selectOption(building);
    const buttons = page.locator("#floors li button");
    for (let index = 0; index < (await buttons.count()); index += 1) {
      await buttons.nth(index).press("Enter");
      const map = Number(await page.locator("#floors button[aria-current]").getAttribute("data-map"));
      const isDrawn = floors.get(map).drawing !== "";
      await page.waitForFunction((hasDrawing) => {
        const [image, ...others] = document.querySelectorAll("img.floor");
        if (image === undefined || others.length > 0) return false;
        return !hasDrawing || (image.complete && image.naturalWidth > 0);
      }, isDrawn);
      maps.push(map);
    }
  }
  return maps.sort((a, b) => a - b);
}

// Two places between which the command knows a way, with its steps.
async function someWay(venue, read, random) {
  const places = namedPlaces(read);
  for (let turn = 0; turn < 200; turn += 1) {
    const [from, to] = [0, 1].map(() => places[random(places.length)]);
    if (from === undefined || from === to) continue;
    const ends = ["--from", from.names.name, "--to", to.names.name];
    const told = JSON.parse(await command("route", ...ends, "--json", "--steps", ...namedIn(venue)));
    if (told.route.length > 0) return { from: shownName(from), to: shownName(to), steps: told.steps };
  }
  throw new Error(`${venue.name} has no two places with a way between them`);
}

async function type(page, name) {
  await page.keyboard.type(name);
  await page.getByRole("option", { name }).first().waitFor();
  await page.keyboard.press("Enter");
}

// Asks for a way from where the page begins, without a pointer.
async function askForWay(page, { from, to }) {
  await page.keyboard.press("Tab");
  assert.equal(await page.evaluate(() => document.activeElement.id), "to-search");
  await page.keyboard.press("Enter");
  await type(page, to);
  await page.getByRole("heading", { name: to }).waitFor();
  await tabTo(page, ".card .button.is-main");
  await page.keyboard.press("Enter");
  await type(page, from);
  return stepsIn(page);
}

for (const [index, venue] of venues.entries()) {
  test(`all holds everywhere on ${venue.name}`, { skip: venue.skip }, async (context) => {
    await makeVenue(venue);
    const read = readPages(venue);
    const maps = await listedMaps(venue);
    const random = randomFrom(20_261_123 + index);
    const stage = await Stage.open({ browser, ...served(venue) });
    context.after(() => stage.close());
    for (const [turn, size] of Object.keys(sizes).entries()) {
      const colorScheme = (index + turn) % 2 === 0 ? "light" : "dark";
      const where = `${sizes[size].width} pixels wide, ${colorScheme}`;
      await context.test(where, () =>
        stage.with({ size, colorScheme }, async (page) => {
          await page.locator(".chip, .row").first().waitFor();
          await loaded(page);
          await page.context().setOffline(true);
          await assertWithinWindow(page, where);
          await assertOpenToAll(page, where);
          const way = await someWay(venue, read, random);
          const steps = await askForWay(page, way);
          await assertWithinWindow(page, where);
          await assertOpenToAll(page, where);
          assert.deepEqual(await shownMaps(page, read), maps);
          assert.ok(steps.length > 1);
          if (venue.ids.length > 1) return;
          assert.deepEqual(steps, way.steps.map(({ text }) => text), `${way.from} to ${way.to}`);
        }),
      );
    }
  });
}
