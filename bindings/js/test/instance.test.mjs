import assert from "node:assert/strict";
import { test } from "node:test";
import { Instance } from "../src/Instance.js";
import { TernError } from "../src/TernError.js";
import { compiled } from "../src/module.js";

const start = async (callbacks = {}) => {
  const names = [
    "document", "loaded", "listed", "log", "httpSend", "httpCancel", "fileRead", "fileWrite",
    "fileRemove", "fileList",
  ];
  const all = Object.fromEntries(names.map((name) => [name, () => 0]));
  return Instance.start(await compiled(), { log() {}, callbacks: { ...all, ...callbacks } });
};
const hasStopped = (error) =>
  error instanceof TernError && error.code === "TN008" && error.message === "the library has stopped";
const openVenue = (instance) =>
  instance.withText("{}", (options) => instance.attempt("openVenue", 1, options));

test("an instance that traps is given up, and others are not", async () => {
  const [instance, other] = await Promise.all([start(), start()]);
  assert.ok(!instance.hasEnded);
  assert.throws(() => instance.call("setHost", 0xfffffff0), hasStopped);
  assert.ok(instance.hasEnded);
  assert.throws(() => instance.call("version"), hasStopped);
  assert.throws(() => instance.withText("{}", () => 1), hasStopped);
  assert.match(other.text(other.call("version")), /^\d/);
});

test("a trap within a callback ends the call around it", async () => {
  const instance = await start({
    document(self) {
      self.call("setHost", 0xfffffff0);
    },
  });
  assert.throws(() => openVenue(instance), hasStopped);
});

test("what a callback throws does not cross the library", async () => {
  const instance = await start({
    document() {
      throw new Error("mine");
    },
  });
  assert.throws(() => openVenue(instance), { code: "TN007" });
  assert.ok(!instance.hasEnded);
});

test("texts that are given out are freed, and those that are handed in", async () => {
  const instance = await start();
  const request = `{"op":"${"x".repeat(100_000)}"}`;
  const ask = () =>
    instance.withText(request, (place) => instance.takenText(instance.call("answer", 0, place)));
  for (let i = 0; i < 20; i += 1) ask();
  const before = instance.memoryBytes;
  for (let i = 0; i < 500; i += 1) ask();
  assert.equal(instance.memoryBytes, before);
});
