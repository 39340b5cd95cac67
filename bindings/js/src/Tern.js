import { Hub } from "./Hub.js";
import { Instance, bytesOf } from "./Instance.js";
import { TernError } from "./TernError.js";
import { Venue } from "./Venue.js";
import { Waiting } from "./Waiting.js";
import { fetchDocuments } from "./documents.js";
import { FilesInMemory, fileCallbacks } from "./files.js";
import { httpCallbacks } from "./http.js";
import { compiled } from "./module.js";

// Callbacks of open() and of a hub. `reading` are the documents of the open() calls that run.
function ownCallbacks(reading, waiting, log) {
  return {
    document(instance, number, path, sink) {
      const asked = reading.get(number);
      try {
        const contents = asked.read(instance.text(path));
        if (contents !== undefined && contents !== null) instance.give(sink, bytesOf(contents));
      } catch (error) {
        asked.thrown ??= { error };
      }
    },
    loaded(instance, number, venue, error) {
      if (venue !== 0) {
        waiting.resolve(number, new Venue(instance, venue));
      } else {
        waiting.reject(number, TernError.of(JSON.parse(instance.text(error)).error));
      }
    },
    listed(instance, number, text) {
      const answer = JSON.parse(instance.text(text));
      if (answer.error !== undefined) {
        waiting.reject(number, TernError.of(answer.error));
      } else {
        waiting.resolve(number, answer.venues);
      }
    },
    log(instance, context, line) {
      log(instance.text(line));
    },
  };
}

function readerOf(documents) {
  if (typeof documents === "function") return documents;
  if (documents instanceof Map) return (path) => documents.get(path);
  return (path) => (Object.hasOwn(documents, path) ? documents[path] : undefined);
}

// The library, loaded: an instance with what it has been given.
export class Tern {
  #instance;
  #reading = new Map();
  #lastReading = 0;
  #waiting = new Waiting();
  #fetch;

  static async load({
    wasm,
    maximumBytes,
    fetch = globalThis.fetch.bind(globalThis),
    files = new FilesInMemory(),
    log = () => {},
  } = {}) {
    const tern = new Tern();
    tern.#fetch = fetch;
    const callbacks = {
      ...ownCallbacks(tern.#reading, tern.#waiting, log),
      ...httpCallbacks(fetch, (error) => tern.#waiting.rejectAll(error)),
      ...fileCallbacks(files),
    };
    tern.#instance = await Instance.start(await compiled(wasm), { maximumBytes, log, callbacks });
    return tern;
  }

  get version() {
    return this.#instance.text(this.#instance.call("version"));
  }

  get memoryBytes() {
    return this.#instance.memoryBytes;
  }

  // A venue of documents that are there: by path in an object or a Map, or from a function.
  open({ documents, venues }) {
    this.#lastReading += 1;
    const number = this.#lastReading;
    const asked = { read: readerOf(documents), thrown: undefined };
    this.#reading.set(number, asked);
    try {
      const handle = this.#instance.withText(JSON.stringify({ venues }), (place) =>
        this.#instance.attempt("openVenue", number, place),
      );
      return new Venue(this.#instance, handle);
    } catch (error) {
      // What went wrong first: the library only knows that it was not given a document.
      throw asked.thrown?.error ?? error;
    } finally {
      this.#reading.delete(number);
    }
  }

  // A venue of the documents below an address.
  async fetch(base, { venues, signal, fetch = this.#fetch } = {}) {
    const documents = await fetchDocuments(base, { venues, fetch, signal });
    return this.open({ documents, venues });
  }

  // A mapping service.
  hub(options) {
    return new Hub(this.#instance, this.#waiting, options);
  }
}
