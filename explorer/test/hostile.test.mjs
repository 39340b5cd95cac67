// A venue whose names and drawings try everything: nothing of it runs, and nothing is asked for.
import assert from "node:assert/strict";
import { cpSync, readFileSync, readdirSync, rmSync, statSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { root } from "./support/modules.mjs";
import { Stage, stepsIn } from "./support/page.mjs";

const folder = join(root, "build/explorer-tests/hostile");
const asked = [];
let listener;
let host;
let drawing;
let stage;

function files(folder) {
  return readdirSync(folder)
    .map((name) => join(folder, name))
    .flatMap((path) => (statSync(path).isDirectory() ? files(path) : [path]));
}

// Each text of a venue that a page may show.
function spoiled(value, key = "") {
  if (key === "svg") return drawing;
  const words = ["name", "description", "shortName", "unitNumber", "address", "de-DE"];
  if (typeof value === "string" && words.includes(key)) {
    return `${value}<img src=http://${host}/name onerror="document.title='script-ran'"><script>x</script>`;
  }
  if (Array.isArray(value)) return value.map((each) => spoiled(each));
  if (typeof value !== "object" || value === null) return value;
  return Object.fromEntries(Object.entries(value).map(([name, each]) => [name, spoiled(each, name)]));
}

before(async () => {
  listener = createServer((request, answer) => {
    asked.push(request.url);
    answer.writeHead(404).end();
  });
  await new Promise((listening) => listener.listen(0, "127.0.0.1", listening));
  host = `127.0.0.1:${listener.address().port}`;
  drawing = readFileSync(join(root, "tests/browser/hostile.svg"), "utf8").replaceAll("HOST", host);
  rmSync(folder, { recursive: true, force: true });
  cpSync(join(root, "data/plaza"), folder, { recursive: true });
  for (const file of files(folder)) {
    writeFileSync(file, JSON.stringify(spoiled(JSON.parse(readFileSync(file, "utf8")))));
  }
  stage = await Stage.open({ venue: folder });
});
after(async () => {
  await stage.close();
  listener.close();
});

for (const hash of ["", "#place=d8&lang=de", "#from=w14016&to=w12025", "#place=a2"]) {
  for (const [size, colorScheme] of [["small", "light"], ["phone", "dark"], ["wide", "light"]]) {
    test(`a hostile venue does nothing, ${hash || "at first"}, ${size}, ${colorScheme}`, async () => {
      await stage.with({ hash, size, colorScheme }, async (page) => {
        if (hash.includes("to=")) await stepsIn(page);
        await page.locator("#panel input").first().fill("sa");
        await page.locator(".result").first().waitFor();
        for (const floor of await page.locator("#floors li button").all()) await floor.click();
        await page.waitForTimeout(300);
        assert.ok(!(await page.title()).startsWith("script-ran"));
        const strangers = "main script, [onerror], [onload], svg script, iframe, object, embed";
        assert.equal(await page.locator(strangers).count(), 0);
        assert.match(await page.locator("#floors button").first().textContent(), /<img src=http/);
        assert.deepEqual(asked, []);
      });
    });
  }
}

test("the same drawing in a page as it is asks for much", async () => {
  const page = await stage.browser.newPage();
  await page.setContent(drawing.slice(drawing.indexOf("<svg")));
  await page.waitForTimeout(500);
  assert.ok(asked.length > 0);
  await page.close();
});
