// What a link shows: however late its way comes, and whatever of it is not there any more.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Stage, stepsIn } from "./support/page.mjs";

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

const floorNow = (page) => page.locator("#floors button[aria-current]").textContent();
const onWay = (page) => page.locator(".floor-button.is-on-way").allTextContents();

// Shows an address whose library does not come before `act` is done.
async function late(page, hash, act) {
  let comes;
  const coming = new Promise((resolve) => (comes = resolve));
  await page.route("**/terncorekit.wasm", async (route) => {
    await coming;
    await route.continue();
  });
  await page.evaluate((next) => history.replaceState(null, "", next), hash);
  await page.reload();
  await page.locator("#floors button[aria-current]").waitFor();
  await act();
  comes();
}

test("a way that comes late is drawn, and leaves the floor that was chosen meanwhile", async () => {
  await stage.with({}, async (page) => {
    await late(page, "#from=w14016&to=w12025", async () => {
      await page.locator("#floors button[data-map='13']").click();
    });
    await stepsIn(page);
    assert.equal(await floorNow(page), "1");
    assert.deepEqual(await onWay(page), ["2", "1", "G"]);
  });
});

test("while the library is on its way, it is said that the way is looked for", async () => {
  await stage.with({}, async (page) => {
    await late(page, "#from=w14016&to=w12025", async () => {
      await page.locator(".words").getByText("Looking for the way…").waitFor();
    });
    await stepsIn(page);
    assert.equal(await page.getByText("Looking for the way…").count(), 0);
  });
});

test("ends that are swapped before the first way comes lead the other way", async () => {
  await stage.with({}, async (page) => {
    await late(page, "#from=w14016&to=w12025", async () => {
      await page.getByRole("button", { name: "Swap start and goal" }).click();
    });
    const steps = await stepsIn(page);
    assert.equal(steps[0], "Start at Poppy Records");
    assert.deepEqual(await onWay(page), ["2", "1", "G"]);
  });
});

test("the floor of a link's place is shown before the library is there", async () => {
  await stage.with({}, async (page) => {
    await late(page, "#place=d8", async () => {
      await page.getByRole("heading", { name: "Otter Electronics" }).waitFor();
      assert.equal(await floorNow(page), "LG");
    });
  });
});

test("in another language the way is told on the floor that is shown", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page) => {
    await stepsIn(page);
    await page.locator("#floors button[data-map='12']").click();
    await page.evaluate(() => (location.hash += "&lang=de"));
    await page.getByText(/^Ziel erreicht/).waitFor();
    assert.equal(await floorNow(page), "G");
  });
});

test("going back closes the list of what is being typed, and names the place that is shown again", async () => {
  await stage.with({ hash: "#place=d8" }, async (page) => {
    await page.evaluate(() => (location.hash = "#place=w12025"));
    await page.getByRole("heading", { name: "Near Poppy Records" }).waitFor();
    const field = page.getByRole("combobox", { name: "Find a place" });
    await field.fill("toilet");
    await page.getByRole("listbox").waitFor();
    await page.goBack();
    await page.getByRole("heading", { name: "Otter Electronics" }).waitFor();
    assert.equal(await page.getByRole("listbox").count(), 0);
    assert.equal(await field.inputValue(), "Otter Electronics");
  });
});

test("what is put out of order on its card does not take the map away from it", async () => {
  await stage.with({ hash: "#from=w12012&to=w14016&level=0&map=12&place=m11001" }, async (page) => {
    await page.getByRole("switch").click();
    await page.waitForFunction(() => location.hash.includes("closed=11001"));
    await page.getByRole("switch").click();
    await page.waitForFunction(() => !location.hash.includes("closed"));
    assert.equal(await floorNow(page), "G");
  });
});

test("what a link names and is not there is left out, and told of", async () => {
  const status = (page) => page.locator("#status[data-is-error]");
  await stage.with({ hash: "#from=d9999&via=m5&to=d8" }, async (page) => {
    assert.match(await status(page).textContent(), /not here any more/);
    assert.equal(await page.getByRole("combobox", { name: "Where do you start?" }).inputValue(), "");
    assert.equal(await page.getByText(/There is no way/).count(), 0);
  });
  await stage.with({ hash: "#place=d9999" }, async (page) => {
    await status(page).waitFor();
    assert.equal(await page.locator(".card").count(), 0);
    await page.evaluate(() => (location.hash = "#place=w12025"));
    await page.getByRole("heading", { name: "Near Poppy Records" }).waitFor();
  });
  await stage.with({ hash: "#from=w22001&to=t2&place=m11001" }, async (page) => {
    assert.equal(await status(page).count(), 0);
    await page.getByRole("heading", { name: "Lift 1" }).waitFor();
  });
});
