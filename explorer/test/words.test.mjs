// What things are called where the venue's own words do not do.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, root } from "./support/modules.mjs";
import { Stage, stepsIn } from "./support/page.mjs";

const { nameOfFloor } = await modules("panel/Context");
const { wrapped } = await modules("map/lines");

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

test("long names are broken at blanks until their lines are short", () => {
  assert.equal(wrapped("Quarry Bank"), "Quarry Bank");
  assert.equal(wrapped("Kestrel Jewellers"), "Kestrel\nJewellers");
  assert.equal(wrapped("The Old Book Shop"), "The Old\nBook Shop");
  assert.equal(wrapped("Spindle Department Store"), "Spindle\nDepartment\nStore");
  assert.equal(wrapped("Verkehrsamtsgebäude"), "Verkehrsamtsgebäude");
});

test("movers are called in the reader's language where the venue has no word for them", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025&lang=de" }, async (page) => {
    await stepsIn(page);
    const choices = await page.locator(".choice").allTextContents();
    assert.deepEqual(choices, ["Jeder Weg", "Ohne Treppe", "Stufenlos"]);
  });
});

test("many ways to get about are a list, of which one is chosen", async () => {
  const path = "venue/1/full.json";
  const venue = JSON.parse(readFileSync(join(root, "data/plaza", path), "utf8"));
  venue.pathTypes.items.find(({ name }) => name === "Lift").accessibility = 20;
  const other = await Stage.open({ files: { [`data/${path}`]: JSON.stringify(venue) } });
  try {
    await other.with({ hash: "#from=w14016&to=w12025&level=50" }, async (page) => {
      await stepsIn(page);
      const list = page.getByRole("combobox", { name: "How do you get about?" });
      assert.deepEqual(await list.locator("option").allTextContents(), [
        "Any way",
        "Without Stairs",
        "Without Escalator or Stairs",
        "Step-free",
      ]);
      assert.equal(await list.inputValue(), "50");
      await list.selectOption("20");
      await page.getByText(/Take the lift/).first().waitFor();
      await page.waitForURL(/level=20/);
      await list.selectOption("100");
      await page.waitForFunction(() => !location.hash.includes("level"));
    });
  } finally {
    await other.close();
  }
});

test("a floor that is called by a number is called a floor", () => {
  const texts = () => ({ language: "en", of: (key, { n }) => `${key} ${n}` });
  const nameOf = (name) => nameOfFloor({ texts }, { names: { name, others: new Map() } });
  assert.deepEqual(["-1", "2", "B2", "Hall 3"].map(nameOf), ["floorNumber -1", "floorNumber 2", "B2", "Hall 3"]);
});
