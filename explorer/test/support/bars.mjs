// What holds of the page wherever it is shown.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { packages } from "./modules.mjs";

const axe = readFileSync(packages.resolve("axe-core/axe.min.js"), "utf8");

// A checker of accessibility finds nothing that keeps anybody out.
export async function assertOpenToAll(page, where) {
  // The page's own policy keeps strangers' scripts out; this one is let in by the driver.
  await page.evaluate(`globalThis.axe ?? (() => { ${axe} })()`);
  const { violations } = await page.evaluate(() => globalThis.axe.run());
  const bad = violations.filter((each) => ["serious", "critical"].includes(each.impact));
  const told = bad.map(({ id, nodes }) => `${id}: ${nodes.map((each) => each.html).join(" ")}`);
  assert.deepEqual(told, [], where);
}

// Nothing scrolls sideways, and no part stands out of the window.
export async function assertWithinWindow(page, where) {
  const wide = await page.evaluate(() => {
    const { scrollWidth, clientWidth } = document.documentElement;
    const panel = document.querySelector(".panel-body");
    return [scrollWidth - clientWidth, panel.scrollWidth - panel.clientWidth];
  });
  assert.deepEqual(wide, [0, 0], where);
  const { width } = page.viewportSize();
  for (const part of await page.locator("#floors > *, #panel > *:visible").all()) {
    const box = await part.boundingBox();
    assert.ok(box.x >= 0 && box.x + box.width <= width + 0.5, `${where}: ${JSON.stringify(box)}`);
  }
}
