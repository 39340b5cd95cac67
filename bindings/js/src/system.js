// The few functions of a system that the C library of the module still names. The library itself
// asks for the time alone; the rest says that there is no such thing.
const badDescriptor = 8;
const success = 0;

// `log` takes what the C library has to say when it ends the program.
export function systemImports(memory, log) {
  const view = () => new DataView(memory.buffer);
  const refuse = () => badDescriptor;
  const known = {
    clock_time_get(clock, precision, result) {
      const milliseconds = clock === 0 ? Date.now() : performance.now();
      view().setBigUint64(result >>> 0, BigInt(Math.round(milliseconds * 1e6)), true);
      return success;
    },
    fd_write(descriptor, vectors, count, written) {
      const data = view();
      let text = "";
      let size = 0;
      for (let at = vectors >>> 0, i = 0; i < count; i += 1, at += 8) {
        const length = data.getUint32(at + 4, true);
        text += new TextDecoder().decode(
          new Uint8Array(memory.buffer, data.getUint32(at, true), length),
        );
        size += length;
      }
      if (text !== "") log(text.trimEnd());
      data.setUint32(written >>> 0, size, true);
      return success;
    },
    proc_exit(status) {
      throw new Error(`the library ended with status ${status}`);
    },
  };
  return new Proxy(known, { get: (all, name) => all[name] ?? refuse });
}
