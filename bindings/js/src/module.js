// The compiled WebAssembly module, from beside this package or from what the caller has.
const beside = new URL("../dist/terncorekit.wasm", import.meta.url);
let own;

async function compiledFile(url) {
  const node = "node:fs/promises"; // not for bundlers to look into
  const { readFile } = await import(/* @vite-ignore */ /* webpackIgnore: true */ node);
  return WebAssembly.compile(await readFile(url));
}

async function compiledResponse(response) {
  if (!response.ok) throw new Error(`${response.url}: HTTP ${response.status}`);
  // A server that does not know the type still gives the bytes.
  if (response.headers.get("content-type") === "application/wasm") {
    return WebAssembly.compileStreaming(response);
  }
  return WebAssembly.compile(await response.arrayBuffer());
}

function compiledAt(url) {
  if (url.protocol === "file:" && globalThis.process?.versions?.node !== undefined) {
    return compiledFile(url);
  }
  return fetch(url).then(compiledResponse);
}

// `wasm` is an address, bytes, a Response, a module, or undefined for the package's own, which is
// compiled once.
export async function compiled(wasm) {
  const given = await wasm;
  if (given === undefined) {
    own ??= compiledAt(beside);
    own.catch(() => (own = undefined));
    return own;
  }
  if (given instanceof WebAssembly.Module) return given;
  if (globalThis.Response !== undefined && given instanceof Response) {
    return compiledResponse(given);
  }
  if (typeof given === "string" || given instanceof URL) {
    return compiledAt(new URL(given, globalThis.document?.baseURI ?? globalThis.location?.href));
  }
  return WebAssembly.compile(given);
}
