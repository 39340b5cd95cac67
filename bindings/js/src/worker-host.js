// Runs in the worker: loads the library and answers the calls of worker.js.
import { Hub, Venue, load } from "./index.js";
import { library, sentError } from "./protocol.js";

const objects = new Map();
const abortable = new Map();
let lastNumber = library;

async function portOfWorker() {
  if (globalThis.postMessage !== undefined) {
    return {
      post: (message, moved) => globalThis.postMessage(message, moved),
      listen: (take) => globalThis.addEventListener("message", ({ data }) => take(data)),
    };
  }
  const node = "node:worker_threads"; // not for bundlers to look into
  const { parentPort } = await import(/* @vite-ignore */ /* webpackIgnore: true */ node);
  return {
    post: (message, moved) => parentPort.postMessage(message, moved),
    listen: (take) => parentPort.on("message", take),
  };
}

function kept(object) {
  lastNumber += 1;
  objects.set(lastNumber, object);
  return { kind: object instanceof Hub ? "Hub" : "Venue", number: lastNumber };
}

async function resultOf({ object, method, words }) {
  if (method === "start") {
    objects.set(library, await load(words[0]));
    return { value: objects.get(library).version };
  }
  const called = objects.get(object);
  if (method === "answers") return { value: words[0].map((request) => called.answer(request)) };
  if (method === "memoryBytes") return { value: called.memoryBytes };
  const result = await called[method](...words);
  if (method === "close") objects.delete(object);
  return result instanceof Venue || result instanceof Hub
    ? { made: kept(result) }
    : { value: result };
}

function movedOf({ value }) {
  return value?.costs instanceof Float64Array
    ? [value.costs.buffer, value.mmDistances.buffer]
    : [];
}

// The call with a signal that a later message can set off.
function withSignal(call) {
  const controller = new AbortController();
  abortable.set(call.id, controller);
  const words = [...call.words];
  words.push({ ...words.pop(), signal: controller.signal });
  return { ...call, words };
}

async function answerTo(call) {
  try {
    return await resultOf(call.canAbort ? withSignal(call) : call);
  } catch (error) {
    return { error: sentError(error) };
  } finally {
    abortable.delete(call.id);
  }
}

const port = await portOfWorker();
port.listen(async (message) => {
  if (message.abort !== undefined) {
    abortable.get(message.abort)?.abort();
    return;
  }
  const answer = await answerTo(message);
  port.post({ id: message.id, ...answer }, movedOf(answer));
});
port.post({ isListening: true }, []);
