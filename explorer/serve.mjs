// A server of the page and of a venue's folder, for tests and development: serve.mjs PAGE VENUE [PORT].
// It gives files below these two folders and nothing else, to this machine alone.
import { createReadStream } from "node:fs";
import { realpath, stat } from "node:fs/promises";
import { createServer } from "node:http";
import { extname, join, resolve, sep } from "node:path";
import { pathToFileURL } from "node:url";
import { policy } from "./policy.mjs";

const types = {
  ".css": "text/css; charset=utf-8",
  ".html": "text/html; charset=utf-8",
  ".js": "text/javascript; charset=utf-8",
  ".json": "application/json",
  ".svg": "image/svg+xml",
  ".wasm": "application/wasm",
};
const headers = {
  "cache-control": "no-cache",
  "content-security-policy": policy.join("; "),
  "cross-origin-opener-policy": "same-origin",
  "cross-origin-resource-policy": "same-origin",
  "referrer-policy": "no-referrer",
  "x-content-type-options": "nosniff",
};

// The path of a file below the folder; undefined where there is none, or where a link leads out.
async function fileBelow(folder, path) {
  try {
    const root = await realpath(folder);
    const file = await realpath(join(root, path));
    if (!file.startsWith(root + sep) || !(await stat(file)).isFile()) return undefined;
    return file;
  } catch {
    return undefined;
  }
}

// The words of an address's path, without those that lead upwards.
function pathOf(url, base) {
  try {
    const { pathname } = new URL(url, "http://here");
    if (!pathname.startsWith(base)) return undefined;
    const path = decodeURIComponent(pathname.slice(base.length));
    return /(^|\/)\.\.?(\/|$)|[\0\\]/.test(path) ? undefined : path;
  } catch {
    return undefined;
  }
}

// Starts a server; `files` are texts that stand in for files of the page, by their paths.
export async function startServer({ page, venue, port = 0, base = "/", files = {} }) {
  const find = async (path) => {
    if (path.startsWith("data/")) return fileBelow(venue, path.slice("data/".length));
    return fileBelow(page, path === "" ? "index.html" : path);
  };
  const server = createServer(async (asked, answer) => {
    const path = asked.method === "GET" || asked.method === "HEAD" ? pathOf(asked.url, base) : undefined;
    const own = path === undefined ? undefined : files[path];
    const file = path === undefined || own !== undefined ? undefined : await find(path);
    if (own === undefined && file === undefined) {
      answer.writeHead(404, headers);
      return answer.end();
    }
    const type = types[extname(file ?? path)] ?? "application/octet-stream";
    answer.writeHead(200, { ...headers, "content-type": type });
    if (own !== undefined || asked.method === "HEAD") return answer.end(own);
    return createReadStream(file).on("error", () => answer.destroy()).pipe(answer);
  });
  await new Promise((listening, failed) => {
    server.once("error", failed);
    server.listen(port, "127.0.0.1", listening);
  });
  const address = `http://127.0.0.1:${server.address().port}${base}`;
  return { address, close: () => new Promise((closed) => server.close(closed)) };
}

if (process.argv[1] !== undefined && import.meta.url === pathToFileURL(process.argv[1]).href) {
  const [page, venue, port = "8090"] = process.argv.slice(2);
  const { address } = await startServer({
    page: resolve(page),
    venue: resolve(venue),
    port: Number(port),
  });
  console.log(address);
}
