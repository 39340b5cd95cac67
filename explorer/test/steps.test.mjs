// The way in words, and where on the map it is.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Stage, searchField, stepsIn } from "./support/page.mjs";

let stage;
before(async () => {
  stage = await Stage.open();
});
after(() => stage.close());

test("the step that was chosen is marked", async () => {
  await stage.with({ hash: "#from=w14016&to=w12025" }, async (page) => {
    await stepsIn(page);
    for (const index of [1, 3]) {
      await page.locator(".step").nth(index).click();
      const current = await page.locator(".step").evaluateAll((all) =>
        all.flatMap((each, place) => (each.getAttribute("aria-current") === "step" ? [place] : [])),
      );
      assert.deepEqual(current, [index]);
    }
  });
});

test("what is found is as far as the way to it is long", async () => {
  await stage.with({ hash: "#from=w22001" }, async (page) => {
    const field = searchField(page, "Where do you want to go?");
    for (const name of ["Foxglove Cameras", "Toilets"]) {
      await field.fill(name);
      const told = page.getByRole("option", { name }).locator(".result-walk span");
      await told.nth(1).waitFor();
      const [metres, minutes] = await told.allTextContents();
      await field.press("Enter");
      await stepsIn(page);
      assert.equal(await page.locator(".sum").textContent(), `${minutes}${metres}`);
    }
  });
});
