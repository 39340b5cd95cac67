import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { FilesInMemory, Hub, TernError, load } from "../src/index.js";
import { fetchOf, plazaDocument } from "./plaza.mjs";
import { credentials, startService } from "./service.mjs";

let service;
before(async () => {
  service = await startService();
});
after(() => service.stop());

const hubOf = (tern, options) => tern.hub({ host: service.address, ...credentials, ...options });
const ask = (venue) => venue.answer('{"op":"route","from":22001,"to":14016}');
const isTernError = (code) => (error) => error instanceof TernError && error.code === code;

test("a hub loads a venue over fetch, which answers as the documents do", async () => {
  const tern = await load();
  const hub = hubOf(tern);
  const venue = await hub.load({ venues: [1] });
  assert.equal(ask(venue), ask(tern.open({ documents: plazaDocument })));
  hub.close();
  assert.ok(venue.places().length > 0, "a venue stays when its hub is closed");
});

test("a hub lists the venues of its customer", async () => {
  const hub = await Hub.open({ host: service.address, ...credentials });
  const listed = await hub.list();
  assert.deepEqual(listed, [{ id: 1, externalId: "venue-1", name: "Linden Plaza" }]);
  hub.close();
});

test("loads that are begun together all end", async () => {
  const hub = hubOf(await load());
  const loads = [hub.load(), hub.load({ venues: [1] }), hub.list(), hub.load({ venues: [99] })];
  const ends = await Promise.allSettled(loads);
  assert.deepEqual(ends.map(({ status }) => status), [
    "fulfilled", "fulfilled", "fulfilled", "rejected",
  ]);
  hub.close();
});

test("what a service refuses, and one that is not there, are errors", async () => {
  const tern = await load();
  const wrong = hubOf(tern, { clientSecret: "wrong" });
  await assert.rejects(wrong.load({ venues: [1] }), TernError);
  wrong.close();
  const nowhere = hubOf(await load(), { host: "http://127.0.0.1:1" });
  await assert.rejects(nowhere.load({ venues: [1] }), /access token/);
  nowhere.close();
  assert.throws(() => tern.hub({ host: 7 }), isTernError("TN006"));
});

test("what was loaded is kept in the files that were given, and used without the service", async () => {
  const files = new FilesInMemory();
  const first = hubOf(await load({ files }));
  const answer = ask(await first.load({ venues: [1] }));
  first.close();
  assert.ok(files.list("").length > 0);

  const { fetch, asked } = fetchOf(() => {
    throw new TypeError("no network");
  });
  const later = hubOf(await load({ files, fetch }), { autoReloadCache: false });
  assert.equal(ask(await later.load({ venues: [1] })), answer);
  assert.deepEqual(asked, []);
  later.close();
});

test("files that fail do not stop a load", async () => {
  const fail = () => {
    throw new Error("full");
  };
  const hub = hubOf(await load({ files: { read: fail, write: fail, remove: fail, list: fail } }));
  assert.ok((await hub.load({ venues: [1] })).places().length > 0);
  hub.close();
});

test("closing a hub ends its loads and cancels their requests", async () => {
  let hang;
  const hanging = new Promise((resolve) => (hang = resolve));
  const silent = (url, { signal, ...request }) => {
    if (url.includes("/auth/token")) return fetch(url, request);
    hang(signal);
    return new Promise((resolve, reject) => {
      signal.addEventListener("abort", () => reject(signal.reason));
    });
  };
  const hub = hubOf(await load({ fetch: silent }));
  const ended = assert.rejects(hub.load({ venues: [1] }), /the hub was closed/);
  const signal = await hanging;
  assert.ok(!signal.aborted);
  hub.close();
  await ended;
  assert.ok(signal.aborted);
  hub.close();
  await assert.rejects(hub.load({ venues: [1] }), isTernError("TN006"));
});

test("requests carry no cookies and stay out of the browser's cache", async () => {
  const requests = [];
  const { fetch } = fetchOf((url, request) => {
    requests.push(request);
    return new Response("{}", { status: 503 });
  });
  const hub = hubOf(await load({ fetch }));
  await assert.rejects(hub.load({ venues: [1] }), TernError);
  assert.ok(requests.length > 0);
  for (const { credentials: cookies, cache } of requests) {
    assert.equal(cookies, "omit");
    assert.equal(cache, "no-store");
  }
  hub.close();
});

test("garbage from a service is an error, and the library goes on", async () => {
  const garbage = Uint8Array.from({ length: 65_536 }, (_, i) => (i * 7919) % 256);
  for (const body of [garbage, "", '{"access_token":7}', "[".repeat(100_000)]) {
    const tern = await load({ fetch: fetchOf(() => new Response(body)).fetch });
    const hub = hubOf(tern);
    await assert.rejects(hub.load({ venues: [1] }), TernError);
    hub.close();
    assert.ok(tern.open({ documents: plazaDocument }).places().length > 0);
  }
});
