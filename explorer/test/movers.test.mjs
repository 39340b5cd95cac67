// Lifts, escalators and stairs: which waypoints they join, and what follows when one is out of order.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, root } from "./support/modules.mjs";
import { Stage, pixelOf, stepsIn } from "./support/page.mjs";

const { readVenue, signedFloor, decodeAddress, encodeAddress } = await modules(
  "venue/read",
  "venue/signs",
  "state/address",
);
const document = (path) => JSON.parse(readFileSync(join(root, "data/plaza", path), "utf8"));
const plaza = readVenue(document("venue/1/full.json"), [
  document("venue/1/building/1/full.json"),
  document("venue/1/building/2/full.json"),
]);
const moverAt = (waypoint) =>
  plaza.movers.find((mover) => mover.spots.some((spot) => spot.waypoint === waypoint));
const lift = moverAt(12004);
const escalator = moverAt(12008);

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

const closedRow = (page, name) => page.locator(".closed-item", { hasText: name });

test("a mover has the name that its paths share, and else that of its type", () => {
  assert.equal(lift.names.name, "Lift 1");
  assert.equal(lift.type.names.name, "Lift");
  const path = (id, name, waypointIds) => ({ id, name, pathTypeId: 2, waypointIds });
  const map = {
    id: 1,
    waypoints: { items: [1, 2, 3].map((id) => ({ id, coordinates: [id, 0] })) },
    paths: { items: [path(7, "A", [1, 2]), path(8, "B", [2, 3])] },
  };
  const pathTypes = { items: [{ id: 2, name: "Lift" }] };
  const [mover] = readVenue({ pathTypes }, [{ floors: { items: [{ map }] } }]).movers;
  assert.equal(mover.names.name, "Lift");
  assert.deepEqual(mover.edges, [[1, 2], [2, 3]]);
});

test("a mover joins each two waypoints of a path", () => {
  const pairs = new Set(lift.edges.map((edge) => [...edge].sort().join(" ")));
  assert.deepEqual(
    [...pairs].sort(),
    ["11001 12004", "11001 13001", "11001 14001", "12004 13001", "12004 14001", "13001 14001"],
  );
});

test("an address names movers, and movers of any type", () => {
  const state = decodeAddress("#place=m11001&from=w1&to=t2");
  assert.deepEqual(state.place, { kind: "mover", id: 11001 });
  assert.deepEqual(state.to, { kind: "pathType", id: 2 });
  assert.equal(encodeAddress(state), "#place=m11001&from=w1&to=t2");
});

test("a lift that is tapped can be put out of order, and ways keep off it at once", async () => {
  const way = "#from=w12012&to=w14016&level=0&map=12";
  await stage.with({}, async (page) => {
    const { signs, floor } = signedFloor(plaza, plaza.floors.get(12));
    const { at } = signs.find((sign) => sign.mover === lift);
    await page.mouse.click(...(await pixelOf(page, at, floor.frame)));
    await page.getByRole("heading", { name: "Lift 1" }).waitFor();
    await page.getByText("LG · G · 1 · 2, Garden Hall").waitFor();
    await page.getByRole("switch", { name: "Out of order" }).check();
    await page.waitForURL(/place=m11001&closed=11001/);
    await page.evaluate((hash) => (location.hash = `${hash}&closed=11001`), way);
    const around = await stepsIn(page);
    await closedRow(page, "Lift 1").getByRole("button", { name: "Open Lift 1 again" }).click();
    await page.waitForFunction(
      (before) => document.querySelectorAll(".step-text").length !== before,
      around.length,
    );
    const through = await stepsIn(page);
    // The other lift is farther.
    assert.ok(through.length < around.length, `${through} ${around}`);
    assert.equal(await closedRow(page, "Lift 1").isVisible(), false);
    await page.waitForURL((url) => !/closed/.test(url.href));
  });
});

test("a tap beside a mover chooses an end as any other tap does", async () => {
  const { signs, floor } = signedFloor(plaza, plaza.floors.get(12));
  const ofTypes = new Map(signs.map((sign) => [sign.mover?.type.id, sign]));
  ofTypes.delete(undefined);
  assert.equal(ofTypes.size, 3);
  for (const [index, { at }] of [...ofTypes.values()].entries()) {
    // On the edge of what a finger touches, and beside it.
    const aside = [9, 13, 24][index];
    const [missing, there] = index % 2 === 0 ? ["from", "to"] : ["to", "from"];
    await stage.with({ hash: `#map=12&${there}=w12012` }, async (page) => {
      const [x, y] = await pixelOf(page, at, floor.frame);
      await page.mouse.click(x + aside, y + aside / 2);
      await page.waitForURL(new RegExp(`[#&]${missing}=[admw]\\d+`));
      await page.locator(".step-text").or(page.getByText("You are there already.")).first().waitFor();
    });
  }
});

test("what an address says is out of order counts from the first way on", async () => {
  const withOut = async (closed) => {
    let sum = "";
    await stage.with({ hash: `#from=w12012&to=w14016&level=0&closed=${closed}` }, async (page) => {
      await stepsIn(page);
      sum = await page.locator(".sum").textContent();
    });
    return sum;
  };
  assert.notEqual(await withOut(11001), await withOut(21001));
});

test("who stands at an escalator that is out of order is not led up it", async () => {
  const hash = "#from=w12008&to=w14016";
  await stage.with({ hash }, async (page) => {
    assert.match((await stepsIn(page)).join("\n"), /Take the escalator up to First Floor/);
  });
  await stage.with({ hash: `${hash}&closed=${escalator.id}` }, async (page) => {
    assert.doesNotMatch((await stepsIn(page)).join("\n"), /Take the escalator up to First Floor/);
  });
});

test("the list of what is out of order leads to each, by keyboard too", async () => {
  await stage.with({ hash: `#closed=11001,${escalator.id},99` }, async (page) => {
    assert.equal(await page.locator(".closed-item").count(), 2);
    await closedRow(page, "Lift 1").getByRole("button").last().focus();
    await page.keyboard.press("Enter");
    assert.equal(await page.locator(".closed-item").count(), 1);
    // The focus stays in the list.
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: escalator.names.name }).waitFor();
    assert.equal(await page.getByRole("switch").isChecked(), true);
    await page.getByRole("switch").focus();
    await page.keyboard.press("Space");
    await page.waitForFunction(() => /closed=99$/.test(location.hash));
  });
});

test("the nearest of a kind is led to from the middle of the map, which is said", async () => {
  await stage.with({}, async (page) => {
    await page.getByRole("button", { name: "Information", exact: true }).click();
    const steps = await stepsIn(page);
    assert.equal(steps.at(-1), "You have reached Information");
    await page.waitForURL(/from=w\d+&to=a3/);
    await page.getByText("This starts in the middle of the map").waitFor();
    await page.getByRole("button", { name: "Swap start and goal" }).click();
    await page.getByText("Start at Information").waitFor();
    assert.equal(await page.getByText("This starts in the middle of the map").count(), 0);
  });
});

test("from a known start the nearest of a kind is that by walk, out of order ones left out", async () => {
  await stage.with({ hash: "#from=w12012" }, async (page) => {
    await page.getByRole("button", { name: "Lift", exact: true }).click();
    await stepsIn(page);
    await page.waitForURL(/from=w12012&to=t2/);
    const near = await page.locator(".sum").textContent();
    await page.evaluate(() => (location.hash += "&closed=11001"));
    await page.waitForFunction(
      (before) => document.querySelector(".sum")?.textContent !== before,
      near,
    );
    assert.equal(await page.getByText("This starts in the middle").count(), 0);
  });
});
