// All buildings from above: what is seen of them is moved and zoomed.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { modules, root } from "./support/modules.mjs";
import { Stage } from "./support/page.mjs";

const { fitted, zoomed, moved, kept, seen, centred } = await modules("globe/sight");

const command = process.env["TERN_COMMAND"] ?? join(root, "build/bin/tern");
const two = join(mkdtempSync(join(tmpdir(), "tern-overview-")), "two");
let stage;

before(async () => {
  execFileSync(command, ["generate", "--out", two, "--venues", "2", "--shops", "8"]);
  stage = await Stage.open({ venue: two, files: { "config.json": '{ "venues": [1, 2] }' } });
});
after(() => stage.close());

const ground = { left: 0, top: 0, width: 200, height: 100 };
const free = { left: 50, top: 20, width: 400, height: 400 };

test("all of the ground fits what is free, in its middle", () => {
  const sight = fitted(ground, free);
  assert.deepEqual(seen(sight, ground), { left: 50, top: 120, width: 400, height: 200 });
});

test("what is zoomed at stays where it is", () => {
  const sight = zoomed(fitted(ground, free), 3, [130, 200]);
  const part = (to, [x, y]) => [(x - to.left) / to.scale, (y - to.top) / to.scale];
  const before = part(fitted(ground, free), [130, 200]);
  assert.ok(part(sight, [130, 200]).every((each, i) => Math.abs(each - before[i]) < 1e-9));
  assert.equal(sight.scale, 6);
});

test("the middle of what is free stays on the ground, however far one moves", () => {
  const sight = kept(moved(fitted(ground, free), [9000, -9000]), ground, free);
  const { left, top, height } = seen(sight, ground);
  assert.deepEqual([left, top + height], [250, 220]);
  const part = { left: 100, top: 50, width: 20, height: 10 };
  const box = seen(centred(sight, part, free), part);
  assert.deepEqual([box.left + box.width / 2, box.top + box.height / 2], [250, 220]);
});

const firstEdge = (page) => page.locator(".overview-edge").first().boundingBox();

async function change(page, act) {
  const before = await firstEdge(page);
  await act();
  await page.waitForFunction(
    ({ x, y, width }) => {
      const now = document.querySelector(".overview-edge").getBoundingClientRect();
      return Math.abs(now.x - x) + Math.abs(now.y - y) + Math.abs(now.width - width) > 1;
    },
    before,
  );
  const after = await firstEdge(page);
  return { across: after.x - before.x, down: after.y - before.y, times: after.width / before.width };
}

test("the buildings are moved and zoomed by mouse, buttons and keys, and opened only by a click", async () => {
  await stage.with({ hash: "#overview=1", isReady: false }, async (page) => {
    await page.locator(".overview-building").nth(3).waitFor();
    const { mouse, keyboard } = page;
    const near = (a, b) => assert.ok(Math.abs(a - b) < 0.05 * Math.max(1, Math.abs(b)), `${a}, not ${b}`);
    const button = await change(page, () => page.getByRole("button", { name: "Zoom in" }).click());
    near(button.times, 1.8);
    const [x, y] = [850, 400];
    await mouse.move(x, y);
    const before = await firstEdge(page);
    const wheel = await change(page, () => mouse.wheel(0, -200));
    near(wheel.times, 1.44);
    // What is below the pointer stays there.
    near(wheel.across, (before.x - x) * 0.44);
    const drag = await change(page, async () => {
      await mouse.down();
      await mouse.move(x + 40, y + 30, { steps: 4 });
      await mouse.up();
    });
    near(drag.across, 40);
    near(drag.down, 30);
    near(drag.times, 1);
    await page.waitForFunction(() => location.hash === "#overview=1");
    await page.locator(".overview-building").first().focus();
    near((await change(page, () => keyboard.press("ArrowRight"))).across, -80);
    near((await change(page, () => keyboard.press("-"))).times, 1 / 1.5);
    // As far out as all of it is seen, and no farther.
    near((await change(page, () => page.getByRole("button", { name: "Zoom out" }).click())).times, 1.5 / 1.8 / 1.44);
    await page.locator(".overview-edge").first().click();
    await page.locator("#floors button[aria-current]").waitFor();
  });
});

test("a building that the keyboard comes to is brought into sight", async () => {
  await stage.with({ hash: "#overview=1", isReady: false, size: "phone" }, async (page) => {
    await page.locator(".overview-building").nth(3).waitFor();
    for (let i = 0; i < 4; i += 1) {
      await change(page, () => page.getByRole("button", { name: "Zoom in" }).click());
    }
    for (const index of [3, 0]) {
      const building = page.locator(".overview-building").nth(index);
      await building.focus();
      const box = await building.locator(".overview-edge").boundingBox();
      const [x, y] = [box.x + box.width / 2, box.y + box.height / 2];
      const panel = await page.locator("#panel").boundingBox();
      assert.ok(x > 0 && x < 390 && y > 0 && y < panel.y, `${index}: ${x} ${y}`);
    }
  });
});

test("two fingers zoom at what is between them", async () => {
  await stage.with({ hash: "#overview=1", isReady: false, size: "phone" }, async (page) => {
    await page.locator(".overview-building").nth(3).waitFor();
    const client = await page.context().newCDPSession(page);
    const touch = (type, ...points) =>
      client.send("Input.dispatchTouchEvent", {
        type,
        touchPoints: points.map(([x, y], id) => ({ x, y, id })),
      });
    const { times } = await change(page, async () => {
      await touch("touchStart", [150, 300]);
      await touch("touchStart", [150, 300], [250, 300]);
      await touch("touchMove", [125, 300], [275, 300]);
      await touch("touchMove", [100, 300], [300, 300]);
      await touch("touchEnd");
    });
    assert.ok(times > 1.8 && times < 2.2, `${times} times`);
    await page.waitForFunction(() => location.hash === "#overview=1");
  });
});

test("a venue that does not say where it lies has no overview, whatever its address says", async () => {
  const path = "venue/1/full.json";
  const venue = JSON.parse(readFileSync(join(root, "data/plaza", path), "utf8"));
  delete venue.coordinates;
  const one = await Stage.open({ files: { [`data/${path}`]: JSON.stringify(venue) } });
  try {
    await one.with({ hash: "#overview=1" }, async (page) => {
      const options = await page.locator("select.building option").allTextContents();
      assert.deepEqual(options, ["Garden Hall", "Harbour Hall"]);
      assert.equal(await page.locator(".overview-building").count(), 0);
    });
  } finally {
    await one.close();
  }
});
