// Questions of kinds that read names and tell steps, beside the command: the same bytes.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { load } from "../src/index.js";
import { plazaDocument, plazaFolder } from "./plaza.mjs";
import { command } from "./service.mjs";

// Whole, in parts, and with a letter left out, added and in another's place.
const typed = (name) => [
  name,
  name.slice(0, 4),
  name.slice(0, 6),
  name.slice(-5),
  name.slice(0, 3) + name.slice(4),
  `${name}x`,
  name.slice(0, 2) + name[3] + name[2] + name.slice(4),
];

function* questions(venue) {
  const places = venue.places();
  for (const { name } of places) for (const text of typed(name)) yield { op: "places", text };
  const doors = places.flatMap(({ waypoints }) => waypoints);
  const door = (i) => doors[(i * 37) % doors.length];
  for (const [i, language] of ["en", "de", "fr", "es", "ja", "en-US"].entries()) {
    for (let k = 0; k < 40; k += 1) {
      yield { op: "directions", from: door(k), to: door(3 * k + i + 1), language, accessibility: k % 2 ? 0 : 100 };
    }
  }
  for (let k = 0; k < 20; k += 1) {
    yield { op: "matrix", from: doors.slice(k, k + 4), to: doors.slice(2 * k, 2 * k + 6) };
    yield { op: "reach", from: door(k), metres: 10 * k + 5 };
    yield { op: "nearestByWalk", from: door(k), amenity: (k % 3) + 1 };
  }
}

test("questions of names and steps get the command's answers", async () => {
  const venue = (await load()).open({ documents: plazaDocument });
  const asked = [...questions(venue)].map((question) => JSON.stringify(question));
  const { stdout, status } = spawnSync(command, ["batch", "--data", fileURLToPath(plazaFolder)], {
    input: asked.join("\n") + "\n",
    encoding: "utf8",
    maxBuffer: 2 ** 28,
  });
  assert.equal(status, 0);
  const expected = stdout.split("\n").slice(0, -1);
  assert.equal(expected.length, asked.length);
  asked.forEach((question, i) => assert.equal(venue.answer(question), expected[i], question));
});
