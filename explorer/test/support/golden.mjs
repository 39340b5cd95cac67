// What states of the page looked like when somebody last looked at them, as files of test/golden.
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { difference } from "./likeness.mjs";
import { root } from "./modules.mjs";
import { decodePng } from "./png.mjs";

const folder = join(root, "explorer/test/golden");
const seen = join(root, "build/explorer-tests/golden");

const isRenewed = process.env.TERN_RENEW_GOLDEN === "1";

export function goldenOf(name) {
  return decodePng(readFileSync(join(folder, `${name}.png`)));
}

// A screenshot of the page once nothing of it moves any more, as a file.
export async function settled(page) {
  const shot = () => page.screenshot({ animations: "disabled" });
  let [before, now] = [null, await shot()];
  for (let turn = 0; turn < 40 && before?.equals(now) !== true; turn += 1) {
    await page.waitForTimeout(120);
    [before, now] = [now, await shot()];
  }
  return now;
}

// In words how it differs from what it was; null where it does not. What is seen is kept below build/.
export function differenceFromGolden(name, file) {
  for (const each of isRenewed ? [seen, folder] : [seen]) {
    mkdirSync(each, { recursive: true });
    writeFileSync(join(each, `${name}.png`), file);
  }
  return difference(goldenOf(name), decodePng(file));
}
