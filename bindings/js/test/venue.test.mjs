import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { test } from "node:test";
import { TernError, Venue, fetchDocuments, load } from "../src/index.js";
import { fetchOf, plazaDocument, plazaDocuments } from "./plaza.mjs";
import { command } from "./service.mjs";

const open = async (options) => (await load(options)).open({ documents: plazaDocument });
const isOutOfMemory = (error) => error instanceof TernError && /out of memory/.test(error.message);
const isTernError = (code, words) => (error) => {
  assert.ok(error instanceof TernError, String(error));
  assert.equal(error.code, code);
  assert.match(error.message, words);
  return true;
};

test("the library says its version", async () => {
  assert.match((await load()).version, /^\d+\.\d+\.\d+$/);
});

test("documents come from an object, a map, a function, as text, bytes or objects", async () => {
  const tern = await load();
  const object = plazaDocuments();
  const sources = [
    object,
    new Map(Object.entries(object)),
    (path) => object[path],
    (path) => object[path] && object[path].toString(),
    (path) => object[path] && new Uint8Array(object[path]).buffer,
    (path) => object[path] && JSON.parse(object[path].toString()),
  ];
  for (const documents of sources) {
    const venue = tern.open({ documents, venues: [1] });
    assert.equal(venue.route({ from: 22001, to: 14016 }).at(-1).points.at(-1), 14016);
    venue.close();
  }
});

test("a route is its segments, and none is an empty list", async () => {
  const venue = await open();
  const route = venue.route({ from: 22001, to: 14016 });
  assert.equal(route[0].points[0], 22001);
  assert.ok(route.at(-1).mmDistance > 0);
  assert.deepEqual(venue.route({ from: 22001, to: 1 }), []);
});

test("places are found by longer names, misspelled ones too", async () => {
  const venue = await open();
  const found = (text) => venue.places(text).map(({ name }) => name);
  assert.deepEqual(found("popp"), ["Poppy Records"]);
  assert.deepEqual(found("coral books"), ["Coral Books"]);
  assert.deepEqual(found("foxglove camras"), ["Foxglove Cameras"]);
  assert.deepEqual(found("zzzz"), []);
});

test("each kind of question is answered", async () => {
  const venue = await open();
  assert.equal(venue.places("cam")[0].name, "Foxglove Cameras");
  assert.ok(venue.places().length > 20);
  assert.deepEqual(venue.reach({ from: 22001, metres: 4 }), [
    { waypoint: 22001, cost: 0, mm: 0 },
    { waypoint: 22026, cost: 66, mm: 3300 },
  ]);
  assert.ok(venue.directions({ from: 22001, to: 14016 }).steps.length > 2);
  const tour = venue.tour({ from: 12002, destinations: [42, 17] });
  assert.equal(tour.legs.length, 2);
  assert.equal(venue.nearest({ from: 22001, amenity: 2 }).element.id, 2);
  assert.equal(venue.nearest({ map: 22, at: [400, 300], amenity: 2 }).element.id, 2);
  assert.ok(venue.alternatives({ from: 22001, to: 14016 }).optimal.length > 0);
  assert.equal(venue.ask({ op: "center" }).point.length, 2);
});

test("every request of the command's help has a method", () => {
  const help = spawnSync(command, ["batch", "--help"], { encoding: "utf8" }).stdout;
  const named = new Set([...help.matchAll(/"op":"(\w+)"/g)].map(([, name]) => name));
  assert.ok(named.size > 10);
  named.delete("nearestByWalk"); // which nearest() asks, from a waypoint
  for (const name of named) assert.equal(typeof Venue.prototype[name], "function", name);
});

test("requests about points, numbers and the graph are answered", async () => {
  const venue = await open();
  const goals = venue.places("toys")[0].waypoints;
  assert.equal(venue.routeToAny({ from: 22001, to: goals }).at(-1).points.at(-1), 13020);
  assert.equal(venue.closest({ map: 11, at: [400, 300] }), 11010);
  assert.equal(venue.closest({ map: 99, at: [400, 300] }), null);
  assert.equal(venue.closestByRoute({ candidates: [22001, 14015], to: 14016 }), 14015);
  assert.ok(venue.nearestOnMap({ from: 12002, toMap: 12, amenities: [2] }).totalDistance > 0);
  assert.equal(venue.nearestOnMap({ from: 12002, toMap: 12, amenities: [] }).waypoint, null);
  assert.deepEqual(venue.solve({ matrix: [[0, 1], [1, 0]] }), { tour: [0, 1], cost: 1 });
  const center = venue.center();
  const local = venue.convert({ point: center, from: "EPSG:4326", to: "tern:local" });
  assert.ok(local.every(Number.isFinite));
});

test("a mover is closed by blocks on its links, and opened again", async () => {
  const venue = await open();
  const escalator = 3;
  const way = { from: 11005, to: 12010 };
  const isTaken = () => venue.route(way)[0].points.length === 1;
  assert.ok(isTaken());
  const block = (blocked) => {
    for (const { id, pathType } of venue.neighbors({ node: way.from })) {
      if (pathType === escalator) venue.blockEdge({ from: way.from, to: id, blocked });
    }
  };
  block(true);
  assert.ok(!isTaken());
  block(false);
  assert.ok(isTaken());
});

test("nobody gets into a waypoint, or out of it, that is blocked", async () => {
  const venue = await open();
  const [into, out] = [{ from: 22026, to: 22001 }, { from: 22001, to: 22026 }];
  const hasWay = (request) => venue.route(request).length > 0;
  venue.blockEntry({ node: 22001, blocked: true });
  assert.deepEqual([hasWay(into), hasWay(out)], [false, true]);
  venue.blockEntry({ node: 22001, blocked: false });
  venue.blockExit({ node: 22001, blocked: true });
  assert.deepEqual([hasWay(into), hasWay(out)], [true, false]);
  venue.blockExit({ node: 22001, blocked: false });
  assert.deepEqual([hasWay(into), hasWay(out)], [true, true]);
});

test("a matrix is flat, with Infinity where there is no way", async () => {
  const venue = await open();
  const matrix = venue.matrix({ from: [22001, 12002, 1], to: [14016, 22001] });
  assert.equal(matrix.rows, 3);
  assert.equal(matrix.columns, 2);
  assert.ok(matrix.costs instanceof Float64Array);
  assert.equal(matrix.costs[1], 0);
  assert.equal(matrix.costs[4], Infinity);
  const [route] = venue.route({ from: 12002, to: 14016 }).slice(-1);
  assert.equal(matrix.mmDistances[2], route.mmDistance);
});

test("an answer's text is that of the library, errors included", async () => {
  const venue = await open();
  assert.match(venue.answer('{"op":"center"}'), /^\{"point":\[16\./);
  assert.match(venue.answer("no JSON"), /^\{"error":\{"code":"TN006"/);
  assert.throws(() => venue.ask({ op: "nope" }), isTernError("TN006", /"nope"/));
  assert.throws(() => venue.answer('{"op":\0}'), isTernError("TN006", /NUL/));
});

test("a batch answers lists and streams in their order", async () => {
  const venue = await open();
  const requests = [{ op: "center", id: 1 }, '{"op":"center","id":2}'];
  async function* stream() {
    yield* requests;
  }
  for (const each of [requests, stream()]) {
    const ids = [];
    for await (const answer of venue.batch(each)) ids.push(JSON.parse(answer).id);
    assert.deepEqual(ids, [1, 2]);
  }
});

test("letters beyond ASCII pass both ways", async () => {
  const venue = await open();
  const answer = JSON.parse(venue.answer('{"op":"center","id":"Zürich 東京 🚇"}'));
  assert.equal(answer.id, "Zürich 東京 🚇");
});

test("large numbers come back digit by digit", async () => {
  const venue = await open();
  for (const number of [2 ** 53 + 2, 1234567890123456789, 2 ** 62 + 2 ** 20, 9223372036854774784]) {
    const exact = BigInt(number).toString();
    assert.equal(venue.answer(`{"op":"nope","id":${exact}.0}`).slice(0, 6 + exact.length), `{"id":${exact}`);
  }
});

test("a closed venue gives an error, and closing twice means nothing", async () => {
  const venue = await open();
  venue.close();
  venue.close();
  assert.throws(() => venue.route({ from: 1, to: 2 }), isTernError("TN006", /closed/));
  const other = await open();
  if (Symbol.dispose !== undefined) other[Symbol.dispose]();
});

test("a document that is missing is named", async () => {
  const tern = await load();
  const documents = plazaDocuments();
  delete documents["venue/1/building/2/full.json"];
  assert.throws(
    () => tern.open({ documents }),
    isTernError("TN007", /venue\/1\/building\/2\/full\.json: was not given/),
  );
});

test("what a reader of documents throws comes out of open", async () => {
  const tern = await load();
  const broken = () => {
    throw new RangeError("my own");
  };
  assert.throws(() => tern.open({ documents: broken }), /my own/);
  assert.ok(tern.open({ documents: plazaDocument }).places().length > 0);
});

test("broken documents are errors, and the library goes on", async () => {
  const tern = await load();
  const garbage = Uint8Array.from({ length: 4096 }, (_, i) => (i * 7919) % 256);
  const customer = (text) => (path) => (path === "full.json" ? text : plazaDocument(path));
  const building = (text) => (path) => (path.includes("building/1") ? text : plazaDocument(path));
  const texts = [
    garbage, "", "null", "[]", "\0", '{"venues":1e999}', "[".repeat(1_000_000),
    '{"a":'.repeat(100_000), '{"venues":[],"floors":7',
  ];
  for (const text of texts) {
    for (const documents of [customer(text), building(text)]) {
      assert.throws(() => tern.open({ documents }), isTernError("TN003", /full\.json/));
    }
  }
  assert.ok(tern.open({ documents: plazaDocument }).places().length > 0);
});

test("every document that is cut off is an error or a venue, and no trap", async () => {
  const tern = await load();
  const whole = plazaDocument("venue/1/building/1/full.json");
  for (let cut = 0; cut < whole.length; cut += Math.ceil(whole.length / 97)) {
    const documents = { ...plazaDocuments(), "venue/1/building/1/full.json": whole.subarray(0, cut) };
    assert.throws(() => tern.open({ documents }), isTernError("TN003", /building\/1/));
  }
});

test("memory that runs out is an error of the call, and the library goes on", async () => {
  const tern = await load({ maximumBytes: 24 * 2 ** 20 });
  const venue = tern.open({ documents: plazaDocument });
  const before = venue.answer('{"op":"route","from":22001,"to":14016}');
  const opened = [];
  assert.throws(() => {
    for (;;) opened.push(tern.open({ documents: plazaDocument }));
  }, isOutOfMemory);
  assert.ok(opened.length > 0);
  for (const each of opened) each.close();
  assert.equal(venue.answer('{"op":"route","from":22001,"to":14016}'), before);
  const large = `{"op":"places","text":"${"x".repeat(30 * 2 ** 20)}"}`;
  assert.throws(() => venue.answer(large), isOutOfMemory);
  const many = Array.from({ length: 1900 }, () => 22001);
  assert.throws(
    () => venue.ask({ op: "matrix", from: many, to: many }),
    isTernError("TN008", /out of memory/),
  );
  assert.equal(venue.answer('{"op":"route","from":22001,"to":14016}'), before);
});

test("opening and closing many times takes no more memory", async () => {
  const tern = await load();
  const openAndClose = (times) => {
    for (let i = 0; i < times; i += 1) {
      const venue = tern.open({ documents: plazaDocument });
      venue.route({ from: 22001, to: 14016 });
      venue.close();
    }
  };
  openAndClose(10);
  const before = tern.memoryBytes;
  openAndClose(200);
  assert.equal(tern.memoryBytes, before);
});

test("instances know nothing of each other", async () => {
  const [one, other] = await Promise.all([open(), open()]);
  one.ask({ op: "blockEdge", from: 22001, to: 22026, blocked: true });
  assert.notDeepEqual(one.route({ from: 22001, to: 22026 }), other.route({ from: 22001, to: 22026 }));
});

test("documents are fetched from an address, those that are listed", async () => {
  const { fetch, asked } = fetchOf((url) => {
    const contents = plazaDocument(url.pathname.replace("/plaza/", ""));
    return new Response(contents, { status: contents === undefined ? 404 : 200 });
  });
  const tern = await load({ fetch });
  const venue = await tern.fetch("http://maps.test/plaza");
  assert.ok(venue.route({ from: 22001, to: 14016 }).length > 0);
  assert.deepEqual(asked.sort(), [
    "http://maps.test/plaza/full.json",
    "http://maps.test/plaza/venue/1/building/1/full.json",
    "http://maps.test/plaza/venue/1/building/2/full.json",
    "http://maps.test/plaza/venue/1/full.json",
  ]);
  await assert.rejects(tern.fetch("http://maps.test/plaza", { venues: [9] }), isTernError("TN007", /venue 9/));
});

test("documents that were fetched are opened as often as wanted", async () => {
  const { fetch, asked } = fetchOf((url) => new Response(plazaDocument(url.pathname.slice(1))));
  const documents = await fetchDocuments("http://maps.test", { fetch, venues: [1] });
  assert.deepEqual([...documents.keys()].sort(), Object.keys(plazaDocuments()).sort());
  const tern = await load();
  for (let i = 0; i < 2; i += 1) assert.ok(tern.open({ documents }).places().length > 0);
  assert.equal(asked.length, 4);
  const signal = AbortSignal.abort();
  await assert.rejects(fetchDocuments("http://maps.test", { fetch, signal }), { name: "AbortError" });
});

test("an address that fails is an error that names it", async () => {
  const tern = await load({ fetch: fetchOf(() => new Response("", { status: 503 })).fetch });
  await assert.rejects(tern.fetch("http://maps.test/"), isTernError("TN002", /full\.json: HTTP 503/));
  const silent = fetchOf(() => {
    throw new TypeError("unreachable");
  });
  await assert.rejects(
    tern.fetch("http://maps.test/", { fetch: silent.fetch }),
    isTernError("TN001", /full\.json: unreachable/),
  );
  const signal = AbortSignal.abort();
  await assert.rejects(tern.fetch("http://maps.test/", { signal }), { name: "AbortError" });
});

test("the shared library opens venues without being loaded first", async () => {
  const venue = await Venue.open({ documents: plazaDocument });
  assert.ok(venue.places().length > 0);
});

test("joined venues are one at a time", async () => {
  const tern = await load();
  // A second venue, which is the first one under another number.
  const documents = (path) => {
    const document = plazaDocument(path.replace("venue/2/", "venue/1/"));
    return path === "venue/2/full.json" ? document.toString().replace('"id":1', '"id":2') : document;
  };
  const joined = tern.open({ documents, venues: [1, 2] });
  assert.throws(() => tern.open({ documents, venues: [1, 2] }), isTernError("TN006", /open already/));
  assert.ok(joined.places({ venue: 1, text: "cam" }).length > 0);
  joined.close();
  tern.open({ documents, venues: [1, 2] }).close();
});
