const closer = new FinalizationRegistry(({ instance, handle }) => {
  if (!instance.hasEnded) closeHandle(instance, handle);
});

function closeHandle(instance, handle) {
  try {
    instance.attempt("closeHub", handle);
  } catch {
    // It was closed before, or the library has stopped.
  }
}

export class Hub {
  #instance;
  #waiting;
  #handle;
  #isClosed = false;

  // `waiting` is where the instance's callbacks find the promises of what was asked.
  constructor(instance, waiting, options) {
    this.#instance = instance;
    this.#waiting = waiting;
    this.#handle = instance.withText(JSON.stringify(options), (place) =>
      instance.attempt("openHub", place),
    );
    closer.register(this, { instance, handle: this.#handle }, this);
  }

  // Loads the venues, which are joined when they are several; left out, the only one.
  async load({ venues } = {}) {
    return this.#instance.withText(JSON.stringify({ venues }), (place) =>
      this.#begin((number) => this.#instance.attempt("loadVenues", this.#handle, place, number)),
    );
  }

  // The customer's venues: [{ id, externalId, name }].
  async list() {
    return this.#begin((number) => this.#instance.attempt("listVenues", this.#handle, number));
  }

  // What is under way ends with an error; venues that were loaded stay. Twice means nothing.
  close() {
    if (this.#isClosed) return;
    this.#isClosed = true;
    closer.unregister(this);
    closeHandle(this.#instance, this.#handle);
  }

  #begin(start) {
    const { number, promise } = this.#waiting.add();
    try {
      start(number);
    } catch (error) {
      this.#waiting.reject(number, error);
    }
    return promise;
  }
}

if (Symbol.dispose !== undefined) {
  Hub.prototype[Symbol.dispose] = Hub.prototype.close;
}
