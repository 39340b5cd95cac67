import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Stage } from "./support/page.mjs";

const way = "#map=22&from=w22001&to=w14016";
let stage;

before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

// Instead of the printer's dialog, which waits for somebody.
async function printed(page, press) {
  await page.evaluate(() => {
    window.print = () => {
      window.isPrinted = true;
    };
  });
  await press();
  await page.waitForFunction(() => window.isPrinted);
  await page.emulateMedia({ media: "print" });
}

const byButton = (page) => () => page.getByRole("button", { name: "Print" }).click();

function pagesOf(pdf) {
  return pdf.toString("latin1").match(/\/Type\s*\/Page\b/g).length;
}

test("the sheet has each floor of the way with its map and its steps, and nothing else", async () => {
  await stage.with({ hash: way }, async (page) => {
    await page.locator(".sum").waitFor();
    const steps = await page.locator(".panel .step-text").allTextContents();
    await printed(page, byButton(page));
    assert.equal(
      await page.locator(".print-title").textContent(),
      "Near Echo Tea → Near Foxglove Cameras",
    );
    assert.equal(await page.locator(".print-sum").textContent(), "132 m · 2 min");
    assert.deepEqual(await page.locator(".print-floor-name").allTextContents(), [
      "Ground Floor, Harbour Hall",
      "Ground Floor, Garden Hall",
      "First Floor, Garden Hall",
      "Second Floor, Garden Hall",
    ]);
    assert.equal(await page.locator(".print-floor svg.print-map image").count(), 4);
    assert.deepEqual(await page.locator(".print-step > span:nth-of-type(1)").allTextContents(), steps);
    assert.equal(await page.locator("#panel").isVisible(), false);
    assert.equal(await page.locator("#map").isVisible(), false);
  });
});

test("the way is within each map of the sheet", async () => {
  await stage.with({ hash: way }, async (page) => {
    await page.locator(".sum").waitFor();
    await printed(page, byButton(page));
    for (const map of await page.locator("svg.print-map").all()) {
      const isWithin = await map.evaluate((svg) => {
        const { width, height } = svg.viewBox.baseVal;
        return [...svg.querySelectorAll("path[fill=none]")].every((path) => {
          const box = path.getBBox();
          const isSeen = box.width + box.height > 5;
          return isSeen && box.x > 0 && box.y > 0 && box.x + box.width < width && box.y + box.height < height;
        });
      });
      assert.ok(isWithin);
    }
  });
});

test("headings stay with their maps on A4 and on Letter", async () => {
  for (const format of ["A4", "Letter"]) {
    await stage.with({ hash: way }, async (page) => {
      await page.locator(".sum").waitFor();
      await printed(page, byButton(page));
      const together = await page
        .locator(".print-floor")
        .evaluateAll((all) => all.map((each) => getComputedStyle(each).breakInside));
      assert.deepEqual(together, ["avoid", "avoid", "avoid", "avoid"]);
      assert.equal(pagesOf(await page.pdf({ format })), 2, format);
    });
  }
});

test("the sheet is black on white in the dark too", async () => {
  await stage.with({ hash: way, colorScheme: "dark" }, async (page) => {
    await page.locator(".sum").waitFor();
    await printed(page, byButton(page));
    const colours = await page.evaluate(() => {
      const { color, backgroundColor } = getComputedStyle(document.body);
      return [color, backgroundColor, getComputedStyle(document.querySelector(".print-step")).color];
    });
    assert.deepEqual(colours, ["rgb(0, 0, 0)", "rgb(255, 255, 255)", "rgb(0, 0, 0)"]);
  });
});

test("the keys that print a page print the sheet, which is gone afterwards", async () => {
  await stage.with({ hash: "#map=13" }, async (page) => {
    await printed(page, () => page.keyboard.press("Control+p"));
    assert.equal(await page.locator(".print-title").textContent(), "First Floor, Garden Hall");
    assert.equal(await page.locator("svg.print-map").count(), 1);
    await page.evaluate(() => dispatchEvent(new Event("afterprint")));
    assert.equal(await page.locator(".print-sheet").count(), 0);
    await page.emulateMedia({ media: "screen" });
    assert.ok(await page.locator("#panel").isVisible());
  });
});
