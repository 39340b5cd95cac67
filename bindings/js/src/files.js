// The store of what a hub loads: files by their paths.
import { bytesOf } from "./Instance.js";

const encoder = new TextEncoder();

// Keeps them as long as the instance lives.
export class FilesInMemory {
  #files = new Map();

  read(path) {
    return this.#files.get(path);
  }

  write(path, bytes) {
    this.#files.set(path, bytes);
  }

  remove(path) {
    return this.#files.delete(path);
  }

  list(prefix) {
    return [...this.#files.keys()].filter((path) => path.startsWith(prefix));
  }
}

// Callbacks over an object like the one above. Only an answer of false says that it failed.
export function fileCallbacks(files) {
  const orFalse = (work) => {
    try {
      return work() === false ? 0 : 1;
    } catch {
      return 0;
    }
  };
  return {
    fileRead(instance, context, path, sink) {
      const contents = files.read(instance.text(path));
      if (contents !== undefined && contents !== null) instance.give(sink, bytesOf(contents));
    },
    fileWrite(instance, context, path, bytes, size) {
      return orFalse(() => files.write(instance.text(path), instance.bytes(bytes, size)));
    },
    fileRemove(instance, context, path) {
      return orFalse(() => files.remove(instance.text(path)));
    },
    fileList(instance, context, prefix, sink) {
      for (const path of files.list(instance.text(prefix))) {
        instance.give(sink, encoder.encode(path));
      }
    },
  };
}
