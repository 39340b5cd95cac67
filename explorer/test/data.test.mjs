// What the page says of the data to whoever maintains it.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, packages, root } from "./support/modules.mjs";
import { Stage, pixelOf } from "./support/page.mjs";

const { readVenue, readGraph, readFindings, spotsOf, recordAt, shadesOf, arrowOf } = await modules(
  "venue/read",
  "data/graph",
  "data/findings",
  "data/touched",
  "data/shades",
  "data/arrows",
);

const json = (path) => JSON.parse(readFileSync(join(root, "data/plaza", path), "utf8"));
const documents = [1, 2].map((id) => json(`venue/1/building/${id}/full.json`));
const plaza = readVenue(json("venue/1/full.json"), documents);
const graph = readGraph(plaza, [{ venue: json("venue/1/full.json"), buildings: documents }]);
const plazaFrame = [0, 0, 2400, 2240];
const findings = {
  findings: [
    { kind: "island", ids: [12019], map: 12, message: "waypoint 12019 is joined to nothing" },
    { kind: "island", ids: [11010, 11011], map: 11, message: "waypoints 11010, 11011 are alone" },
    { kind: "missingScale", ids: [13], map: 13, message: "map 13 has no scale" },
    { kind: "somethingNew", ids: [], map: null, message: "a kind of a later command" },
  ],
};
let stage;

before(async () => {
  const files = {
    "config.json": '{ "findings": "data/findings.json" }',
    "data/findings.json": JSON.stringify(findings),
  };
  stage = await Stage.open({ files });
});
after(() => stage.close());

test("neighbours are those that the library has", async () => {
  const { load } = await import("../../bindings/js/src/index.js");
  const text = (path) => readFileSync(join(root, "data/plaza", path), "utf8");
  const venue = (await load()).open({ documents: text });
  for (const id of plaza.waypoints.keys()) {
    const told = venue.ask({ op: "neighbors", node: id }).neighbors;
    const own = (graph.neighbours.get(id) ?? []).filter((each) => each.isOut);
    const ids = [...new Set(own.map((each) => each.waypoint))].sort((a, b) => a - b);
    assert.deepEqual(ids, [...new Set(told.map((each) => each.id))].sort((a, b) => a - b), `of ${id}`);
  }
  venue.close();
});

test("an arrow says where a mover leads, and whether it leads back", () => {
  const floor = plaza.floors.get(12);
  const path = (direction) => ({ id: 1, type: 3, direction, waypoints: [], map: 12, name: "" });
  const arrow = (waypoint, isOut, isIn) =>
    arrowOf(plaza, floor, { waypoint, path: path(0), isOut, isIn });
  assert.equal(arrow(13001, true, true), "↕ 1");
  assert.equal(arrow(13001, true, false), "↑ 1");
  assert.equal(arrow(13001, false, true), "1 ↓");
  assert.equal(arrow(11001, true, false), "↓ LG");
  assert.equal(arrow(11001, false, true), "LG ↑");
});

test("a finding is where its waypoints, its places or the ends of its path are", () => {
  const at = (kind, ids, map) =>
    spotsOf({ kind, ids, map, message: "" }, plaza, graph).map((spot) => spot.waypoint);
  assert.deepEqual(at("island", [12019, 12020], 12), [12019, 12020]);
  assert.deepEqual(at("longLink", [12005, 12019], 12), [12019]);
  assert.deepEqual(at("danglingId", [12001], 12), graph.paths.get(12001).waypoints);
  assert.deepEqual(at("missingScale", [12], 12), []);
  const [place] = plaza.places;
  const spots = place.spots.map((spot) => spot.waypoint);
  assert.deepEqual(at("unreachable", [place.id], place.spots[0].map), spots);
});

test("what is no answer of a check is none", () => {
  assert.equal(readFindings(null), null);
  assert.equal(readFindings({ findings: "none" }), null);
  assert.deepEqual(readFindings({ findings: [] }), []);
  const [odd] = readFindings({ findings: [{ kind: 3, ids: [1, "2", 1.5], map: "x" }] });
  assert.deepEqual(odd, { kind: "", ids: [1], map: null, message: "" });
});

test("a finger means a waypoint before a way, and nothing far from both", () => {
  const floor = plaza.floors.get(12);
  const [path] = [...graph.paths.values()].filter((each) => each.map === 12 && each.type === 1);
  const [from, to] = path.waypoints.map((id) => plaza.waypoints.get(id).at);
  const middle = [(from[0] + to[0]) / 2, (from[1] + to[1]) / 2];
  assert.deepEqual(recordAt(plaza, graph, floor, from, 5), { waypoint: path.waypoints[0] });
  assert.deepEqual(recordAt(plaza, graph, floor, middle, 5), { path: path.id });
  assert.equal(recordAt(plaza, graph, floor, [2390, 2230], 5), null);
});

test("each path type has a colour, and each level", () => {
  const used = new Set([...graph.paths.values()].map((each) => each.type));
  const types = shadesOf(plaza, used, "type");
  assert.deepEqual(types.map((each) => each.types), [[1], [2], [3], [4]]);
  assert.equal(new Set(types.map((each) => each.colour)).size, 4);
  const levels = shadesOf(plaza, used, "level");
  assert.deepEqual(levels.map((each) => each.types), [[1, 2], [3], [4]]);
  assert.deepEqual(levels.map((each) => each.accessibility), [0, 50, 100]);
});

test("the data is shown and hidden again by keys, and the address says so", async () => {
  await stage.with({}, async (page) => {
    await page.getByRole("button", { name: "Data", exact: true }).focus();
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: "Data", exact: true }).waitFor();
    await page.waitForFunction(() => location.hash === "#data=type");
    const legend = page.getByRole("list", { name: "Paths" });
    assert.match(await legend.textContent(), /Walking.*Lift.*Escalator.*Stairs/);
    await page.getByRole("radio", { name: "By accessibility" }).press("Space");
    await page.waitForFunction(() => location.hash === "#data=level");
    assert.match(await legend.textContent(), /level 0.*level 50.*level 100/);
    await page.getByRole("button", { name: "Hide the data" }).press("Enter");
    await page.locator(".chip").first().waitFor();
    await page.waitForFunction(() => location.hash === "");
  });
});

test("findings are listed by kind with their counts, and each leads to its spot", async () => {
  await stage.with({ hash: "#data=type" }, async (page, { asked }) => {
    await page.getByRole("heading", { name: "Findings: 4" }).waitFor();
    assert.ok(asked.some((url) => url.endsWith("/data/findings.json?venue=1")));
    const kinds = await page.locator(".kind-head").allTextContents();
    assert.deepEqual(kinds, ["Islands2", "Maps without a scale1", "somethingNew1"]);
    await page.locator(".kind-head").first().press("Enter");
    await page.getByRole("button", { name: /11010, 11011 are alone/ }).press("Enter");
    await page.locator("#floors button[aria-current][data-map='11']").waitFor();
    await page.getByText("Islands").waitFor();
    assert.equal(await page.locator("details[open]").count(), 1);
    const box = await page.locator("#map").boundingBox();
    const [x, y] = await pixelOf(page, plaza.waypoints.get(11010).at, plazaFrame);
    assert.ok(x > 400 && x < box.width && y > 0 && y < box.height, `it is at ${x}, ${y}`);
    await page.locator(".kind-head").nth(1).press("Enter");
    await page.getByRole("button", { name: /map 13/ }).press("Enter");
    await page.locator("#floors button[aria-current][data-map='13']").waitFor();
  });
});

test("where nobody names findings none are asked for, and it is said how to get them", async () => {
  const other = await Stage.open();
  try {
    await other.with({ hash: "#data=type" }, async (page, { asked }) => {
      await page.getByText("tern check --data … --json").waitFor();
      assert.deepEqual(asked.filter((url) => url.includes("findings")), []);
    });
  } finally {
    await other.close();
  }
});

test("a tapped waypoint tells of itself and its neighbours, which lead on", async () => {
  await stage.with({ hash: "#map=12&data=type" }, async (page) => {
    await page.locator(".legend").waitFor();
    const { at } = plaza.waypoints.get(12019);
    await page.mouse.click(...(await pixelOf(page, at, plazaFrame)));
    const record = page.locator(".record");
    await record.waitFor();
    const facts = await record.locator("dd").allTextContents();
    assert.equal(facts[0], "12019");
    assert.ok(facts.includes("12 · Ground Floor, Garden Hall"));
    assert.match(await record.textContent(), /joined to nothing/);
    const [neighbour] = graph.neighbours.get(12019);
    await record.getByRole("button", { name: String(neighbour.waypoint) }).click();
    await page.waitForFunction((id) => location.hash.includes(`place=w${id}`), neighbour.waypoint);
    assert.equal(await page.locator(".record dd").first().textContent(), String(neighbour.waypoint));
  });
});

test("a tapped way tells of its path", async () => {
  const path = [...graph.paths.values()].find((each) => {
    const [from, to] = each.waypoints.map((id) => plaza.waypoints.get(id));
    return from.map === 12 && to.map === 12 && Math.hypot(to.at[0] - from.at[0], to.at[1] - from.at[1]) > 100;
  });
  await stage.with({ hash: "#map=12&data=type" }, async (page) => {
    await page.locator(".legend").waitFor();
    const [from, to] = path.waypoints.map((id) => plaza.waypoints.get(id).at);
    const middle = [(from[0] + to[0]) / 2, (from[1] + to[1]) / 2];
    await page.mouse.click(...(await pixelOf(page, middle, plazaFrame)));
    await page.getByRole("heading", { name: `path ${path.id}` }).waitFor();
    await page.waitForFunction((id) => location.hash.includes(`path=${id}`), path.id);
    const links = await page.locator(".record .record-link").allTextContents();
    assert.deepEqual(links, path.waypoints.map(String));
  });
});

test("a place of the data tells of its waypoints", async () => {
  await stage.with({ hash: "#place=d14&data=level" }, async (page) => {
    const links = page.locator(".record .record-link");
    await links.first().waitFor();
    const place = plaza.places.find((each) => each.kind === "destination" && each.id === 14);
    assert.deepEqual(await links.allTextContents(), place.spots.map((spot) => String(spot.waypoint)));
  });
});

test("the data keeps nobody out, in light and in dark, and stays within the window", async () => {
  for (const colorScheme of ["light", "dark"]) {
    const options = { hash: "#map=12&data=type", colorScheme, bypassCSP: true, size: "small" };
    await stage.with(options, async (page) => {
      await page.locator(".kind-head").first().click();
      await page.addScriptTag({ path: packages.resolve("axe-core/axe.min.js") });
      const found = await page.evaluate(() => axe.run("#panel"));
      assert.deepEqual(found.violations.map((each) => each.id), []);
      const width = await page.evaluate(() => document.querySelector(".panel-body").scrollWidth);
      assert.ok(width <= 320, `the panel is ${width} wide`);
    });
  }
});
