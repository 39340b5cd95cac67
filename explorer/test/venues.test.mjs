// Several venues beside each other, and all of their buildings from above.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, packages, root } from "./support/modules.mjs";
import { Stage, search, stepsIn } from "./support/page.mjs";

const { readJoined, joinedId } = await modules("venue/joined");

const command = process.env["TERN_COMMAND"] ?? join(root, "build/bin/tern");
const two = join(mkdtempSync(join(tmpdir(), "tern-venues-")), "two");
const config = { files: { "config.json": '{ "venues": [1, 2] }' } };
let stage;

before(async () => {
  execFileSync(command, ["generate", "--out", two, "--venues", "2"]);
  stage = await Stage.open({ venue: two, ...config });
});
after(() => stage.close());

const json = (path) => JSON.parse(readFileSync(join(two, path), "utf8"));
const documents = (id) => ({
  venue: json(`venue/${id}/full.json`),
  buildings: [1, 2].map((each) => json(`venue/${id}/building/${each}/full.json`)),
});

test("joined venues are one, with the places and the waypoints of each on its maps", () => {
  const venue = readJoined([documents(1), documents(2)]);
  assert.ok(venue.isInDegrees);
  assert.deepEqual(venue.buildings.map((each) => each.venue), [1, 1, 2, 2]);
  for (const spot of venue.waypoints.values()) {
    const [x, y, width, height] = venue.floors.get(spot.map).frame;
    const [across, down] = spot.at;
    assert.ok(across >= x && across <= x + width && down >= y && down <= y + height, `${spot.waypoint}`);
  }
  // What is shown of a floor at first is where its waypoints are.
  for (const { home, frame } of venue.floors.values()) assert.ok(home[2] > frame[2] / 2);
  const ids = venue.places.map((place) => `${place.kind} ${place.id}`);
  assert.equal(new Set(ids).size, ids.length);
  const theirs = documents(2).venue.destinations.items[0];
  const place = venue.places.find((each) => each.kind === "destination" && each.id === joinedId(1, theirs.id));
  assert.equal(place.names.name, theirs.name);
});

test("a venue by itself is not in degrees", () => {
  const folder = join(root, "data/plaza");
  const read = (path) => JSON.parse(readFileSync(join(folder, path), "utf8"));
  const plaza = readJoined([{ venue: read("venue/1/full.json"), buildings: [read("venue/1/building/1/full.json")] }]);
  assert.equal(plaza.isInDegrees, false);
});

test("a way leads across venues, as far and as long as the command says", async () => {
  const words = ["route", "--data", two, "--venue", "1,2", "--from", "12013", "--to", "111008"];
  const told = execFileSync(command, words).toString();
  const metres = Number(/^(\d+) m, about/m.exec(told)[1]);
  await stage.with({ hash: "#from=w12013&to=w111008" }, async (page) => {
    // With the turns of each venue, and by what one sees there.
    assert.deepEqual(await stepsIn(page), [
      "Start at Information",
      "Turn right after North Star Pharmacy on your right",
      "Turn right",
      "Turn left",
      "Turn right",
      "Go on into River Quarter",
      "Turn left at Hazel Audio",
      "Turn right after Tern Hearing on your left",
      "Turn left",
      "Go on into Garden Hall",
      "Turn left",
      "Take the stairs down to Lower Ground",
      "Turn left",
      "Turn right",
      "You have reached Baby Care",
    ]);
    const length = Number.parseInt(await page.locator(".sum span").textContent(), 10);
    assert.ok(Math.abs(length - metres) <= 2, `${length} m and ${metres} m`);
    const floors = await page.locator(".steps-floor").allTextContents();
    assert.deepEqual(floors, [
      "Ground Floor, Garden Hall, Meridian Quarter",
      "Ground Floor, Harbour Hall, River Quarter",
      "Ground Floor, Garden Hall, River Quarter",
      "Lower Ground, Garden Hall, River Quarter",
    ]);
  });
});

test("places of all venues are found, and ways lead to them without steps, too", async () => {
  await stage.with({ hash: "#from=w12013" }, async (page) => {
    await search(page, "Where do you want to go?", "Maple Department");
    const steps = await stepsIn(page);
    assert.equal(steps.at(-1), "You have reached Maple Department Store");
    assert.ok(steps.includes("Go on into River Quarter"));
    await page.getByRole("radio", { name: "Step-free" }).check();
    await page.waitForFunction(() => location.hash.includes("level=0"));
    assert.equal((await stepsIn(page)).at(-1), "You have reached Maple Department Store");
    assert.match(await page.evaluate(() => location.hash), /to=d1\d{9}/);
  });
});

test("within one of joined venues there are other ways, with what is closed left out", async () => {
  await stage.with({ hash: "#from=w12013&to=w14016" }, async (page) => {
    await page.getByRole("radio", { name: /G → 2.*Lift/ }).check();
    await page.getByText("Take the lift to Second Floor").waitFor();
    await page.evaluate(() => (location.hash += "&level=0&closed=11001,11002"));
    await page.getByText(/There is no way like this/).waitFor();
  });
});

test("how far one gets is told in metres within the start's venue, and that it ends there", async () => {
  await stage.with({ hash: "#from=w12013&reach=2" }, async (page) => {
    await page.locator(".legend").waitFor();
    const lengths = (await page.locator(".reach-row .step-length").allTextContents()).map(parseFloat);
    assert.ok(lengths.length > 10 && lengths.at(-1) > 40 && lengths.at(-1) <= 161, String(lengths));
    await page.getByText("Within Meridian Quarter").waitFor();
    assert.equal(await page.locator(".reach-row", { hasText: "River Quarter" }).count(), 0);
  });
});

test("that there are no other ways between venues is told", async () => {
  await stage.with({ hash: "#from=w12013&to=w111008" }, async (page) => {
    await page.getByText("Between venues the best way alone is told.").waitFor();
    await page.getByRole("button", { name: "Clear" }).last().click();
    await search(page, "Where do you want to go?", "North Star");
    await page.waitForFunction(() => /to=d\d+$/.test(location.hash));
    await stepsIn(page);
    assert.equal(await page.getByText("Between venues").count(), 0);
  });
});

test("stops in several venues are put into the order in which they are soonest visited", async () => {
  // The first stop is the next venue's, the second lies on the way there.
  const far = joinedId(1, documents(2).venue.destinations.items[0].id);
  await stage.with({ hash: `#from=w12013&via=d${far},a3&to=d5` }, async (page) => {
    await page.locator(".leg-head").nth(2).waitFor();
    const metres = async () => parseInt(await page.locator(".sum span").textContent(), 10);
    const before = await metres();
    await page.getByRole("button", { name: "Best order" }).click();
    await page.waitForFunction((first) => !location.hash.includes(`via=d${first}`), far);
    await page.waitForFunction(
      (most) => parseInt(document.querySelector(".sum span").textContent, 10) < most,
      before,
    );
  });
});

test("the buildings are chosen by venue", async () => {
  await stage.with({}, async (page) => {
    const groups = page.locator("select.building optgroup");
    assert.deepEqual(
      await groups.evaluateAll((all) => all.map((each) => each.label)),
      ["Meridian Quarter", "River Quarter"],
    );
    await groups.nth(1).locator("option").first().waitFor({ state: "attached" });
    await page.locator("select.building").selectOption("2");
    await page.waitForFunction(() => /map=11\d/.test(location.hash));
  });
});

test("all buildings are seen from above, north up, and one is opened by pointer or key", async () => {
  await stage.with({}, async (page, { asked }) => {
    await page.locator("select.building").selectOption({ label: "Overview" });
    const buildings = page.locator(".overview-building");
    await buildings.nth(3).waitFor();
    await page.waitForFunction(() => location.hash === "#overview=1");
    const names = await buildings.evaluateAll((all) => all.map((each) => each.getAttribute("aria-label")));
    assert.deepEqual(names, [
      "Open Garden Hall, Meridian Quarter",
      "Open Harbour Hall, Meridian Quarter",
      "Open Garden Hall, River Quarter",
      "Open Harbour Hall, River Quarter",
    ]);
    const [one, below, beside] = await Promise.all(
      [0, 1, 2].map((index) => buildings.nth(index).locator(".overview-edge").boundingBox()),
    );
    assert.ok(below.y > one.y + one.height && beside.x > one.x + one.width);
    assert.ok(Math.abs(beside.y - one.y) < 1);
    await buildings.nth(2).focus();
    await page.keyboard.press("Enter");
    await page.locator("#floors button[aria-current][data-map='112']").waitFor();
    assert.equal(await buildings.count(), 0);
    await page.locator("select.building").selectOption({ label: "Overview" });
    await buildings.nth(1).locator(".overview-edge").click();
    await page.locator("#floors button[aria-current][data-map='22']").waitFor();
    assert.ok(asked.every((url) => /^(http:\/\/127\.0\.0\.1|blob:|data:)/.test(url)));
  });
});

test("whoever looks for a place in the overview is led to its floor", async () => {
  await stage.with({ hash: "#overview=1", isReady: false }, async (page) => {
    await page.locator(".overview-building").first().waitFor();
    await search(page, "Find a place", "Maple Department");
    await page.locator("#floors button[aria-current]").waitFor();
    assert.equal(await page.locator(".overview-building").count(), 0);
  });
});

test("the overview fits the window, and keeps nobody out", async () => {
  for (const size of ["small", "phone", "wide"]) {
    for (const colorScheme of ["light", "dark"]) {
      const options = { hash: "#overview=1", size, colorScheme, bypassCSP: true, isReady: false };
      await stage.with(options, async (page) => {
        await page.locator(".overview-building").first().waitFor();
        const { width, height } = page.viewportSize();
        for (const edge of await page.locator(".overview-edge").all()) {
          const box = await edge.boundingBox();
          assert.ok(box.x >= 0 && box.y >= 0 && box.x + box.width <= width && box.y + box.height <= height);
        }
        if (size !== "small") return;
        await page.addScriptTag({ path: packages.resolve("axe-core/axe.min.js") });
        const found = await page.evaluate(() => axe.run(".overview"));
        assert.deepEqual(found.violations.map((each) => each.id), []);
      });
    }
  }
});

test("of venues that are not joined one is chosen", async () => {
  const customer = JSON.parse(readFileSync(join(root, "data/plaza/full.json"), "utf8"));
  const [own] = customer.venues.items;
  customer.venues.items.push({ ...own, id: 2, name: "Other Plaza" });
  const venue = JSON.parse(readFileSync(join(root, "data/plaza/venue/1/full.json"), "utf8"));
  const files = {
    "data/full.json": JSON.stringify(customer),
    "data/venue/2/full.json": JSON.stringify({ ...venue, id: 2, name: "Other Plaza" }),
  };
  for (const id of [1, 2]) {
    const path = `building/${id}/full.json`;
    files[`data/venue/2/${path}`] = readFileSync(join(root, "data/plaza/venue/1", path), "utf8");
  }
  const other = await Stage.open({ files });
  try {
    await other.with({}, async (page) => {
      assert.equal(await page.title(), "Linden Plaza");
      await page.getByRole("combobox", { name: "Venue" }).selectOption({ label: "Other Plaza" });
      await page.waitForFunction(() => document.title === "Other Plaza");
      await page.waitForFunction(() => location.hash === "#venue=2");
    });
  } finally {
    await other.close();
  }
});
