import assert from "node:assert/strict";
import { test } from "node:test";
import { modules } from "./support/modules.mjs";

const { Store, decodeAddress, encodeAddress, emptyState } = await modules(
  "state/Store",
  "state/address",
  "state/State",
);

const full = {
  venue: 7,
  map: 12,
  place: { kind: "amenity", id: 3 },
  from: { kind: "waypoint", id: 22001 },
  via: [{ kind: "destination", id: 4 }, { kind: "amenity", id: -5 }],
  to: { kind: "destination", id: 14 },
  way: 2,
  level: 0,
  closed: [11001, 11003],
  isOverview: true,
  data: "level",
  path: 11001,
  category: 3,
  reach: 5,
  language: "ja",
};

test("an address says all of a state", () => {
  assert.deepEqual(decodeAddress(encodeAddress(full)), full);
  assert.equal(encodeAddress(full).startsWith("#venue=7&map=12&"), true);
});

test("the empty state has no address", () => {
  assert.equal(encodeAddress(emptyState), "");
  assert.deepEqual(decodeAddress(""), emptyState);
  assert.deepEqual(decodeAddress("#"), emptyState);
});

test("words of an address that say nothing are passed over alone", () => {
  const hash =
    "#venue=1e3&map=&from=x5&to=d14&via=d1,,<script>,a2&level=NaN&closed=1,b,3&lang=../../etc&more=1";
  assert.deepEqual(decodeAddress(hash), {
    ...emptyState,
    to: { kind: "destination", id: 14 },
    via: [{ kind: "destination", id: 1 }, { kind: "amenity", id: 2 }],
    closed: [1, 3],
  });
  assert.deepEqual(decodeAddress("#%E0%A4%A&&&==="), emptyState);
});

test("lists of an address have an end", () => {
  const many = Array.from({ length: 5000 }, (_, i) => i).join(",");
  assert.equal(decodeAddress(`#closed=${many}`).closed.length, 50);
});

test("a store tells of each change once, with what was before", () => {
  const store = new Store(emptyState);
  const told = [];
  const stop = store.subscribe((state, before) => told.push([state.map, before.map]));
  store.update({ map: 11 });
  store.update({ map: 11 });
  store.update({ map: 12, level: 0 });
  stop();
  store.update({ map: 13 });
  assert.deepEqual(told, [[11, null], [12, 11]]);
  assert.equal(store.state.map, 13);
});

test("a change that a listener makes is told after the one that it heard of", () => {
  const store = new Store(emptyState);
  const told = [];
  store.subscribe((state) => state.map === 11 && store.update({ map: 12 }));
  store.subscribe((state, before) => told.push([state.map, before.map]));
  store.update({ map: 11 });
  assert.deepEqual(told, [[11, null], [12, 11]]);
});

test("a state that was told is never changed afterwards", () => {
  const store = new Store(emptyState);
  store.update({ map: 11 });
  const before = store.state;
  store.update({ map: 12 });
  assert.equal(before.map, 11);
});
