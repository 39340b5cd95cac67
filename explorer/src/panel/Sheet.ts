// How much of the panel is seen on a phone: its head, half of the window, or all but the floor strip.
// Moved by a drag on its handle, or by pressing that.
import { h, set } from "./dom.js";
import type { Texts } from "../texts/texts.js";

export type Height = "low" | "half" | "high";

const heights: readonly Height[] = ["low", "half", "high"];
const leastDrag = 24;
const reducesMotion = matchMedia("(prefers-reduced-motion: reduce)");

export class Sheet {
  readonly handle: HTMLButtonElement;
  #element: HTMLElement;
  #texts: () => Texts;
  #moved: () => void;
  #begin: number | null = null;
  // As it was drawn last.
  #drawn: { height: Height; pixels: number; window: number } | null = null;

  constructor(element: HTMLElement, texts: () => Texts, moved: () => void) {
    this.#element = element;
    this.#texts = texts;
    this.#moved = moved;
    this.handle = h("button", { class: "handle", attributes: { type: "button" } });
    this.handle.addEventListener("click", () => this.#pressed());
    this.handle.addEventListener("pointerdown", (event) => this.#down(event));
    this.handle.addEventListener("pointerup", (event) => this.#up(event));
    new ResizeObserver(() => this.#resized()).observe(element);
    this.hold("low");
  }

  get height(): Height {
    return this.#element.dataset["sheet"] as Height;
  }

  hold(height: Height): void {
    this.#element.dataset["sheet"] = height;
    const isLow = height === "low";
    set(this.handle, {
      "aria-expanded": String(!isLow),
      "aria-label": this.#texts().of(isLow ? "bigger" : "smaller"),
    });
  }

  // Told in the frame that draws it, when all is laid out anyway. What is measured is where it will be.
  #resized(): void {
    const before = this.#drawn;
    const pixels = this.#element.offsetHeight;
    this.#drawn = { height: this.height, pixels, window: innerHeight };
    this.#moved();
    if (before === null || before.height === this.height || before.window !== innerHeight) return;
    if (reducesMotion.matches) return;
    const way = pixels - before.pixels;
    const frames = [{ transform: `translateY(${way}px)` }, { transform: "none" }];
    this.#element.animate(frames, { duration: 220, easing: "ease-out" });
  }

  #pressed(): void {
    this.hold(this.height === "low" ? "half" : "low");
  }

  #down(event: PointerEvent): void {
    this.#begin = event.clientY;
    this.handle.setPointerCapture(event.pointerId);
  }

  // A drag moves by one height; what follows it as a click is none.
  #up(event: PointerEvent): void {
    const way = event.clientY - (this.#begin ?? event.clientY);
    this.#begin = null;
    if (Math.abs(way) < leastDrag) return;
    const index = heights.indexOf(this.height) - Math.sign(way);
    this.hold(heights[Math.min(Math.max(index, 0), heights.length - 1)]!);
    const stop = (click: Event) => click.stopImmediatePropagation();
    this.handle.addEventListener("click", stop, { capture: true, once: true });
    setTimeout(() => this.handle.removeEventListener("click", stop, { capture: true }), 50);
  }
}
