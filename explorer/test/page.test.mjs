// The page in a browser: what everybody does in it, by pointer, by touch and by keyboard.
import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { cpSync, rmSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { promisify } from "node:util";
import { assertOpenToAll, assertWithinWindow } from "./support/bars.mjs";
import { root } from "./support/modules.mjs";
import { Stage, loaded, pixelOf, search, searchField, sizes, stepsIn, tabTo } from "./support/page.mjs";

const tern = process.env.TERN_COMMAND ?? join(root, "build/bin/tern");
const plazaFrame = [0, 0, 2400, 2240];
// Where the panel says most.
const busy = [
  "#from=w22001&via=d7,d40&to=a4&level=0&closed=11001,21001",
  "#place=m11001&closed=11001",
  "#from=d7&reach=5&closed=11001",
];
let stage;

before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

const floorNow = (page) => page.locator("#floors button[aria-current]").textContent();

test("the first floor of the venue is shown, with its floors and places", async () => {
  await stage.with({}, async (page) => {
    assert.equal(await page.title(), "Linden Plaza");
    assert.equal(await floorNow(page), "G");
    const image = page.locator("img.floor");
    assert.equal(await image.evaluate((each) => each.complete && each.naturalWidth > 0), true);
    assert.equal(await page.getByRole("button", { name: "Acorn Cycles" }).count(), 1);
    assert.equal(await page.locator(".chip").count(), 8);
  });
});

test("every floor can be shown", async () => {
  await stage.with({}, async (page) => {
    const seen = [];
    for (const label of ["Garden Hall", "Harbour Hall"]) {
      await page.locator("select.building").selectOption({ label });
      for (const floor of await page.locator("#floors li button").all()) {
        await floor.click();
        assert.equal(await floor.getAttribute("aria-current"), "true");
        await page.waitForFunction(() => {
          const images = [...document.querySelectorAll("img.floor")];
          return images.length === 1 && images[0].complete && images[0].naturalWidth > 0;
        });
        seen.push(Number(await floor.getAttribute("data-map")));
      }
    }
    assert.deepEqual(seen.sort(), [11, 12, 13, 14, 21, 22, 23]);
  });
});

test("floors that are chosen while others are still coming are shown without a complaint", async () => {
  await stage.with({}, async (page) => {
    await page.evaluate(() => {
      const floors = document.querySelectorAll("#floors li button").length;
      for (let index = 0; index < floors; index += 1) {
        document.querySelectorAll("#floors li button")[index].click();
      }
    });
    await page.waitForFunction(() => {
      const images = [...document.querySelectorAll("img.floor")];
      return images.length === 1 && images[0].complete && images[0].naturalWidth > 0;
    });
    assert.equal(await floorNow(page), "LG");
    // What has been left is loaded by now, or told of.
    await page.waitForTimeout(300);
  });
});

test("a search finds as one types, by the names of the reader's language too", async () => {
  await stage.with({ locale: "de-DE" }, async (page) => {
    const field = searchField(page, "Ort suchen");
    await field.fill("saffron mar");
    await page.getByRole("option", { name: /Saffron Markt.*Lower Ground/ }).waitFor();
    await field.fill("Schmuck");
    await page.getByRole("option", { name: "Kestrel" }).waitFor();
    await field.fill("qqqq");
    await page.getByText("Kein Ort heißt so").first().waitFor();
    assert.equal(await page.locator("html").getAttribute("lang"), "de");
  });
});

test("Enter takes the first that is found, however soon it comes", async () => {
  await stage.with({}, async (page) => {
    await searchField(page, "Find a place").fill("poppy");
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: "Poppy Records" }).waitFor();
  });
});

test("what is found is told with the way there once the start is known", async () => {
  await stage.with({ hash: "#from=w22001" }, async (page) => {
    await searchField(page, "Where do you want to go?").fill("foxglove");
    await page.getByRole("option", { name: /Foxglove Cameras.*\d+ m ?\d+ min/ }).waitFor();
  });
});

test("a place is found, its card opened, and the way to it told and drawn", async () => {
  await stage.with({}, async (page) => {
    await search(page, "Find a place", "Foxglove");
    await page.getByRole("heading", { name: "Foxglove Cameras" }).waitFor();
    assert.equal(await floorNow(page), "2");
    await page.getByRole("button", { name: "Directions" }).click();
    await search(page, "Where do you start?", "Poppy Records");
    const steps = await stepsIn(page);
    assert.equal(steps[0], "Start at Poppy Records");
    assert.equal(steps.at(-1), "You have reached Foxglove Cameras");
    assert.equal(await floorNow(page), "G");
    const building = page.locator("select.building option:checked");
    assert.equal(await building.textContent(), "Garden Hall");
    const marked = await page.locator(".floor-button.is-on-way").allTextContents();
    assert.deepEqual(marked, ["2", "1", "G"]);
  });
});

test("a step leads to its floor and its spot", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page) => {
    await stepsIn(page);
    assert.equal(await floorNow(page), "2");
    const before = await page.locator("img.floor").boundingBox();
    await page.locator(".step").last().click();
    assert.equal(await floorNow(page), "G");
    const box = await page.locator("#map").boundingBox();
    const panel = await page.locator("#panel").boundingBox();
    await page.waitForFunction(
      (x) => document.querySelector("img.floor").getBoundingClientRect().x !== x,
      before.x,
    );
    // Where Poppy Records is entered, in the middle of what the panel leaves free.
    const [x, y] = await pixelOf(page, [1474, 724], plazaFrame);
    const middle = (panel.x + panel.width + box.width) / 2;
    assert.ok(Math.abs(x - middle) < 60 && Math.abs(y - box.height / 2) < 60, `${x} ${y}`);
  });
});

test("start and goal change places", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page) => {
    const there = await stepsIn(page);
    await page.getByRole("button", { name: "Swap start and goal" }).click();
    await page.getByText("You have reached Foxglove Cameras").waitFor();
    assert.notDeepEqual(await stepsIn(page), there);
    await page.waitForURL(/from=w12025&to=w14016/);
  });
});

test("a tap chooses the place that is there, and the nearest waypoint elsewhere", async () => {
  await stage.with({}, async (page) => {
    const [x, y] = await pixelOf(page, [2050, 300], plazaFrame);
    await page.mouse.click(x, y);
    await page.getByRole("heading", { name: "Ember Home" }).waitFor();
    const [a, b] = await pixelOf(page, [1900, 570], plazaFrame);
    await page.mouse.click(a, b);
    await page.waitForFunction(() => /place=w\d+/.test(location.hash));
    await page.getByRole("button", { name: "Start from here" }).click();
    await page.waitForFunction(() => /from=w\d+/.test(location.hash));
    // The goal is missing: the next tap is it.
    const [c, d] = await pixelOf(page, [2100, 570], plazaFrame);
    await page.mouse.click(c, d);
    await stepsIn(page);
    await page.waitForURL(/from=w\d+&to=w\d+/);
  });
});

test("step-free takes the lift where any way takes what is shorter", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page) => {
    await page.getByText(/escalator down/).first().waitFor();
    const radios = await page.locator(".choice").allTextContents();
    assert.deepEqual(radios, ["Any way", "Without Stairs", "Step-free"]);
    await page.getByRole("radio", { name: "Step-free" }).check();
    await page.getByText(/Take the lift/).first().waitFor();
    assert.equal(await page.getByText(/escalator down/).count(), 0);
    await page.waitForURL(/level=0/);
  });
});

test("steps are told in each language", async () => {
  const goals = { en: "reached", de: "erreicht", fr: "arrivé", es: "llegado", ja: "到着" };
  for (const [language, word] of Object.entries(goals)) {
    await stage.with({ hash: `#from=w14016&to=w12025&lang=${language}` }, async (page) => {
      const steps = await stepsIn(page);
      assert.ok(steps.at(-1).includes(word), steps.at(-1));
      assert.equal(await page.locator("html").getAttribute("lang"), language);
    });
  }
});

test("the language is a choice, and all words follow it", async () => {
  await stage.with({}, async (page) => {
    await page.getByLabel("Language").selectOption("ja");
    await searchField(page, "場所を探す").waitFor();
    await page.getByRole("button", { name: "トイレ" }).waitFor();
    await page.waitForURL(/lang=ja/);
  });
});

test("the address restores what was shown, and back goes back", async () => {
  let address = "";
  await stage.with({ hash: "#from=w14016&to=w12025&level=0&map=13&lang=fr" }, async (page) => {
    await stepsIn(page);
    assert.equal(await floorNow(page), "1");
    assert.equal(await page.getByRole("radio", { name: "Sans marches" }).isChecked(), true);
    await page.getByRole("button", { name: "Échanger" }).click();
    await page.waitForFunction(() => location.hash.includes("from=w12025"));
    address = new URL(page.url()).hash;
    await page.goBack();
    await page.waitForFunction(() => location.hash.includes("from=w14016"));
    assert.match(await searchField(page, "D’où partez-vous ?").inputValue(), /Foxglove/);
  });
  await stage.with({ hash: address }, async (page) => {
    const steps = await stepsIn(page);
    assert.match(steps.at(-1), /Foxglove Cameras/);
  });
});

test("an address that names what is not there shows the venue all the same", async () => {
  for (const hash of ["#map=99999&from=w1&to=d99999&level=-3", "#place=d424242", "#%%%", "#map=12&lang=xx"]) {
    await stage.with({ hash }, async (page) => {
      assert.equal(await floorNow(page), "G");
    });
  }
});

for (const size of Object.keys(sizes)) {
  test(`everything is done by keyboard alone, ${sizes[size].width} pixels wide`, () =>
    stage.with({ size }, doneByKeys));
}

async function doneByKeys(page) {
  const press = async (...keys) => {
    for (const key of keys) await page.keyboard.press(key);
  };
  const focused = () =>
    page.evaluate(() => {
      const { ariaLabel, textContent, id } = document.activeElement;
      return id || ariaLabel || textContent;
    });
  await press("Tab");
  assert.equal(await focused(), "to-search");
  await press("Enter");
  await page.keyboard.type("poppy");
  await page.getByRole("option", { name: "Poppy Records" }).waitFor();
  await press("ArrowDown", "Enter");
  await page.getByRole("heading", { name: "Poppy Records" }).waitFor();
  await tabTo(page, ".card .button");
  assert.equal(await focused(), "Directions");
  await press("Enter");
  await page.keyboard.type("foxglove");
  await page.getByRole("option", { name: "Foxglove Cameras" }).waitFor();
  await press("Enter");
  const steps = await stepsIn(page);
  assert.equal(steps.at(-1), "You have reached Poppy Records");
  // On to the choice of how one gets about, and to the steps.
  await page.getByRole("radio", { name: "Any way" }).focus();
  await press("ArrowRight", "ArrowRight");
  await page.getByText(/Take the lift/).first().waitFor();
  await tabTo(page, ".step");
  await press("Tab", "Enter");
  assert.equal(await floorNow(page), "2");
  // The map moves, zooms and turns.
  await page.locator("#map").focus();
  const seen = new Set();
  for (const key of ["ArrowRight", "+", "Shift+ArrowRight", "ArrowDown", "-"]) {
    await press(key);
    await page.waitForTimeout(400);
    seen.add(await page.locator("img.floor").evaluate((each) => each.style.transform));
  }
  assert.equal(seen.size, 5);
  await page.getByRole("button", { name: "Turn the map upright" }).focus();
  await press("Enter");
  await page.waitForFunction(() => document.querySelector("#controls button").hidden);
  // And the floors.
  await page.locator("#floors button").first().focus();
  await press("Tab", "Enter");
  assert.equal(await floorNow(page), "1");
}

for (const colorScheme of ["light", "dark"]) {
  test(`a checker of accessibility finds nothing serious, ${colorScheme}`, async () => {
    for (const size of ["phone", "wide"]) {
      for (const hash of ["", "#place=d8", "#from=w14016&to=w12025", ...busy]) {
        await stage.with({ hash, size, colorScheme }, async (page) => {
          if (hash.includes("to=")) await stepsIn(page);
          if (hash.includes("reach=")) await page.locator(".legend").waitFor();
          await assertOpenToAll(page, `${size} ${hash}`);
        });
      }
    }
  });
}

for (const size of Object.keys(sizes)) {
  test(`nothing is cut off and nothing scrolls sideways, ${sizes[size].width} pixels wide`, async () => {
    for (const hash of ["", "#place=d8", "#from=w14016&to=w12025&lang=de", ...busy]) {
      await stage.with({ hash, size }, async (page) => {
        if (hash.includes("to=")) await stepsIn(page);
        if (hash.includes("reach=")) await page.locator(".legend").waitFor();
        if (hash.includes("place=")) await page.locator(".card-name").waitFor();
        await assertWithinWindow(page, hash);
      });
    }
  });
}

test("the sheet of a phone leaves the floors free, however high it is", async () => {
  for (const size of ["small", "phone"]) {
    await stage.with({ hash: "#from=w14016&to=w12025", size }, async (page) => {
      await stepsIn(page);
      const strip = await page.locator("#floors").boundingBox();
      for (const height of ["low", "half", "high"]) {
        if (height === "high") await searchField(page, "Where do you start?").tap();
        else if ((await page.locator("#panel").getAttribute("data-sheet")) !== height) {
          await page.locator(".handle").tap();
        }
        assert.equal(await page.locator("#panel").getAttribute("data-sheet"), height);
        await page.waitForTimeout(50);
        const panel = await page.locator("#panel").boundingBox();
        assert.ok(panel.y >= strip.y + strip.height, `${height}: ${panel.y}`);
      }
    });
  }
});

test("once loaded, the page needs no network", async () => {
  await stage.with({}, async (page) => {
    await search(page, "Find a place", "Poppy");
    await page.getByRole("heading", { name: "Poppy Records" }).waitFor();
    await page.context().setOffline(true);
    await page.getByRole("button", { name: "Directions" }).click();
    await search(page, "Where do you start?", "Foxglove");
    await stepsIn(page);
    await page.locator("#floors button").first().click();
    await page.getByRole("radio", { name: "Step-free" }).check();
    await page.getByText(/Take the lift/).first().waitFor();
  });
});

test("what only some ask for is there without a network, too", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page) => {
    await stepsIn(page);
    await loaded(page);
    await page.context().setOffline(true);
    await page.getByRole("button", { name: "Share" }).click();
    await page.getByRole("dialog", { name: "Share" }).waitFor();
    await page.keyboard.press("Escape");
    await page.evaluate(() => {
      window.print = () => {
        window.isPrinted = true;
      };
    });
    await page.getByRole("button", { name: "Print" }).click();
    await page.waitForFunction(() => window.isPrinted);
    await page.evaluate(() => dispatchEvent(new Event("afterprint")));
    await page.locator("select.building").selectOption({ label: "Overview" });
    await page.locator(".overview-building").first().waitFor();
    await page.evaluate(() => (location.hash = "#data=type"));
    await page.locator(".legend").waitFor();
  });
});

test("a library that has stopped is started anew, and the answer comes", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page, { complaints }) => {
    await stepsIn(page);
    const [worker] = page.workers();
    // What the worker throws ends it for the page.
    await worker.evaluate(() => void setTimeout(() => { throw new Error("gone"); }));
    await page.waitForTimeout(100);
    await page.getByRole("button", { name: "Swap start and goal" }).click();
    await page.getByText("You have reached Foxglove Cameras").waitFor();
    assert.equal(page.workers().length, 1);
    assert.notEqual(page.workers()[0], worker);
    // The browser tells of what was thrown for the test's sake, and of nothing else.
    assert.deepEqual(complaints.splice(0).filter((each) => !each.includes("gone")), []);
  });
});

test("the page works in a folder of a server", async () => {
  const other = await Stage.open({ base: "/deep/down/" });
  try {
    await other.with({ hash: "#from=w14016&to=w12025" }, (page) => stepsIn(page));
  } finally {
    await other.close();
  }
});

test("a host's own name and colours are taken, and what cannot be used is told of", async () => {
  const config = { name: "Halls", logo: "logo.svg", colours: { accent: "#a01050" }, venues: "all" };
  const logo = '<svg xmlns="http://www.w3.org/2000/svg" width="90" height="30"/>';
  const files = { "config.json": JSON.stringify(config), "logo.svg": logo };
  const other = await Stage.open({ files });
  try {
    await other.with({}, async (page) => {
      assert.equal(await page.title(), "Halls");
      const floor = page.locator("#floors button[aria-current]");
      assert.equal(
        await floor.evaluate((each) => getComputedStyle(each).backgroundColor),
        "rgb(160, 16, 80)",
      );
      assert.match(await page.locator("#status").textContent(), /cannot be used: venues/);
      const width = await page.getByRole("img", { name: "Linden Plaza" }).evaluate((each) => each.naturalWidth);
      assert.equal(width, 90);
    });
  } finally {
    await other.close();
  }
});

test("of several venues one is chosen, and back leads to the one before", async () => {
  const two = join(root, "build/explorer-tests/two");
  rmSync(two, { recursive: true, force: true });
  await promisify(execFile)(tern, ["generate", "--out", two, "--venues", "2", "--shops", "8"]);
  const other = await Stage.open({ venue: two });
  try {
    await other.with({}, async (page) => {
      const first = await page.title();
      const names = await page.getByLabel("Venue").locator("option").allTextContents();
      assert.deepEqual([names.length, names[0]], [2, first]);
      await page.getByLabel("Venue").selectOption({ index: 1 });
      await page.waitForFunction((name) => document.title === name, names[1]);
      await page.waitForURL(/#venue=\d+$/);
      await page.goBack();
      await page.waitForFunction((name) => document.title === name, first);
    });
  } finally {
    await other.close();
  }
});

test("without one of its buildings a venue is seen, and why no way is told", async () => {
  const one = join(root, "build/explorer-tests/one");
  rmSync(one, { recursive: true, force: true });
  cpSync(join(root, "data/plaza"), one, { recursive: true });
  rmSync(join(one, "venue/1/building/2"), { recursive: true });
  const other = await Stage.open({ venue: one });
  try {
    await other.with({ hash: "#from=w14016&to=w12025" }, async (page, { complaints }) => {
      assert.equal(await page.locator("select.building").count(), 0);
      assert.deepEqual(await page.locator("#floors li").allTextContents(), ["2", "1", "G", "LG"]);
      await page.getByText(/venue\/1\/building\/2\/full.json/).first().waitFor();
      // The browser itself tells of the missing file.
      assert.deepEqual(complaints.splice(0).filter((each) => !each.includes("404")), []);
    });
  } finally {
    await other.close();
  }
});

test("documents that are missing are told of", async () => {
  const other = await Stage.open({ venue: join(root, "explorer/icons") });
  try {
    await other.with({ isReady: false }, async (page, { complaints }) => {
      await page.getByText("The map could not be loaded: full.json (404)").waitFor();
      // The browser itself tells of the missing file.
      assert.equal(complaints.splice(0).length, 1);
    });
  } finally {
    await other.close();
  }
});
