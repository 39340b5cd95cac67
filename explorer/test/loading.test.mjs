// What comes first, and what is answered before the rest is there.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, root } from "./support/modules.mjs";
import { Stage, pixelOf } from "./support/page.mjs";

const { readVenue, withOneFloor, signedFloor } = await modules("venue/read", "venue/signs");
const plazaFrame = [0, 0, 2400, 2240];
let stage;

before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

test("one floor alone gives the picture that all documents together give", () => {
  const document = (path) => JSON.parse(readFileSync(join(root, "data/plaza/venue/1", path), "utf8"));
  const venue = document("full.json");
  const buildings = [1, 2].map((id) => document(`building/${id}/full.json`));
  const whole = readVenue(venue, buildings);
  for (const [index, building] of whole.buildings.entries()) {
    for (const floor of building.floors) {
      const alone = readVenue(venue, [withOneFloor(buildings[index], floor.map)]);
      assert.deepEqual([...alone.floors.keys()], [floor.map]);
      const { drawing } = signedFloor(alone, alone.floors.get(floor.map));
      assert.equal(drawing, signedFloor(whole, floor).drawing);
      assert.deepEqual(alone.floors.get(floor.map).home, floor.home);
    }
    const first = readVenue(venue, [withOneFloor(buildings[index], null)]).firstFloor;
    assert.equal(first.map, building.firstFloor.map);
  }
});

test("the library is asked for after the documents of the first picture", async () => {
  await stage.with({}, (_, { asked }) => {
    const at = (name) => asked.findIndex((url) => url.endsWith(name));
    assert.ok(at("building/1/full.json") > 0);
    assert.ok(at("terncorekit.wasm") > at("building/1/full.json"), asked.join("\n"));
  });
});

test("a tap is answered before the library is there, on the picture that is there", async () => {
  await stage.with({ isReady: false }, async (page) => {
    await page.route("**/terncorekit.wasm", () => undefined);
    await page.reload();
    await page.locator("#floors button[aria-current]").waitFor();
    await page.locator("img.floor").evaluate((image) => (globalThis.first = image));
    await page.mouse.click(...(await pixelOf(page, [1900, 570], plazaFrame)));
    await page.locator(".card-name").waitFor();
    await page.waitForURL(/place=w\d+/);
    const image = page.locator("img.floor");
    assert.equal(await image.evaluate((each) => each === globalThis.first), true);
    await page.unrouteAll({ behavior: "ignoreErrors" });
  });
});

test("what the panel shows next begins at its top", async () => {
  await stage.with({ size: "phone" }, async (page) => {
    await page.locator(".handle").press("Enter");
    await page.locator(".panel-body").evaluate((body) => (body.scrollTop = 300));
    await page.getByRole("button", { name: "Elmwood Coffee" }).click();
    await page.getByRole("heading", { name: "Elmwood Coffee" }).waitFor();
    assert.equal(await page.locator(".panel-body").evaluate((body) => body.scrollTop), 0);
  });
});
