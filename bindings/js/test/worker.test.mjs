import assert from "node:assert/strict";
import { once } from "node:events";
import { createServer } from "node:http";
import { after, before, test } from "node:test";
import { Venue, fetchDocuments, load } from "../src/index.js";
import { RemoteVenue, TernError, startWorker } from "../src/worker.js";
import { plazaDocument, plazaDocuments } from "./plaza.mjs";
import { credentials, startService } from "./service.mjs";
import { moduleWithTrapIn } from "./trapping.mjs";

let tern;
let service;
before(async () => {
  [tern, service] = await Promise.all([startWorker(), startService()]);
});
after(() => Promise.all([tern.close(), service.stop()]));

const open = () => tern.open({ documents: plazaDocuments() });

test("a worker answers as the library does", async () => {
  const here = (await load()).open({ documents: plazaDocument });
  const venue = await open();
  assert.match(tern.version, /^\d+\./);
  const request = { from: 22001, to: 14016 };
  assert.deepEqual(await venue.route(request), here.route(request));
  assert.deepEqual(await venue.places("cam"), here.places("cam"));
  const matrix = { from: [22001, 12002], to: [14016] };
  assert.deepEqual(await venue.matrix(matrix), here.matrix(matrix));
  const text = '{"op":"center","id":5}';
  assert.equal(await venue.answer(text), here.answer(text));
  assert.ok((await tern.memoryBytes()) > 0);
  await venue.close();
});

test("questions that are asked at once are each answered", async () => {
  const venue = await open();
  const ids = Array.from({ length: 50 }, (_, id) => id);
  const answers = await Promise.all(ids.map((id) => venue.ask({ op: "center", id })));
  assert.deepEqual(answers.map(({ id }) => id), ids);
});

test("a batch goes over in order, lists and streams", async () => {
  const venue = await open();
  const requests = Array.from({ length: 3000 }, (_, id) => ({ op: "center", id }));
  let count = 0;
  for await (const answer of venue.batch(requests)) {
    assert.equal(JSON.parse(answer).id, count);
    count += 1;
  }
  assert.equal(count, requests.length);

  // The next request of this stream comes only when the one before has its answer.
  let answered = () => {};
  async function* stream() {
    for (const request of requests.slice(0, 3)) {
      const isAnswered = new Promise((resolve) => (answered = resolve));
      yield request;
      await isAnswered;
    }
  }
  count = 0;
  for await (const answer of venue.batch(stream())) {
    assert.equal(JSON.parse(answer).id, count);
    count += 1;
    answered();
  }
  assert.equal(count, 3);
});

test("errors come over as they are", async () => {
  const venue = await open();
  const isWrongArgument = (error) => error instanceof TernError && error.code === "TN006";
  await assert.rejects(venue.ask({ op: "nope" }), isWrongArgument);
  await assert.rejects(tern.open({ documents: () => undefined }), isWrongArgument);
  await venue.close();
  await venue.close();
  await assert.rejects(venue.route({ from: 22001, to: 14016 }), isWrongArgument);
});

test("a hub works in a worker", async () => {
  const hub = await tern.hub({ host: service.address, ...credentials });
  assert.equal((await hub.list())[0].name, "Linden Plaza");
  const venue = await hub.load({ venues: [1] });
  assert.ok((await venue.route({ from: 22001, to: 14016 })).length > 0);
  await hub.close();
});

// A server of documents that `respond(path, answer)` gives.
async function serve(respond) {
  const server = createServer((asked, answer) => respond(asked.url.slice(1), answer, asked));
  server.listen(0, "127.0.0.1");
  await once(server, "listening");
  return { address: `http://127.0.0.1:${server.address().port}/`, stop: () => server.close() };
}

test("a worker's venue has every method of a venue", () => {
  for (const method of Object.getOwnPropertyNames(Venue.prototype)) {
    assert.equal(typeof RemoteVenue.prototype[method], "function", method);
  }
});

test("blocks hold in the worker", async () => {
  const venue = await open();
  const request = { from: 22001, to: 22026 };
  const free = await venue.route(request);
  assert.equal(await venue.blockEdge({ ...request, blocked: true }), undefined);
  assert.notDeepEqual(await venue.route(request), free);
  await venue.blockEdge({ ...request, blocked: false });
  assert.deepEqual(await venue.route(request), free);
});

test("documents that a page fetches are handed to the worker, and fetched once", async () => {
  const asked = [];
  const { address, stop } = await serve((path, answer) => {
    asked.push(path);
    answer.end(plazaDocument(path));
  });
  const documents = await fetchDocuments(address);
  const venue = await tern.open({ documents });
  assert.ok((await venue.route({ from: 22001, to: 14016 })).length > 0);
  assert.deepEqual(asked.sort(), Object.keys(plazaDocuments()).sort());
  stop();
});

test("a fetch that is aborted ends at once, and its requests in the worker", async () => {
  let hang;
  const hanging = new Promise((resolve) => (hang = resolve));
  const { address, stop } = await serve((path, answer, asked) => hang(asked));
  const controller = new AbortController();
  const fetched = tern.fetch(address, { signal: controller.signal });
  const ended = assert.rejects(fetched, /no longer wanted/);
  const asked = await hanging;
  const isGone = once(asked.socket, "close");
  controller.abort(new Error("no longer wanted"));
  await Promise.all([ended, isGone]);
  await assert.rejects(tern.fetch(address, { signal: AbortSignal.abort() }), { name: "AbortError" });
  assert.ok((await (await open()).places()).length > 0);
  stop();
});

// A second venue, which is the first one under another number. Joined, one set is open at a time.
function twins(path) {
  const document = plazaDocument(path.replace("venue/2/", "venue/1/"));
  return path === "venue/2/full.json" ? document.toString().replace('"id":1', '"id":2') : document;
}

test("a venue that is made when its fetch was aborted is closed", async () => {
  const controller = new AbortController();
  let left = 7;
  const { address, stop } = await serve((path, answer) => {
    left -= 1;
    const isLast = left === 0;
    answer.end(twins(path), () => {
      if (!isLast) return;
      // The worker makes the venue while nothing is heard of it here.
      Atomics.wait(new Int32Array(new SharedArrayBuffer(4)), 0, 0, 500);
      controller.abort();
    });
  });
  const { signal } = controller;
  await assert.rejects(tern.fetch(address, { venues: [1, 2], signal }), { name: "AbortError" });
  // What the worker said before this answer was heard, too.
  await tern.memoryBytes();
  const joined = await tern.fetch(address, { venues: [1, 2] });
  await joined.close();
  stop();
});

test("an abort that comes late changes nothing", async () => {
  const { address, stop } = await serve((path, answer) => answer.end(plazaDocument(path)));
  const controller = new AbortController();
  const venue = await tern.fetch(address, { signal: controller.signal });
  controller.abort();
  assert.ok((await venue.places()).length > 0);
  stop();
});

test("a library that stops in the worker says so to every later call", async () => {
  const other = await startWorker({ wasm: await moduleWithTrapIn("answer") });
  const hasStopped = (error) =>
    error instanceof TernError &&
    error.code === "TN008" &&
    error.message === "the library has stopped";
  const venue = await other.open({ documents: plazaDocuments() });
  const requests = [venue.route({ from: 22001, to: 14016 }), venue.places(), venue.answer("{}")];
  for (const each of requests) await assert.rejects(each, hasStopped);
  await assert.rejects(other.open({ documents: plazaDocuments() }), hasStopped);
  await assert.rejects(venue.batch([{ op: "center" }]).next(), hasStopped);
  await venue.close();
  await other.close();
});

test("a worker that is closed ends what was asked of it", async () => {
  const other = await startWorker();
  const venue = await other.open({ documents: plazaDocuments() });
  const asked = assert.rejects(venue.route({ from: 22001, to: 14016 }), TernError);
  await other.close();
  await asked;
  await assert.rejects(venue.route({ from: 22001, to: 14016 }), /closed/);
});

test("a library that cannot be loaded is an error", async () => {
  await assert.rejects(startWorker({ wasm: new Uint8Array(8) }), /./);
});
