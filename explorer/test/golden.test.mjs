// Ten states of the page look as they did. TERN_RENEW_GOLDEN=1 takes what is seen as how it shall look.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { difference } from "./support/likeness.mjs";
import { differenceFromGolden, goldenOf, settled } from "./support/golden.mjs";
import { Stage, pixelOf, searchField, stepsIn } from "./support/page.mjs";
import { decodePng } from "./support/png.mjs";

const plazaFrame = [0, 0, 2400, 2240];
const tablet = { width: 800, height: 600 };
const way = "#from=w14016&to=w12025";
const states = {
  first: { size: "phone" },
  "first-dark": { size: "phone", colorScheme: "dark" },
  place: { size: "phone", hash: "#place=d8" },
  way: { size: "phone", hash: way },
  "way-over-stops-dark": {
    size: "phone",
    hash: "#from=w22001&via=d7,d40&to=a4&level=0&closed=11001,21001",
    colorScheme: "dark",
  },
  "way-beside-map": { viewport: tablet, hash: `${way}&lang=de` },
  search: { size: "small", typed: "co" },
  reach: { size: "phone", hash: "#from=d7&reach=5" },
  data: { size: "phone", hash: "#map=12&data=type" },
  overview: { size: "small", hash: "#overview=1", isReady: false },
};
let stage;

before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

// Shows a state, and gives a file of what is seen to `use` once it is all there.
function seeing({ typed, ...options }, use, on = stage) {
  return on.with(options, async (page) => {
    const { hash = "" } = options;
    if (hash.includes("to=")) await stepsIn(page);
    if (hash.includes("reach=") || hash.includes("data=")) await page.locator(".legend").waitFor();
    if (hash.includes("overview")) await page.locator(".overview-building").first().waitFor();
    if (typed !== undefined) {
      await searchField(page, "Find a place").fill(typed);
      await page.locator(".result").first().waitFor();
    }
    await use(await settled(page), page);
  });
}

for (const [name, state] of Object.entries(states)) {
  test(`it looks as it did: ${name}`, async () => {
    await seeing(state, (file) => assert.equal(differenceFromGolden(name, file), null));
  });
}

function filled({ width, height, rgb }, [left, top, right, bottom], colour) {
  const changed = rgb.slice();
  for (let y = Math.max(0, Math.round(top)); y < Math.min(height, bottom); y += 1) {
    for (let x = Math.max(0, Math.round(left)); x < Math.min(width, right); x += 1) {
      changed.set(colour, (y * width + x) * 3);
    }
  }
  return { width, height, rgb: changed };
}

const colourAt = ({ width, rgb }, x, y) => rgb.subarray((y * width + x) * 3, (y * width + x) * 3 + 3);

function withoutColour(picture, [red, green, blue], instead) {
  const rgb = picture.rgb.slice();
  for (let at = 0; at < rgb.length; at += 3) {
    const isIt = rgb[at] === red && rgb[at + 1] === green && rgb[at + 2] === blue;
    if (isIt) rgb.set(instead, at);
  }
  return { ...picture, rgb };
}

function moved({ width, height, rgb }, pixels) {
  const changed = rgb.slice();
  changed.copyWithin(pixels * 3, 0);
  return { width, height, rgb: changed };
}

test("a picture that lacks a name, the floors or the panel, or stands beside itself, is refused", async () => {
  await seeing(states.first, async (file, page) => {
    const picture = decodePng(file);
    const golden = goldenOf("first");
    assert.equal(difference(golden, picture), null);
    // A name of one line, and no other one.
    const [x, y] = await pixelOf(page, [2050, 300], plazaFrame);
    const name = [x - 34, y - 16, x + 34, y + 16];
    const room = colourAt(picture, Math.round(x), Math.round(y - 18));
    assert.notEqual(difference(golden, filled(picture, name, room)), null);
    for (const part of ["#floors", "#panel", "#controls", ".chip"]) {
      const box = await page.locator(part).first().boundingBox();
      const ground = colourAt(picture, 2, 200);
      const gone = filled(picture, [box.x, box.y, box.x + box.width, box.y + box.height], ground);
      assert.notEqual(difference(golden, gone), null, part);
    }
    assert.notEqual(difference(golden, moved(picture, 3)), null);
    assert.notEqual(difference(golden, goldenOf("first-dark")), null);
  });
});

test("a picture whose way is not drawn is refused", async () => {
  await seeing(states.way, (file) => {
    const picture = decodePng(file);
    assert.equal(difference(goldenOf("way"), picture), null);
    const isGone = withoutColour(picture, [34, 87, 196], [245, 241, 235]);
    assert.notEqual(difference(goldenOf("way"), isGone), null);
  });
});

test("letters that are smoothed in another way are the same", async () => {
  const browser = await Stage.browser(["--disable-font-subpixel-positioning"]);
  const other = await Stage.open({ browser });
  try {
    await seeing(states.first, (file) => {
      const picture = decodePng(file);
      const golden = goldenOf("first");
      assert.equal(difference(golden, picture), null);
      assert.ok(picture.rgb.some((part, at) => Math.abs(part - golden.rgb[at]) > 32), "they are no others");
    }, other);
  } finally {
    await other.close();
    await browser.close();
  }
});
