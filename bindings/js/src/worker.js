// The library in a worker: what takes long there does not hold up the page. The same functions,
// each of which gives a promise.
import { TernError, everythingElse, wrongArgument } from "./TernError.js";
import { Waiting } from "./Waiting.js";
import { folderUrl } from "./documents.js";
import { library, receivedError } from "./protocol.js";

export { TernError };

// Requests of a batch that travel together, when they need not be waited for.
const mostAtOnce = 1024;

// A worker of the browser or of Node: { post, end }. `take` gets its messages, `fail` its end.
async function startedWorker(take, fail) {
  if (globalThis.Worker !== undefined) {
    const worker = new Worker(new URL("./worker-host.js", import.meta.url), { type: "module" });
    worker.addEventListener("message", ({ data }) => take(data));
    worker.addEventListener("error", (event) => fail(event.message));
    return { post: (message) => worker.postMessage(message), end: () => worker.terminate() };
  }
  const node = "node:worker_threads"; // not for bundlers to look into
  const threads = await import(/* @vite-ignore */ /* webpackIgnore: true */ node);
  const worker = new threads.Worker(new URL("./worker-host.js", import.meta.url));
  worker.on("message", take);
  worker.on("error", (error) => fail(error.message));
  return { post: (message) => worker.postMessage(message), end: () => worker.terminate() };
}

class Connection {
  #worker;
  #waiting = new Waiting();
  #isListening = new Waiting();
  #end = null;

  static async open() {
    const connection = new Connection();
    const { promise } = connection.#isListening.add();
    connection.#worker = await startedWorker(
      (message) => connection.#take(message),
      (reason) => connection.#fail(`the worker has ended: ${reason}`),
    );
    await promise;
    return connection;
  }

  call(object, method, ...words) {
    return this.#ask({ object, method, words }).promise;
  }

  // A call whose last word are options, which a signal of the page ends.
  async abortableCall(signal, object, method, ...words) {
    if (signal === undefined) return this.call(object, method, ...words);
    signal.throwIfAborted();
    const { number, promise } = this.#ask({ object, method, words, canAbort: true });
    const abort = () => {
      this.#waiting.reject(number, signal.reason);
      if (this.#end === null) this.#worker.post({ abort: number });
    };
    signal.addEventListener("abort", abort);
    try {
      return await promise;
    } finally {
      signal.removeEventListener("abort", abort);
    }
  }

  async close() {
    this.#fail("the worker is closed");
    await this.#worker.end();
  }

  #ask(call) {
    const { number, promise } = this.#waiting.add();
    if (this.#end !== null) {
      this.#waiting.reject(number, this.#end);
      return { number, promise };
    }
    try {
      this.#worker.post({ id: number, ...call });
    } catch (error) {
      // A function, say, cannot travel.
      this.#waiting.reject(number, new TernError(wrongArgument, error.message));
    }
    return { number, promise };
  }

  #take({ id, isListening, value, made, error }) {
    if (isListening) {
      this.#isListening.resolve(1);
    } else if (error !== undefined) {
      this.#waiting.reject(id, receivedError(error));
    } else if (made === undefined) {
      this.#waiting.resolve(id, value);
    } else {
      this.#keep(id, objectOf(this, made));
    }
  }

  // What was made while its call was aborted, nobody has: it is closed.
  #keep(id, object) {
    if (!this.#waiting.resolve(id, object)) object.close().catch(() => {});
  }

  #fail(message) {
    this.#end ??= new TernError(everythingElse, message);
    this.#isListening.rejectAll(this.#end);
    this.#waiting.rejectAll(this.#end);
  }
}

function objectOf(connection, { kind, number }) {
  return kind === "Hub" ? new RemoteHub(connection, number) : new RemoteVenue(connection, number);
}

class RemoteObject {
  #connection;
  #number;
  #closing;

  constructor(connection, number) {
    this.#connection = connection;
    this.#number = number;
  }

  call(method, ...words) {
    if (this.#closing !== undefined) {
      return Promise.reject(new TernError(wrongArgument, "it is closed"));
    }
    return this.#connection.call(this.#number, method, ...words);
  }

  close() {
    this.#closing ??= this.#connection.call(this.#number, "close");
    return this.#closing;
  }
}

export class RemoteVenue extends RemoteObject {
  async *batch(requests) {
    const most = Symbol.asyncIterator in requests ? 1 : mostAtOnce;
    let waiting = [];
    for await (const request of requests) {
      waiting.push(typeof request === "string" ? request : JSON.stringify(request));
      if (waiting.length < most) continue;
      yield* await this.call("answers", waiting);
      waiting = [];
    }
    if (waiting.length > 0) yield* await this.call("answers", waiting);
  }
}

export class RemoteHub extends RemoteObject {}

export class WorkerTern {
  #connection;

  constructor(connection, version) {
    this.#connection = connection;
    this.version = version;
  }

  open(options) {
    return this.#connection.call(library, "open", options);
  }

  // The address is the page's, not the worker's.
  async fetch(base, { signal, ...options } = {}) {
    const url = folderUrl(base).href;
    return this.#connection.abortableCall(signal, library, "fetch", url, options);
  }

  hub(options) {
    return this.#connection.call(library, "hub", options);
  }

  memoryBytes() {
    return this.#connection.call(library, "memoryBytes");
  }

  // Ends the worker, and with it all that was opened in it.
  close() {
    return this.#connection.close();
  }
}

const asked = [
  "answer", "ask", "route", "routeToAny", "alternatives", "directions", "tour", "nearest",
  "nearestOnMap", "closest", "closestByRoute", "matrix", "reach", "places", "convert", "center",
  "solve", "neighbors", "blockEdge", "blockEntry", "blockExit",
];
for (const [remote, methods] of [[RemoteVenue, asked], [RemoteHub, ["load", "list"]]]) {
  for (const method of methods) {
    remote.prototype[method] = function call(...words) {
      return this.call(method, ...words);
    };
  }
}
if (Symbol.asyncDispose !== undefined) {
  for (const each of [RemoteObject, WorkerTern]) {
    each.prototype[Symbol.asyncDispose] = each.prototype.close;
  }
}

// Starts a worker with the library in it. Of load()'s options those that can travel: `wasm`
// (an address, bytes or a module) and `maximumBytes`.
export async function startWorker(options) {
  const connection = await Connection.open();
  try {
    return new WorkerTern(connection, await connection.call(library, "start", options));
  } catch (error) {
    await connection.close();
    throw error;
  }
}
