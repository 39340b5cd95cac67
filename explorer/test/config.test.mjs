import assert from "node:assert/strict";
import { test } from "node:test";
import { modules } from "./support/modules.mjs";

globalThis.document = { baseURI: "https://maps.example/plaza/" };
globalThis.location = { origin: "https://maps.example" };
const { readConfig } = await modules("config");

test("without values everything is as it is", () => {
  assert.deepEqual(readConfig({}), {
    data: "https://maps.example/plaza/data/",
    findings: null,
    venues: [],
    name: "",
    logo: null,
    colours: {},
    refused: [],
  });
});

test("values are taken", () => {
  const config = readConfig({
    data: "/halls",
    findings: "/halls/findings.json",
    venues: [3, 4],
    name: "Halls",
    logo: "logo.svg",
    colours: { accent: "#A01050", accentDark: "#ff90c0" },
  });
  assert.equal(config.data, "https://maps.example/halls/");
  assert.equal(config.findings, "https://maps.example/halls/findings.json");
  assert.deepEqual(config.venues, [3, 4]);
  assert.equal(config.name, "Halls");
  assert.equal(config.logo, "https://maps.example/plaza/logo.svg");
  assert.deepEqual(config.colours, { accent: "#A01050", accentDark: "#ff90c0" });
  assert.deepEqual(config.refused, []);
});

test("a value that cannot be used is named, and the others count", () => {
  const wrong = {
    data: "https://elsewhere.example/data",
    findings: "https://elsewhere.example/findings.json",
    venues: ["1"],
    name: "x".repeat(61),
    logo: "javascript:alert(1)",
    colours: { accent: "red; background: url(x)" },
    script: "x.js",
  };
  assert.deepEqual(readConfig(wrong).refused.sort(), Object.keys(wrong).sort());
  assert.equal(readConfig({ ...wrong, name: "Halls" }).name, "Halls");
  assert.equal(readConfig(wrong).data, "https://maps.example/plaza/data/");
  for (const each of [null, 3, "x", [1]]) assert.deepEqual(readConfig(each).venues, []);
});
