// Of several answers to one kind of question only that to the newest counts.
export class Newest {
  #number = 0;

  // What the work gives; undefined when something newer has been asked meanwhile.
  async of<T>(work: () => Promise<T>): Promise<T | undefined> {
    this.#number += 1;
    const number = this.#number;
    try {
      const result = await work();
      return number === this.#number ? result : undefined;
    } catch (error) {
      if (number === this.#number) throw error;
      return undefined;
    }
  }

  // What is under way does not count any more.
  forget(): void {
    this.#number += 1;
  }
}
