// Ways over several stops, and several ways to one goal.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { modules } from "./support/modules.mjs";
import { Stage, search, stepsIn } from "./support/page.mjs";

const { bestOrder, toldRoute } = await modules("engine/bestOrder", "engine/toldRoute");

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

const stops = (page) => page.locator(".leg-name").allTextContents();

// A venue in which the walk from waypoint a to waypoint b costs what the table says.
function venueOf(costs) {
  return {
    matrix: async ({ from, to }) => ({
      columns: to.length,
      costs: Float64Array.from(from.flatMap((a) => to.map((b) => costs[a][b]))),
    }),
  };
}

test("stops are ordered by the walks between their nearest doors, what is out of reach last", async () => {
  const line = { 0: 0, 1: 9, 2: 4, 3: 1, 4: 10, 5: Infinity };
  const costs = Object.fromEntries(
    Object.entries(line).map(([a, x]) => [
      a,
      Object.fromEntries(Object.entries(line).map(([b, y]) => [b, Math.abs(x - y) || 0])),
    ]),
  );
  // The fourth has a door at either end, and nobody comes out of it where he did not go in; the
  // fifth has none.
  const stops = [[1], [5], [2], [3, 4], []];
  assert.deepEqual(await bestOrder(venueOf(costs), 0, stops, {}), [3, 2, 0, 1, 4]);
});

test("a route that is not the best is told in stretches, without arriving in between", async () => {
  const at = { 1: [0, 0], 2: [10, 0], 3: [20, 0], 4: [20, 10], 5: [10, 10] };
  const spots = (ids) => [{ mapId: 7, points: ids, mapPoints: ids.map((id) => at[id]) }];
  // From 1 to 4 it is shorter over 5; every other pair is best in a straight line of ids.
  const engine = {
    way: async ({ from, to: [to] }) => {
      const ids = from === 1 && to === 4 ? [1, 5, 4] : [1, 2, 3, 4].slice(from - 1, to);
      const steps = [
        { kind: "depart", text: `from ${from}`, mm: 10, seconds: 1 },
        ...ids.slice(1, -1).map((id) => ({ kind: "turn", text: `at ${id}`, mm: 10, seconds: 1 })),
        { kind: "arrive", text: `at ${to}`, mm: 0, seconds: 0 },
      ];
      return { segments: spots(ids), steps, mm: 0, seconds: 0 };
    },
  };
  const way = await toldRoute(engine, spots([1, 2, 3, 4]), { level: null, language: "en" });
  // Parted at 2, where it goes straight on: the turn at 3 is not lost.
  assert.deepEqual(way.steps.map(({ text }) => text), ["from 1", "at 3", "at 4"].flat());
  assert.deepEqual([way.mm, way.seconds], [30, 3]);
});

test("a stop is added, told with its own steps, and taken away", async () => {
  await stage.with({ hash: "#from=w22001&to=d40" }, async (page) => {
    await stepsIn(page);
    await page.getByRole("button", { name: "Add a stop" }).click();
    await search(page, "Stop 1", "Coral Books");
    await page.locator(".leg-head").nth(1).waitFor();
    assert.deepEqual(await stops(page), ["Coral Books", "Lantern Audio"]);
    await page.waitForURL(/from=w22001&via=d\d+&to=d40/);
    const texts = await stepsIn(page);
    assert.equal(texts.filter((text) => text.startsWith("You have reached")).length, 2);
    const field = page.locator(".end", { hasText: "1" });
    await field.getByRole("button", { name: "Clear" }).click();
    await page.waitForFunction(() => !location.hash.includes("via"));
    assert.equal(await page.locator(".leg-head").count(), 0);
  });
});

test("a field for a stop that nobody fills goes away", async () => {
  await stage.with({ hash: "#from=w22001&to=d40" }, async (page) => {
    await stepsIn(page);
    await page.getByRole("button", { name: "Add a stop" }).press("Enter");
    await page.keyboard.type("cor");
    await page.getByRole("option", { name: "Coral" }).first().waitFor();
    await page.locator("#map").focus();
    await page.getByRole("combobox", { name: "Stop 1" }).waitFor({ state: "detached" });
  });
});

test("what is tapped on the way can be made a stop", async () => {
  await stage.with({ hash: "#from=w22001&to=d40&place=d7" }, async (page) => {
    await page.getByRole("button", { name: "Add a stop" }).click();
    await page.locator(".leg-head").nth(1).waitFor();
    await page.waitForURL(/via=d7&to=d40/);
  });
});

test("stops are put in the order in which they are soonest visited", async () => {
  const seconds = async (page) => {
    await page.locator(".leg-head").nth(3).waitFor();
    const lengths = await page.locator(".sum span").textContent();
    return Number.parseInt(lengths, 10);
  };
  await stage.with({ hash: "#from=w22001&via=d7,d60,a4&to=d40" }, async (page) => {
    const before = await seconds(page);
    const listed = await stops(page);
    await page.getByRole("button", { name: "Best order" }).click();
    await page.waitForFunction(() => !location.hash.includes("via=d7,d60,a4&to=d40"));
    await page.waitForFunction(
      (first) => document.querySelector(".leg-name")?.textContent !== first,
      listed[0],
    );
    assert.ok((await seconds(page)) < before);
    assert.deepEqual((await stops(page)).sort(), listed.sort());
    assert.match(await page.locator("#status").textContent(), /^In the best order: |min/);
  });
});

test("a stop that is out of reach is named with what reaches it, and the others are visited", async () => {
  // Without both lifts nobody gets step-free from one floor to another.
  const hash = "#from=w12012&via=d40&to=w12025&level=0&closed=11001,11002";
  await stage.with({ hash }, async (page) => {
    await page.getByText("There is no way like this to Lantern Audio.").waitFor();
    assert.deepEqual(await stops(page), ["Near Poppy Records"]);
    await page.getByRole("button", { name: /gets there/ }).click();
    await page.locator(".leg-head").nth(1).waitFor();
    assert.equal(await page.locator(".missed").count(), 0);
    await page.waitForURL((url) => !/level=0/.test(url.href));
  });
});

test("other ways stand beside the best one; one that is chosen is told and drawn", async () => {
  await stage.with({ hash: "#from=w12012&to=w14016" }, async (page) => {
    await page.getByText(/Take the escalator up to First Floor/).waitFor();
    const lift = page.getByRole("radio", { name: /G → 2.*Lift/ });
    assert.equal(await page.getByRole("radio", { name: /G → 1 → 2/ }).first().isChecked(), true);
    await lift.check();
    await page.getByText(/Take the lift to Second Floor/).waitFor();
    await page.waitForURL(/way=1/);
    const steps = await stepsIn(page);
    assert.equal(steps.filter((text) => /^(Start|You have reached)/.test(text)).length, 2);
    assert.deepEqual(await page.locator(".is-on-way").allTextContents(), ["2", "G"]);
    // By keyboard too, one after the other.
    await lift.focus();
    await page.keyboard.press("ArrowLeft");
    await page.getByText(/Take the escalator up to First Floor/).waitFor();
    await page.waitForURL((url) => !/way=/.test(url.href));
    await page.keyboard.press("ArrowRight");
    await page.getByText(/Take the lift to Second Floor/).waitFor();
    // Another question begins with its best way.
    await page.getByRole("radio", { name: "Without Stairs" }).check();
    await page.waitForFunction(() => !location.hash.includes("way="));
  });
});

test("an address names the way that was chosen", async () => {
  await stage.with({ hash: "#map=14&from=w12012&to=w14016&way=1" }, async (page) => {
    await page.getByText(/Take the lift to Second Floor/).waitFor();
    // Where one begins to look stays as it is said.
    assert.equal(await page.locator("#floors button[aria-current]").textContent(), "2");
  });
  await stage.with({ hash: "#from=w12012&to=w14016&way=77" }, async (page) => {
    await page.getByText(/Take the escalator up to First Floor/).waitFor();
  });
});
