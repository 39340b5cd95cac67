import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { load } from "../../bindings/js/src/index.js";
import { modules, root } from "./support/modules.mjs";

const { placementOf, readVenue, cropped } = await modules(
  "venue/placement",
  "venue/read",
  "picture/crop",
);

const text = (path) => readFileSync(join(root, "data/plaza", path), "utf8");
const document = (path) => JSON.parse(text(path));
const buildings = [1, 2].map((id) => document(`venue/1/building/${id}/full.json`));
const plaza = readVenue(document("venue/1/full.json"), buildings);

test("points lie on the globe where the library has them, and back", async () => {
  const venue = (await load()).open({ documents: (path) => text(path) });
  for (const at of [[0, 0], [400, 300], [1200.5, 2000]]) {
    const { point } = venue.ask({ op: "convert", point: at, from: "tern:local", to: "EPSG:4326" });
    const degrees = plaza.placement.toDegrees(at);
    const back = plaza.placement.fromDegrees(degrees);
    for (const axis of [0, 1]) {
      assert.ok(Math.abs(degrees[axis] - point[axis]) < 1e-9, `${degrees} and ${point}`);
      assert.ok(Math.abs(back[axis] - at[axis]) < 1e-4, `${back} and ${at}`);
    }
  }
  venue.close();
});

test("a venue without corners, or with such as cannot be, is nowhere", () => {
  const map = { svg: '<svg viewBox="0 0 100 100">' };
  const corners = (topLeft, bottomRight) => ({ coordinates: { topLeft, bottomRight } });
  assert.equal(placementOf({}, map), null);
  assert.equal(placementOf(corners([90, 10], [49, 11]), map), null);
  assert.equal(placementOf(corners([50, 10], ["49", 11]), map), null);
  assert.equal(placementOf(corners([50, 10], [50, 11]), map), null);
  assert.equal(placementOf(corners([50, 10], [49, 11]), {}), null);
  assert.notEqual(placementOf(corners([50, 10], [49, 11]), map), null);
});

test("a picture shows what is around the way, as wide as it may be", () => {
  const floor = plaza.floors.get(22);
  const [x, y, width, height] = cropped(floor, [[500, 1600], [700, 1650]], [1, 1.5]);
  assert.ok(x < 500 && x + width > 700 && y < 1600 && y + height > 1650);
  assert.ok(width / height >= 0.999 && width / height <= 1.501);
  assert.ok(x >= floor.frame[0] && x + width <= floor.frame[0] + floor.frame[2]);
  const corner = cropped(floor, [[floor.frame[0], floor.frame[1]]], [1, 1.5]);
  assert.deepEqual(corner.slice(0, 2), floor.frame.slice(0, 2));
});

test("a picture without a way shows all of the floor", () => {
  const floor = plaza.floors.get(22);
  const [x, y, width, height] = cropped(floor, [], [2, 3]);
  assert.ok(x <= floor.frame[0] && width >= floor.frame[2]);
  assert.ok(y <= floor.frame[1] && height >= floor.frame[3] && Math.abs(width / height - 2) < 1e-9);
});
