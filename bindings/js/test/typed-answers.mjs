// Writes a program in TypeScript that holds real answers as the types declare them. It compiles when
// each has the fields that are declared, of their types, and no others.
import assert from "node:assert/strict";
import { Venue, load } from "../src/index.js";
import { plazaDocument } from "./plaza.mjs";

const door = 22001;
const goal = 14016;
const way = { from: door, to: goal };
const spot = { map: 22, at: [400, 300] };
const pole = { point: [0, 90], from: "EPSG:4326", to: "EPSG:3857" };

// What is asked, and the type of its answer.
const questions = [
  ["Segment[]", "route", way],
  ["Segment[]", "route", { ...way, to: 1 }],
  ["Segment[]", "routeToAny", { from: door, to: [13020, goal] }],
  ["Alternatives", "alternatives", { ...way, options: { optimalPathMatchRatio: 0.6 } }],
  ["Alternatives", "alternatives", { ...way, to: 1 }],
  ["Directions", "directions", way],
  ["Directions", "directions", { from: goal, to: 12025, accessibility: 0, language: "de" }],
  ["Tour", "tour", { from: 12002, destinations: [42, 17] }],
  ["Nearest", "nearest", { ...spot, amenity: 2 }],
  ["Nearest", "nearest", { ...spot, destination: 999 }],
  ["NearestByWalk", "nearest", { from: door, pathType: 2 }],
  ["NearestByWalk", "nearest", { from: door, destinations: [31], amenities: [2] }],
  ["NearestByWalk", "nearest", { from: door, destination: 999 }],
  ["NearestOnMap", "nearestOnMap", { from: 12002, toMap: 12, amenities: [2] }],
  ["NearestOnMap", "nearestOnMap", { from: 12002, toMap: 99, destinations: [1] }],
  ["number | null", "closest", spot],
  ["number | null", "closest", { ...spot, map: 99 }],
  ["number | null", "closestByRoute", { candidates: [door, 13020], to: goal }],
  ["Matrix", "matrix", { from: [door, 1], to: [goal] }],
  ["Reached[]", "reach", { from: [door, goal], metres: 20 }],
  ["Place[]", "places", {}],
  ["[number | null, number | null]", "convert", pole],
  ["[number, number]", "center", {}],
  ["Solution", "solve", { matrix: [[0, 1], [1, 0]] }],
  ["Neighbor[]", "neighbors", { node: 11001 }],
  ["void", "blockEdge", { from: 11001, to: 12004, blocked: true }],
  ["void", "blockEntry", { node: 11001, blocked: true }],
  ["void", "blockExit", { node: 11001, blocked: true }],
];

function literal(value) {
  if (value instanceof Float64Array) return `new Float64Array([${[...value].join(",")}])`;
  if (Array.isArray(value)) return `[${value.map(literal).join(",")}]`;
  if (typeof value !== "object" || value === null) return JSON.stringify(value) ?? "undefined";
  const fields = Object.entries(value).map(([name, field]) => `${name}:${literal(field)}`);
  return `{${fields.join(",")}}`;
}

const asked = new Set(questions.map(([, method]) => method));
const others = new Set(["constructor", "answer", "ask", "batch", "close"]);
for (const method of Object.getOwnPropertyNames(Venue.prototype)) {
  assert.ok(asked.has(method) || others.has(method), `${method} is not asked here`);
}

const venue = (await load()).open({ documents: plazaDocument });
const lines = questions.map(([type, method, request], i) => {
  const value = literal(venue[method](request));
  return `export const answer${i}: ${type} = ${value};`;
});
const [segment] = venue.route(way);
const [step] = venue.directions(way).steps;

const types = [
  "Alternatives", "Directions", "Matrix", "Nearest", "NearestByWalk", "NearestOnMap", "Neighbor",
  "Place", "Reached", "Segment", "Solution", "Step", "Tour",
];
console.log(`import type { ${types.join(", ")} } from "../../bindings/js/types/index.js";
${lines.join("\n")}
// @ts-expect-error a field that is not declared is seen
export const more: Segment = ${literal({ ...segment, more: 1 })};
// @ts-expect-error and so is one of another type
export const other: Step = ${literal({ ...step, at: [1, 2] })};`);
