import { TernError } from "./TernError.js";

const closer = new FinalizationRegistry(({ instance, handle }) => {
  if (!instance.hasEnded) closeHandle(instance, handle);
});

function closeHandle(instance, handle) {
  try {
    instance.attempt("closeVenue", handle);
  } catch {
    // It was closed before, or the library has stopped.
  }
}

// What stands for a way that does not exist is Infinity.
function flat(rows) {
  const columns = rows.length > 0 ? rows[0].length : 0;
  const all = new Float64Array(rows.length * columns);
  rows.forEach((row, i) => {
    row.forEach((value, j) => {
      all[i * columns + j] = value ?? Infinity;
    });
  });
  return all;
}

export class Venue {
  #instance;
  #handle;
  #isClosed = false;

  // REQUIRES: the handle is an open venue's and nobody else's.
  constructor(instance, handle) {
    this.#instance = instance;
    this.#handle = handle;
    closer.register(this, { instance, handle }, this);
  }

  // The answer's text to a request's text, byte for byte that of `tern batch`; errors are answers.
  answer(request) {
    return this.#instance.withText(request, (place) =>
      this.#instance.takenText(this.#instance.call("answer", this.#handle, place)),
    );
  }

  // The answer to a request; an error is thrown.
  ask(request) {
    const answer = JSON.parse(this.answer(JSON.stringify(request)));
    // Some answers hold an "error" beside what they say; an error alone is no answer.
    if (answer.error?.code !== undefined && isErrorAlone(answer)) throw TernError.of(answer.error);
    return answer;
  }

  // The texts of the answers, in order, as the requests come.
  async *batch(requests) {
    for await (const request of requests) {
      yield this.answer(typeof request === "string" ? request : JSON.stringify(request));
    }
  }

  route(request) {
    return this.ask({ ...request, op: "route" }).route;
  }

  routeToAny(request) {
    return this.ask({ ...request, op: "routeToAny" }).route;
  }

  alternatives(request) {
    return this.ask({ ...request, op: "alternatives" });
  }

  directions(request) {
    return this.ask({ ...request, op: "directions" });
  }

  tour(request) {
    return this.ask({ ...request, op: "tour" });
  }

  nearest(request) {
    return this.ask({ ...request, op: request.from === undefined ? "nearest" : "nearestByWalk" });
  }

  nearestOnMap(request) {
    return this.ask({ ...request, op: "nearestOnMap" });
  }

  closest(request) {
    return this.ask({ ...request, op: "closest" }).waypoint;
  }

  closestByRoute(request) {
    return this.ask({ ...request, op: "closestByRoute" }).waypoint;
  }

  matrix(request) {
    const { costs, mmDistances } = this.ask({ ...request, op: "matrix" });
    return {
      rows: costs.length,
      columns: costs.length > 0 ? costs[0].length : 0,
      costs: flat(costs),
      mmDistances: flat(mmDistances),
    };
  }

  reach(request) {
    return this.ask({ ...request, op: "reach" }).reached;
  }

  places(request = {}) {
    const asked = typeof request === "string" ? { text: request } : request;
    return this.ask({ ...asked, op: "places" }).places;
  }

  convert(request) {
    return this.ask({ ...request, op: "convert" }).point;
  }

  center(request = {}) {
    return this.ask({ ...request, op: "center" }).point;
  }

  solve(request) {
    return this.ask({ ...request, op: "solve" });
  }

  neighbors(request) {
    return this.ask({ ...request, op: "neighbors" }).neighbors;
  }

  blockEdge(request) {
    this.ask({ ...request, op: "blockEdge" });
  }

  blockEntry(request) {
    this.ask({ ...request, op: "blockEntry" });
  }

  blockExit(request) {
    this.ask({ ...request, op: "blockExit" });
  }

  // What is asked of a closed venue gets an error. Closing twice means nothing.
  close() {
    if (this.#isClosed) return;
    this.#isClosed = true;
    closer.unregister(this);
    closeHandle(this.#instance, this.#handle);
  }
}

function isErrorAlone(answer) {
  return Object.keys(answer).every((key) => key === "error" || key === "id");
}

if (Symbol.dispose !== undefined) {
  Venue.prototype[Symbol.dispose] = Venue.prototype.close;
}
