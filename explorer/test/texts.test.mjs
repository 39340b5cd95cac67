import assert from "node:assert/strict";
import { readFileSync, readdirSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { root } from "./support/modules.mjs";

const folder = join(root, "explorer/src/texts");
const read = (name) => JSON.parse(readFileSync(join(folder, name), "utf8"));
const files = readdirSync(folder).filter((name) => name.endsWith(".json"));
const english = read("en.json");
const words = (text) => (text.match(/\{\w+\}/g) ?? []).sort();

function sources(folder) {
  return readdirSync(folder, { withFileTypes: true }).map((each) => {
    const path = join(folder, each.name);
    if (each.isDirectory()) return sources(path);
    return each.name.endsWith(".ts") ? readFileSync(path, "utf8") : "";
  }).join("\n");
}

test("there are the languages that the library's steps come in", () => {
  const languages = readdirSync(join(root, "TernCoreKit/guidance/languages"));
  assert.deepEqual(files.sort(), languages.sort());
});

for (const file of files) {
  test(`${file} has every text, with every word in braces`, () => {
    const own = read(file);
    const lacks = Object.keys(english).filter((key) => !own[key]?.trim());
    const strange = Object.keys(own).filter((key) => !(key in english));
    assert.deepEqual({ lacks, strange }, { lacks: [], strange: [] });
    for (const key of Object.keys(english)) {
      assert.deepEqual(words(own[key]), words(english[key]), key);
    }
  });
}

test("every text is said somewhere", () => {
  const all = sources(join(root, "explorer/src"));
  const unsaid = Object.keys(english).filter((key) => !all.includes(`"${key}"`) && key !== "language");
  assert.deepEqual(unsaid, []);
});
