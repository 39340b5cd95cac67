// One WebAssembly instance: its memory, its functions and what it calls of us. The library's state
// (a host, open venues, blocks) is the instance's own. When a call traps, what the instance knows
// is not to be trusted any more: it is given up, and every later call says so.
import { TernError, everythingElse, wrongArgument } from "./TernError.js";
import { systemImports } from "./system.js";

const pageBytes = 65_536;
const mostPages = 65_536;
const firstPages = 64;
const encoder = new TextEncoder();
const decoder = new TextDecoder();

export class Instance {
  #memory;
  #functions;
  #errorSlot;
  #end = null; // the TernError that all calls get once one has trapped
  #callbacks;

  // `module` is compiled; `callbacks` are called by the names of bridge.c, with their pointers.
  static async start(module, { maximumBytes = mostPages * pageBytes, log, callbacks }) {
    const instance = new Instance(maximumBytes, callbacks);
    const imports = {
      env: { memory: instance.#memory },
      wasi_snapshot_preview1: systemImports(instance.#memory, log),
      tern: instance.#guardedCallbacks(),
    };
    instance.#functions = (await WebAssembly.instantiate(module, imports)).exports;
    instance.call("_initialize");
    instance.#errorSlot = instance.#take(4);
    instance.attempt("setHost");
    return instance;
  }

  constructor(maximumBytes, callbacks) {
    const maximum = Math.min(Math.max(Math.floor(maximumBytes / pageBytes), firstPages), mostPages);
    this.#memory = new WebAssembly.Memory({ initial: firstPages, maximum });
    this.#callbacks = callbacks;
  }

  get memoryBytes() {
    return this.#memory.buffer.byteLength;
  }

  get hasEnded() {
    return this.#end !== null;
  }

  // Pointers come out as they are: add `>>> 0` where one is used as a number.
  call(name, ...words) {
    if (this.#end !== null) throw this.#end;
    let result;
    try {
      result = this.#functions[name](...words);
    } catch (cause) {
      this.#end = new TernError(everythingElse, "the library has stopped", String(cause), {
        cause,
      });
      throw this.#end;
    }
    // It may have ended in a callback.
    if (this.#end !== null) throw this.#end;
    return result;
  }

  // Calls a function whose last argument is for an error, and throws that.
  attempt(name, ...words) {
    const result = this.call(name, ...words, this.#errorSlot);
    const error = this.#view().getUint32(this.#errorSlot, true);
    if (error !== 0) throw TernError.of(JSON.parse(this.takenText(error)).error);
    return result;
  }

  // Calls `use` with a copy of the bytes that is there as long as the call takes.
  withBytes(bytes, use) {
    const place = this.#take(bytes.length + 1);
    try {
      const copy = new Uint8Array(this.#memory.buffer, place, bytes.length + 1);
      copy.set(bytes);
      copy[bytes.length] = 0;
      return use(place, bytes.length);
    } finally {
      if (!this.hasEnded) this.call("release", place);
    }
  }

  withText(text, use) {
    if (text.includes("\0")) throw new TernError(wrongArgument, "a text holds a NUL");
    return this.withBytes(encoder.encode(text), use);
  }

  bytes(pointer, size) {
    return new Uint8Array(this.#memory.buffer, pointer >>> 0, size >>> 0).slice();
  }

  text(pointer) {
    const all = new Uint8Array(this.#memory.buffer);
    const begin = pointer >>> 0;
    return decoder.decode(all.subarray(begin, all.indexOf(0, begin)));
  }

  // A text that the library returned, which is freed.
  takenText(pointer) {
    const text = this.text(pointer);
    this.call("freeText", pointer);
    return text;
  }

  // The unsigned words of a struct.
  words(pointer, count) {
    return Array.from(new Uint32Array(this.#memory.buffer, pointer >>> 0, count));
  }

  give(sink, bytes) {
    this.withBytes(bytes, (place, size) => this.call("give", sink, place, size));
  }

  #take(size) {
    const place = this.call("take", size) >>> 0;
    if (place === 0) throw new TernError(everythingElse, "out of memory");
    return place;
  }

  #view() {
    return new DataView(this.#memory.buffer);
  }

  // Nothing that a callback throws may cross the library.
  #guardedCallbacks() {
    const guarded = {};
    for (const [name, callback] of Object.entries(this.#callbacks)) {
      guarded[name] = (...words) => {
        try {
          return callback(this, ...words);
        } catch {
          return 0;
        }
      };
    }
    return guarded;
  }
}

export function bytesOf(contents) {
  if (typeof contents === "string") return encoder.encode(contents);
  if (contents instanceof ArrayBuffer) return new Uint8Array(contents);
  if (ArrayBuffer.isView(contents)) {
    return new Uint8Array(contents.buffer, contents.byteOffset, contents.byteLength);
  }
  return encoder.encode(JSON.stringify(contents));
}
