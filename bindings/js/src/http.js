// The library's HTTP over `fetch`.
import { bytesOf } from "./Instance.js";

// The words of tern_http_request.
const requestWords = 7;

function requestAt(instance, pointer) {
  const [, method, url, headers, headerCount, body, bodySize] = instance.words(
    pointer,
    requestWords,
  );
  const names = headerCount > 0 ? instance.words(headers, 2 * headerCount) : [];
  const fields = [];
  for (let i = 0; i < names.length; i += 2) {
    fields.push([instance.text(names[i]), instance.text(names[i + 1])]);
  }
  return {
    method: instance.text(method),
    url: instance.text(url),
    headers: fields,
    body: body !== 0 ? instance.bytes(body, bodySize) : undefined,
  };
}

async function responseOf(fetch, { url, ...request }, signal) {
  try {
    const response = await fetch(url, {
      ...request,
      signal,
      redirect: "follow",
      credentials: "omit",
      cache: "no-store",
      referrerPolicy: "no-referrer",
    });
    const leftOrigin =
      response.redirected === true && new URL(response.url).origin !== new URL(url).origin;
    return { status: response.status, leftOrigin, body: await response.arrayBuffer() };
  } catch (error) {
    const reason = error.cause?.message ?? error.message ?? String(error);
    return { status: 0, leftOrigin: false, reason: reason.replaceAll(/[\0-\x1f]/g, " ") };
  }
}

function complete(instance, exchange, { status, leftOrigin, body, reason }) {
  const end = (place, size, text) =>
    instance.attempt("completeHttp", exchange, status, leftOrigin ? 1 : 0, place, size, text);
  if (reason !== undefined) {
    instance.withText(reason, (text) => end(0, 0, text));
  } else {
    instance.withBytes(bytesOf(body), (place, size) => end(place, size, 0));
  }
}

// The callbacks httpSend and httpCancel. `failed` hears what must not happen while an exchange ends.
export function httpCallbacks(fetch, failed) {
  const underWay = new Map();
  return {
    httpSend(instance, context, request, exchange) {
      const asked = requestAt(instance, request);
      const controller = new AbortController();
      underWay.set(exchange, controller);
      responseOf(fetch, asked, controller.signal).then((response) => {
        if (!underWay.delete(exchange)) return;
        try {
          complete(instance, exchange, response);
        } catch (error) {
          failed(error);
        }
      });
    },
    httpCancel(instance, context, exchange) {
      const controller = underWay.get(exchange);
      underWay.delete(exchange);
      controller?.abort();
    },
  };
}
