// Answers requests as `tern batch` does, through WebAssembly:
//
//   node answer.mjs FOLDER VENUE... <requests >answers
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { load } from "../../bindings/js/src/index.js";

const [folder, ...venues] = process.argv.slice(2);
const read = (path) => {
  try {
    return readFileSync(join(folder, path));
  } catch {
    return undefined;
  }
};
const tern = await load();
const venue = tern.open({ documents: read, venues: venues.map(Number) });
const requests = readFileSync(0, "utf8").split("\n").slice(0, -1);
let answers = "";
for await (const answer of venue.batch(requests)) answers += `${answer}\n`;
process.stdout.write(answers);
