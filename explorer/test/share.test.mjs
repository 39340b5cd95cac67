import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { packages, root } from "./support/modules.mjs";
import { Stage } from "./support/page.mjs";

const way = "#map=22&from=w22001&to=w14016";
const folder = mkdtempSync(join(tmpdir(), "tern-share-"));
const json = (path) => JSON.parse(readFileSync(join(root, "data/plaza", path), "utf8"));
let stage;

before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

async function openShare(page) {
  await page.locator(".sum").waitFor();
  await page.getByRole("button", { name: "Share" }).click();
  return page.getByRole("dialog", { name: "Share" });
}

async function saved(page, name) {
  const [download] = await Promise.all([
    page.waitForEvent("download"),
    page.getByRole("button", { name }).click(),
  ]);
  const path = join(folder, download.suggestedFilename());
  await download.saveAs(path);
  return path;
}

// The colours of points of a PNG, as the browser reads it.
function coloursIn(page, path, points) {
  const url = `data:image/png;base64,${readFileSync(path).toString("base64")}`;
  return page.evaluate(
    async ([url, points]) => {
      const image = new Image();
      image.src = url;
      await image.decode();
      const canvas = document.createElement("canvas");
      [canvas.width, canvas.height] = [image.naturalWidth, image.naturalHeight];
      const drawn = canvas.getContext("2d");
      drawn.drawImage(image, 0, 0);
      const all = drawn.getImageData(0, 0, canvas.width, canvas.height).data;
      const seen = new Map();
      for (let at = 0; at < all.length; at += 4) {
        const colour = `${all[at]},${all[at + 1]},${all[at + 2]}`;
        seen.set(colour, (seen.get(colour) ?? 0) + 1);
      }
      return { size: [canvas.width, canvas.height], counts: points.map((each) => seen.get(each) ?? 0) };
    },
    [url, points],
  );
}

const accent = "34,87,196";

test("the link leads whoever opens it to the same way, in their own language", async () => {
  const options = { hash: `${way}&lang=de`, permissions: ["clipboard-read", "clipboard-write"] };
  await stage.with(options, async (page) => {
    await page.locator(".sum").waitFor();
    await page.getByRole("button", { name: "Teilen" }).click();
    const link = await page.getByRole("textbox", { name: /^Link/ }).inputValue();
    assert.equal(link, stage.server.address + way);
    await page.getByRole("button", { name: "Kopieren" }).click();
    await page.getByRole("button", { name: "Kopiert" }).waitFor();
    assert.equal(await page.evaluate(() => navigator.clipboard.readText()), link);
  });
});

test("without a clipboard the link is marked, to be copied by hand", async () => {
  await stage.with({ hash: way }, async (page) => {
    await page.evaluate(() => {
      Object.defineProperty(navigator, "clipboard", { value: undefined });
    });
    await openShare(page);
    await page.getByRole("button", { name: "Copy" }).click();
    const marked = await page.evaluate(() => document.activeElement.selectionEnd);
    assert.equal(marked, (stage.server.address + way).length);
  });
});

test("sharing is done by keys alone, and Escape leads back", async () => {
  await stage.with({ hash: way }, async (page) => {
    await page.locator(".sum").waitFor();
    await page.getByRole("button", { name: "Share" }).focus();
    await page.keyboard.press("Enter");
    const dialog = page.getByRole("dialog", { name: "Share" });
    await dialog.waitFor();
    await page.getByRole("button", { name: "Show as QR code" }).focus();
    await page.keyboard.press("Enter");
    await page.getByRole("img", { name: /^QR code of http/ }).waitFor();
    await page.keyboard.press("Enter");
    await page.getByRole("button", { name: "Show as QR code" }).waitFor();
    await page.keyboard.press("Escape");
    await dialog.waitFor({ state: "detached" });
    const label = await page.evaluate(() => document.activeElement.getAttribute("aria-label"));
    assert.equal(label, "Share");
  });
});

test("the code is black on white with air around it, and has the size that the address needs", async () => {
  await stage.with({ hash: way, colorScheme: "dark" }, async (page) => {
    await openShare(page);
    await page.getByRole("button", { name: "Show as QR code" }).click();
    const code = page.locator("svg.code");
    const [, , size] = (await code.getAttribute("viewBox")).split(" ").map(Number);
    const squares = await code.locator("path").getAttribute("d");
    const points = [...squares.matchAll(/M(\d+) (\d+)h1v1h-1z/g)].map(([, x, y]) => [+x, +y]);
    const modules = size - 8;
    assert.equal((modules - 17) % 4, 0);
    assert.ok(points.every(([x, y]) => x >= 4 && y >= 4 && x < size - 4 && y < size - 4));
    // The three corners by which a camera finds it.
    for (const [x, y] of [[4, 4], [size - 11, 4], [4, size - 11]]) {
      const isDark = (dx, dy) => points.some((each) => each[0] === x + dx && each[1] === y + dy);
      assert.ok(isDark(0, 0) && isDark(6, 6) && isDark(3, 3) && !isDark(1, 1) && !isDark(5, 5));
    }
  });
});

test("what a device can send is sent with a title and the link", async () => {
  await stage.with({ hash: way }, async (page) => {
    await page.evaluate(() => {
      navigator.share = async (what) => {
        window.sent = what;
      };
    });
    const dialog = await openShare(page);
    await page.getByRole("button", { name: "Send…" }).click();
    await dialog.waitFor({ state: "detached" });
    assert.deepEqual(await page.evaluate(() => window.sent), {
      title: "Linden Plaza",
      text: "Near Echo Tea → Near Foxglove Cameras",
      url: stage.server.address + way,
    });
  });
});

test("the picture holds the floor and the way, on white, in the dark too", async () => {
  for (const colorScheme of ["light", "dark"]) {
    await stage.with({ hash: way, colorScheme }, async (page) => {
      await openShare(page);
      const path = await saved(page, "Save as picture");
      assert.match(path, /near-echo-tea-near-foxglove-cameras\.png$/);
      const { size, counts } = await coloursIn(page, path, [accent, "255,255,255", "245,241,235"]);
      assert.equal(size[0], 1600);
      const all = size[0] * size[1];
      assert.ok(counts[0] > all * 0.005, `${counts[0]} of ${all} are the way's`);
      assert.ok(counts[1] > all * 0.05, `${counts[1]} of ${all} are white`);
      assert.ok(await hasDrawing(page, path), "the floor is not drawn");
    });
  }
});

// A floor's drawing has many colours; what the page draws over it has few.
async function hasDrawing(page, path) {
  const fills = json("venue/1/building/2/full.json")
    .floors.items.find((floor) => floor.map.id === 22)
    .map.svg.matchAll(/fill="#([0-9a-f]{6})"/g);
  const wanted = [...new Set([...fills].map(([, hex]) => hex))].map((hex) =>
    [0, 2, 4].map((at) => parseInt(hex.slice(at, at + 2), 16)).join(","),
  );
  const { counts } = await coloursIn(page, path, wanted);
  return counts.filter((count) => count > 1000).length >= 4;
}

test("a drawing with a foreign document in it does not keep the picture from being saved", async () => {
  const building = json("venue/1/building/2/full.json");
  const foreign =
    '<foreignObject width="90" height="90"><p xmlns="http://www.w3.org/1999/xhtml">x</p></foreignObject></svg>';
  for (const floor of building.floors.items) {
    floor.map.svg = floor.map.svg.replace(/<\/svg>\s*$/, foreign);
  }
  const files = { "data/venue/1/building/2/full.json": JSON.stringify(building) };
  const other = await Stage.open({ files });
  try {
    await other.with({ hash: way }, async (page) => {
      await openShare(page);
      const path = await saved(page, "Save as picture");
      assert.ok(readFileSync(path).length > 20_000);
    });
  } finally {
    await other.close();
  }
});

test("the features are those that the command writes", async () => {
  const file = join(folder, "command.geojson");
  const command = process.env["TERN_COMMAND"] ?? join(root, "build/bin/tern");
  const words = ["route", "--data", join(root, "data/plaza"), "--from", "22001", "--to", "14016"];
  execFileSync(command, [...words, "--picture", file]);
  const expected = JSON.parse(readFileSync(file, "utf8"));
  await stage.with({ hash: way }, async (page) => {
    await openShare(page);
    const told = JSON.parse(readFileSync(await saved(page, /GeoJSON/), "utf8"));
    assert.equal(told.type, "FeatureCollection");
    assert.equal(told.features.length, expected.features.length);
    told.features.forEach((feature, index) => {
      const wanted = expected.features[index];
      // The command names a waypoint after its place, the page after what is near.
      const { name, ...properties } = feature.properties;
      const { name: itsName, ...itsProperties } = wanted.properties;
      assert.deepEqual(properties, itsProperties);
      assert.equal(name === undefined, itsName === undefined);
      assert.equal(feature.geometry.type, wanted.geometry.type);
      const numbers = feature.geometry.coordinates.flat();
      numbers.forEach((degrees, at) => {
        assert.ok(Math.abs(degrees - wanted.geometry.coordinates.flat()[at]) <= 1.01e-8);
      });
    });
  });
});

test("a venue that is nowhere on the globe offers no features", async () => {
  const venue = json("venue/1/full.json");
  delete venue.coordinates;
  const other = await Stage.open({ files: { "data/venue/1/full.json": JSON.stringify(venue) } });
  try {
    await other.with({ hash: way }, async (page) => {
      const dialog = await openShare(page);
      await dialog.getByRole("button", { name: "Save as picture" }).waitFor();
      assert.equal(await dialog.getByRole("button", { name: /GeoJSON/ }).count(), 0);
    });
  } finally {
    await other.close();
  }
});

test("the dialog has nothing that keeps anybody from it, in light and in dark", async () => {
  for (const colorScheme of ["light", "dark"]) {
    await stage.with({ hash: way, colorScheme, bypassCSP: true, size: "small" }, async (page) => {
      await openShare(page);
      await page.addScriptTag({ path: packages.resolve("axe-core/axe.min.js") });
      const found = await page.evaluate(() => axe.run("dialog"));
      assert.deepEqual(found.violations.map((each) => each.id), []);
    });
  }
});

test("the dialog stays within the window", async () => {
  for (const size of ["small", "phone", "wide"]) {
    await stage.with({ hash: way, size }, async (page) => {
      const dialog = await openShare(page);
      const box = await dialog.boundingBox();
      const { width, height } = page.viewportSize();
      assert.ok(box.x >= 0 && box.y >= 0 && box.x + box.width <= width && box.y + box.height <= height);
    });
  }
});
