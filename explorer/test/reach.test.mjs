// How far one gets in some minutes.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { modules } from "./support/modules.mjs";
import { Stage } from "./support/page.mjs";

const { walkedOn, decodeAddress } = await modules("venue/walked", "state/address");

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

const floor = { map: 1, mmPerUnit: 1000 };
// Waypoints on a line, by their x; those of other maps are somewhere else.
function venueOn(line, walks, map = () => 1) {
  const spot = ([id, x]) => [Number(id), { waypoint: Number(id), map: map(Number(id)), at: [x, 0] }];
  return { waypoints: new Map(Object.entries(line).map(spot)), walks };
}
const upTo = (most) => ({ most, palest: most });
const told = (stretches) =>
  stretches.map(({ points: [[a], [b]], shade }) => [a, b, shade]).sort((a, b) => a[2] - b[2] || a[0] - b[0]);

test("a walk ends where one gets no farther", () => {
  const venue = venueOn({ 1: 0, 2: 10 }, [[1, 2]]);
  assert.deepEqual(told(walkedOn(venue, floor, new Map([[1, 0]]), upTo(4000), 2)), [[0, 2, 0], [2, 4, 1]]);
});

test("shades are of what is reached, the last of what is beyond its waypoints too", () => {
  const venue = venueOn({ 1: 0, 2: 4, 3: 20 }, [[1, 2], [2, 3]]);
  const range = { most: 9000, palest: 4000 };
  const stretches = walkedOn(venue, floor, new Map([[1, 0], [2, 4000]]), range, 2);
  assert.deepEqual(told(stretches), [[0, 2, 0], [2, 4, 1], [4, 9, 1]]);
});

test("a walk that is reached at both ends is walked from either to where they meet", () => {
  const venue = venueOn({ 1: 0, 2: 10 }, [[1, 2]]);
  const mm = new Map([[1, 0], [2, 4000]]);
  assert.deepEqual(told(walkedOn(venue, floor, mm, upTo(10_000), 2)), [
    [0, 5, 0],
    [10, 9, 0],
    [5, 7, 1],
    [9, 7, 1],
  ]);
});

test("what lies elsewhere, what nobody reaches and a map without a scale have nothing to show", () => {
  const line = { 1: 0, 2: 10, 3: 20 };
  const mm = new Map([[1, 0]]);
  const elsewhere = venueOn(line, [[1, 2]], (id) => id);
  assert.deepEqual(walkedOn(elsewhere, floor, mm, upTo(4000), 2), []);
  assert.deepEqual(walkedOn(venueOn(line, [[2, 3]]), floor, mm, upTo(4000), 2), []);
  assert.deepEqual(walkedOn(venueOn(line, [[1, 2]]), { map: 1, mmPerUnit: null }, mm, upTo(4000), 2), []);
  const there = venueOn({ 1: 0, 2: 0 }, [[1, 2]]);
  assert.deepEqual(walkedOn(there, floor, mm, upTo(4000), 2), []);
});

test("an address names minutes that may be asked for, and no others", () => {
  assert.equal(decodeAddress("#reach=10").reach, 10);
  for (const wrong of ["3", "05", "-2", "x"]) assert.equal(decodeAddress(`#reach=${wrong}`).reach, null);
});

test("from a place it is shown how far one gets, on every floor, and what is there", async () => {
  await stage.with({ hash: "#place=w22001" }, async (page) => {
    await page.getByRole("button", { name: "How far in 5 min?" }).click();
    await page.getByText(/^Places in reach: \d+$/).first().waitFor();
    await page.waitForURL(/from=w22001&reach=5/);
    const count = () => page.locator(".reach-row").count();
    const five = await count();
    const floors = await page.getByRole("button", { name: /, in reach/ }).allTextContents();
    assert.deepEqual(floors, ["1", "G", "LG"]);
    // The nearest first: who stands at an exit is there.
    const lengths = (await page.locator(".reach-row .step-length").allTextContents()).map(parseFloat);
    assert.deepEqual(lengths, [...lengths].sort((a, b) => a - b));
    assert.equal(lengths[0], 0);
    await page.getByRole("button", { name: "2 min", exact: true }).click();
    await page.waitForFunction(
      (before) => document.querySelectorAll(".reach-row").length < before,
      five,
    );
    await page.waitForURL(/reach=2/);
    // Step-free without lifts it ends on its floor, and on that of the other hall.
    const two = await count();
    const lifts = "11001,11002,21001,21002";
    await page.evaluate((closed) => (location.hash += `&level=0&closed=${closed}`), lifts);
    await page.waitForFunction((before) => document.querySelectorAll(".reach-row").length < before, two);
    const left = await page.getByRole("button", { name: /, in reach/ }).allTextContents();
    assert.equal(left.length, 1);
  });
});

test("what is in reach can be gone to, and pressed again the minutes show nothing", async () => {
  await stage.with({ hash: "#from=d7&reach=2" }, async (page) => {
    const two = page.getByRole("button", { name: "2 min", exact: true });
    await page.locator(".legend").waitFor();
    assert.equal(await two.getAttribute("aria-pressed"), "true");
    await two.focus();
    await page.keyboard.press("Enter");
    await page.locator(".legend").waitFor({ state: "detached" });
    await page.waitForURL((url) => !/reach/.test(url.href));
    // The focus stays on what was pressed.
    await page.keyboard.press("Enter");
    await page.locator(".reach-row").nth(1).click();
    await page.locator(".step-text").first().waitFor();
    assert.equal(await page.locator(".legend").isVisible(), false);
    await page.goBack();
    await page.locator(".legend").waitFor();
  });
});
