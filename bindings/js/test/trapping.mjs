// The library's module with one function that traps, as one with a fault would.
import { readFileSync } from "node:fs";

const exportSection = 7;
const codeSection = 10;
const unreachable = 0x00;
const nop = 0x01;
const end = 0x0b;

class Reader {
  at = 8; // behind the magic number and the version

  constructor(bytes) {
    this.bytes = bytes;
  }

  // An unsigned LEB128.
  number() {
    let value = 0;
    for (let shift = 0; ; shift += 7) {
      const byte = this.bytes[this.at];
      this.at += 1;
      value += (byte & 0x7f) * 2 ** shift;
      if (byte < 0x80) return value;
    }
  }

  enter(section) {
    this.at = 8;
    for (;;) {
      const id = this.number();
      const size = this.number();
      if (id === section) return;
      this.at += size;
    }
  }

  functionNamed(name) {
    this.enter(exportSection);
    for (let count = this.number(); count > 0; count -= 1) {
      const size = this.number();
      const found = Buffer.from(this.bytes.subarray(this.at, this.at + size)).toString();
      this.at += size + 1;
      const index = this.number();
      if (found === name) return index;
    }
    throw new Error(`the module has no ${name}`);
  }

  // The bytes of a function that the module defines, counted from the first of those.
  body(index) {
    this.enter(codeSection);
    this.number();
    for (let i = 0; ; i += 1) {
      const size = this.number();
      if (i === index) return this.bytes.subarray(this.at, this.at + size);
      this.at += size;
    }
  }
}

export async function moduleWithTrapIn(name) {
  const bytes = Uint8Array.from(
    readFileSync(new URL("../dist/terncorekit.wasm", import.meta.url)),
  );
  const imports = WebAssembly.Module.imports(await WebAssembly.compile(bytes));
  const imported = imports.filter(({ kind }) => kind === "function").length;
  const reader = new Reader(bytes);
  const body = reader.body(reader.functionNamed(name) - imported);
  body.fill(nop);
  body.set([0, unreachable]); // no locals
  body[body.length - 1] = end;
  return bytes;
}
