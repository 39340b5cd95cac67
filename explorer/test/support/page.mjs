// A browser with the page in it, and what the page must never do: complain, or ask another origin.
import assert from "node:assert/strict";
import { join } from "node:path";
import { chromiumOptions } from "../../../tests/support/chromium.mjs";
import { startServer } from "../../serve.mjs";
import { packages, root } from "./modules.mjs";

const { chromium } = packages("playwright-core");

export const sizes = {
  small: { width: 320, height: 568 },
  phone: { width: 390, height: 844 },
  wide: { width: 1280, height: 800 },
};

export class Stage {
  #isOwn = true;

  static browser(args = []) {
    return chromium.launch({ ...chromiumOptions, args: [...chromiumOptions.args, ...args] });
  }

  // A browser that is given stays open; the other options are those of the server.
  static async open({ browser = null, ...options } = {}) {
    const stage = new Stage();
    stage.server = await startServer({
      page: join(root, "build/explorer"),
      venue: join(root, "data/plaza"),
      ...options,
    });
    stage.browser = browser ?? (await Stage.browser());
    stage.#isOwn = browser === null;
    return stage;
  }

  async close() {
    if (this.#isOwn) await this.browser.close();
    await this.server.close();
  }

  // Runs `use` with a page that shows the address's hash, and sees to it that the page behaved.
  async with({ hash = "", size = "wide", isReady = true, ...options }, use) {
    const context = await this.browser.newContext({
      viewport: sizes[size],
      hasTouch: size !== "wide",
      reducedMotion: "reduce",
      locale: "en-US",
      ...options,
    });
    const page = await context.newPage();
    const complaints = [];
    const asked = [];
    context.on("request", (request) => asked.push(request.url()));
    page.on("console", (message) => complaints.push(`${message.type()}: ${message.text()}`));
    page.on("pageerror", (error) => complaints.push(error.stack));
    // The first page of a browser comes late on a busy machine.
    page.setDefaultTimeout(60_000);
    try {
      await page.goto(this.server.address + hash);
      if (isReady) await page.locator("#floors button[aria-current]").waitFor();
      await use(page, { asked, complaints });
    } finally {
      await context.close();
    }
    assert.deepEqual(complaints, []);
    const own = new URL(this.server.address).origin;
    const strange = asked.filter((url) => !url.startsWith(`${own}/`) && !/^(blob|data):/.test(url));
    assert.deepEqual(strange, []);
  }
}

// Where a point of the map is in the window.
export async function pixelOf(page, [x, y], [left, top, width, height]) {
  const box = await page.locator("img.floor").boundingBox();
  return [box.x + ((x - left) / width) * box.width, box.y + ((y - top) / height) * box.height];
}

export function searchField(page, name) {
  return page.getByRole("combobox", { name });
}

// Types a name and takes the first that is found.
export async function search(page, field, name) {
  await searchField(page, field).fill(name);
  await page.getByRole("option", { name }).first().waitFor();
  await searchField(page, field).press("Enter");
}

// The steps as they stand in the panel, once they do.
export async function stepsIn(page) {
  await page.locator(".step-text").first().waitFor();
  return page.locator(".step-text").allTextContents();
}

// Goes on by keyboard to what fits the selector, which has to come soon.
export async function tabTo(page, selector) {
  for (let turn = 0; turn < 12; turn += 1) {
    await page.keyboard.press("Tab");
    if (await page.evaluate((each) => document.activeElement.matches(each), selector)) return;
  }
  assert.fail(`${selector} is not reached`);
}

// Once all of the page is there: what only some ask for comes last.
export async function loaded(page) {
  const parts = await page.waitForFunction(() => {
    const names = performance.getEntriesByType("resource").map(({ name }) => name);
    const all = ["ShareDialog", "PrintSheet", "DataView", "Overview"];
    const found = all.map((part) => names.find((name) => name.includes(`/${part}-`)));
    return found.includes(undefined) ? null : found;
  });
  // With what they import themselves.
  await page.evaluate((names) => Promise.all(names.map((name) => import(name))).then(() => {}), await parts.jsonValue());
}
