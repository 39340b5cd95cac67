// The package in a browser: in a page, in a module worker, and over a service. To be run where
// playwright-core is installed. Server and service have one origin; nothing else may be asked.
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { createServer, request as httpRequest } from "node:http";
import { createRequire } from "node:module";
import { extname, join } from "node:path";
import { after, before, test } from "node:test";
import { chromiumOptions } from "../../../tests/support/chromium.mjs";
import { load } from "../src/index.js";
import { plazaDocument, plazaFolder } from "./plaza.mjs";
import { credentials, startService } from "./service.mjs";

const { chromium } = createRequire(join(process.cwd(), "here"))("playwright-core");

const folders = {
  "/js/": new URL("../", import.meta.url),
  "/plaza/": plazaFolder,
};
const types = {
  ".js": "text/javascript",
  ".wasm": "application/wasm",
  ".json": "application/json",
};
// What a careful page allows itself.
const policy = "default-src 'self'; img-src data:; script-src 'self' 'wasm-unsafe-eval'";

// Hands a request on to the service.
function passOn(service, asked, answer) {
  const { method, headers, url } = asked;
  const passed = httpRequest(new URL(url, service.address), { method, headers }, (response) => {
    answer.writeHead(response.statusCode, response.headers);
    response.pipe(answer);
  });
  asked.pipe(passed);
}

async function giveFile(url, answer) {
  const [prefix] = Object.keys(folders).filter((each) => url.startsWith(each));
  try {
    const contents = await readFile(new URL(url.slice(prefix.length), folders[prefix]));
    answer.writeHead(200, { "content-type": types[extname(url)] });
    answer.end(contents);
  } catch {
    answer.writeHead(404);
    answer.end();
  }
}

function startServer(service) {
  const server = createServer((asked, answer) => {
    if (asked.url.startsWith("/QRVS/")) return passOn(service, asked, answer);
    if (asked.url !== "/") return giveFile(asked.url, answer);
    answer.writeHead(200, { "content-type": "text/html", "content-security-policy": policy });
    return answer.end("<!DOCTYPE html><title>terncorekit</title><link rel=icon href=data:,>");
  });
  return new Promise((resolve) => {
    server.listen(0, "127.0.0.1", () => resolve(server));
  });
}

let service;
let server;
let browser;
let origin;
let expected;

before(async () => {
  service = await startService();
  server = await startServer(service);
  origin = `http://127.0.0.1:${server.address().port}`;
  browser = await chromium.launch(chromiumOptions);
  const venue = (await load()).open({ documents: plazaDocument });
  expected = venue.answer('{"op":"route","from":22001,"to":14016}');
});
after(async () => {
  await browser.close();
  server.close();
  await service.stop();
});

// Runs a function in a fresh page, and says what it gave, what the page asked for and complained of.
async function inPage(run, words) {
  const page = await browser.newPage();
  const asked = [];
  const complaints = [];
  page.context().on("request", (request) => asked.push(request.url()));
  page.on("console", (message) => {
    if (message.type() === "error") complaints.push(message.text());
  });
  page.on("pageerror", (error) => complaints.push(error.message));
  await page.goto(`${origin}/`);
  const result = await page.evaluate(run, words);
  await page.close();
  assert.ok(asked.every((url) => url.startsWith(`${origin}/`)), asked.join(" "));
  return { result, asked: asked.map((url) => url.slice(origin.length)), complaints };
}

test("a page fetches a venue's documents and asks", async () => {
  const { result, asked, complaints } = await inPage(async () => {
    const { Venue, TernError } = await import("/js/src/index.js");
    const venue = await Venue.fetch("plaza");
    const answer = venue.answer('{"op":"route","from":22001,"to":14016}');
    const matrix = venue.matrix({ from: [22001, 12002], to: [14016] });
    venue.close();
    try {
      venue.places();
    } catch (error) {
      return [answer, matrix.costs.length, error instanceof TernError && error.code];
    }
    return [];
  });
  assert.deepEqual(result, [expected, 2, "TN006"]);
  assert.deepEqual(complaints, []);
  const documents = asked.filter((path) => path.startsWith("/plaza/"));
  assert.equal(documents.length, 4);
  assert.ok(asked.every((path) => /^\/($|js\/src\/|js\/dist\/|plaza\/)/.test(path)), asked.join(" "));
});

test("a module worker does the same", async () => {
  const { result, complaints } = await inPage(async () => {
    const { startWorker } = await import("/js/src/worker.js");
    const tern = await startWorker();
    const venue = await tern.fetch("/plaza/");
    const answer = await venue.answer('{"op":"route","from":22001,"to":14016}');
    const answers = [];
    const requests = [1, 2, 3].map((id) => ({ op: "center", id }));
    for await (const each of venue.batch(requests)) answers.push(JSON.parse(each).id);
    const { costs } = await venue.matrix({ from: [22001, 12002], to: [14016] });
    await venue.close();
    await tern.close();
    return [answer, answers, costs instanceof Float64Array];
  });
  assert.deepEqual(result, [expected, [1, 2, 3], true]);
  assert.deepEqual(complaints, []);
});

test("a hub works over the browser's fetch, in a page and in a worker", async () => {
  const { result, asked, complaints } = await inPage(async (options) => {
    const { Hub } = await import("/js/src/index.js");
    const { startWorker } = await import("/js/src/worker.js");
    const question = '{"op":"route","from":22001,"to":14016}';
    const hub = await Hub.open(options);
    const [listed] = await hub.list();
    const venue = await hub.load({ venues: [1] });
    hub.close();
    const tern = await startWorker();
    const other = await tern.hub(options);
    const answer = await (await other.load()).answer(question);
    await tern.close();
    return [listed.name, venue.answer(question), answer];
  }, { host: origin, ...credentials });
  assert.deepEqual(result, ["Linden Plaza", expected, expected]);
  assert.deepEqual(complaints, []);
  assert.ok(asked.some((path) => path.startsWith("/QRVS/")));
});

test("broken documents and memory that runs out are errors in a page too", async () => {
  const { result } = await inPage(async () => {
    const { load } = await import("/js/src/index.js");
    const tern = await load({ maximumBytes: 8 * 2 ** 20 });
    const codes = [];
    for (const text of ["garbage", "[".repeat(100_000), "x".repeat(16 * 2 ** 20)]) {
      try {
        tern.open({ documents: () => text });
      } catch ({ code }) {
        codes.push(code);
      }
    }
    return codes;
  });
  assert.deepEqual(result, ["TN003", "TN003", "TN008"]);
});

test("the control: what a page asks for and complains of is seen", async () => {
  const { asked, complaints } = await inPage(async () => {
    console.error("seen");
    await fetch("/nothing");
    const style = document.createElement("style");
    style.textContent = "body { color: red }";
    document.head.append(style);
  });
  assert.ok(asked.includes("/nothing"));
  assert.equal(complaints.length, 3);
});
