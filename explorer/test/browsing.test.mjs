// What the panel offers before anybody types: categories, and what was looked at last.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, root } from "./support/modules.mjs";
import { Stage, search } from "./support/page.mjs";

const { Recent, Store, emptyState } = await modules("state/Recent", "state/Store", "state/State");

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

const destination = (id) => ({ kind: "destination", id });
const ids = (recent) => recent.ends.map(({ id }) => id);
const recentNames = (page) => page.locator(".recent .result-name").allTextContents();

// What a browser keeps, in a map.
function keeping(map) {
  return {
    getItem: (key) => map.get(key) ?? null,
    setItem: (key, value) => void map.set(key, value),
    removeItem: (key) => void map.delete(key),
  };
}

test("the last places come first, each once, as many as are listed", () => {
  globalThis.localStorage = keeping(new Map());
  const store = new Store(emptyState);
  const recent = new Recent(store, 1);
  for (const id of [1, 2, 3, 1, 4, 5, 6]) store.update({ place: destination(id) });
  assert.deepEqual(ids(recent), [6, 5, 4, 1, 3]);
  store.update({ place: { kind: "waypoint", id: 9 }, to: destination(3) });
  assert.deepEqual(ids(recent), [3, 6, 5, 4, 1]);
  // What stays in the state is not looked at anew.
  store.update({ place: null, map: 12 });
  assert.deepEqual(ids(recent), [3, 6, 5, 4, 1]);
});

test("places are kept for their venue, and what was kept wrongly is passed over", () => {
  const map = new Map();
  globalThis.localStorage = keeping(map);
  const store = new Store({ ...emptyState, place: destination(7) });
  assert.deepEqual(ids(new Recent(store, 1)), [7]);
  assert.deepEqual(ids(new Recent(new Store(emptyState), 1)), [7]);
  assert.deepEqual(ids(new Recent(new Store(emptyState), 2)), []);
  for (const key of map.keys()) map.set(key, "d1,<b>,w5,,a2,d1e9");
  assert.deepEqual(ids(new Recent(new Store(emptyState), 1)), [1, 2]);
});

test("where the browser keeps nothing, the places of this visit are listed all the same", () => {
  const refuse = () => {
    throw new Error("refused");
  };
  globalThis.localStorage = { getItem: refuse, setItem: refuse, removeItem: refuse };
  const store = new Store(emptyState);
  const recent = new Recent(store, 1);
  store.update({ place: destination(4) });
  assert.deepEqual(ids(recent), [4]);
  recent.clear();
  assert.deepEqual(ids(recent), []);
});

test("what was looked at last is offered, after a reload too, until it is cleared", async () => {
  await stage.with({}, async (page) => {
    assert.equal(await page.locator(".recent").isVisible(), false);
    await search(page, "Find a place", "Coral Books");
    await page.getByRole("heading", { name: "Coral Books" }).waitFor();
    await page.reload();
    await page.getByRole("heading", { name: "Coral Books" }).waitFor();
    await page.locator(".card").getByRole("button", { name: "Close" }).click();
    assert.deepEqual(await recentNames(page), ["Coral Books"]);
    await page.getByRole("button", { name: "Clear what was looked at last" }).click();
    assert.equal(await page.locator(".recent").isVisible(), false);
    await page.reload();
    await page.locator(".home").waitFor();
    assert.deepEqual(await recentNames(page), []);
  });
});

test("places are browsed by category, which the address names and back undoes", async () => {
  await stage.with({}, async (page) => {
    const places = () => page.locator(".home > .rows .result-name").allTextContents();
    const all = await places();
    const category = page.getByLabel("Category");
    await category.focus();
    await category.selectOption("Jewellery");
    const some = await places();
    assert.ok(some.length > 0 && some.length < all.length && some.includes("Kestrel Jewellers"));
    await page.waitForURL(/category=4/);
    assert.equal(await page.evaluate(() => document.activeElement.className), "select category");
    await page.goBack();
    await page.waitForFunction(
      (count) => document.querySelectorAll(".home > .rows .result-name").length === count,
      all.length,
    );
  });
});

test("the list of places goes on where one comes to its end, until all are there", async () => {
  await stage.with({}, async (page) => {
    const rows = page.locator(".home > .rows .result-name");
    const { items } = JSON.parse(readFileSync(join(root, "data/plaza/venue/1/full.json"), "utf8")).destinations;
    assert.ok((await rows.count()) < items.length / 2);
    while ((await rows.count()) < items.length) {
      const count = await rows.count();
      await rows.last().scrollIntoViewIfNeeded();
      await rows.nth(count).waitFor();
    }
    const names = await rows.allTextContents();
    assert.deepEqual(names.sort(), items.map(({ name }) => name).sort());
  });
});

test("a category that the venue does not have leaves all places", async () => {
  await stage.with({ hash: "#category=99&lang=de" }, async (page) => {
    await page.getByRole("button", { name: /Acorn/ }).waitFor();
    const chosen = page.getByLabel("Kategorie").locator("option:checked");
    assert.equal(await chosen.textContent(), "Alle Kategorien");
  });
});
