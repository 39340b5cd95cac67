// Promises by number, for callbacks that are given a number back.
export class Waiting {
  #last = 0;
  #all = new Map();

  add() {
    this.#last += 1;
    const number = this.#last;
    const promise = new Promise((resolve, reject) => {
      this.#all.set(number, { resolve, reject });
    });
    return { number, promise };
  }

  // Whether somebody still waited.
  resolve(number, value) {
    const found = this.#take(number);
    found?.resolve(value);
    return found !== undefined;
  }

  reject(number, error) {
    this.#take(number)?.reject(error);
  }

  rejectAll(error) {
    for (const number of [...this.#all.keys()]) this.reject(number, error);
  }

  #take(number) {
    const found = this.#all.get(number);
    this.#all.delete(number);
    return found;
  }
}
