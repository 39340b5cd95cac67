// Buttons of the map, for who has neither wheel nor two fingers.
import { lineIcon } from "../theme/icons.js";
import type { Texts } from "../texts/texts.js";
import { iconButton, set } from "./dom.js";

const zoomFactor = 1.8;

export interface ControlEvents {
  readonly zoomed: (factor: number) => void;
  readonly upright: () => void;
}

export class Controls {
  #element: HTMLElement;
  #texts: () => Texts;
  #events: ControlEvents;
  #upright: HTMLButtonElement | null = null;

  constructor(element: HTMLElement, texts: () => Texts, events: ControlEvents) {
    this.#element = element;
    this.#texts = texts;
    this.#events = events;
    this.refresh();
  }

  refresh(): void {
    const texts = this.#texts();
    this.#upright = iconButton(lineIcon("north"), texts.of("upright"), () => this.#events.upright());
    this.#upright.hidden = true;
    this.#element.replaceChildren(
      this.#upright,
      iconButton(lineIcon("plus"), texts.of("zoomIn"), () => this.#events.zoomed(zoomFactor)),
      iconButton(lineIcon("minus"), texts.of("zoomOut"), () => this.#events.zoomed(1 / zoomFactor)),
    );
  }

  turned(radians: number): void {
    if (this.#upright === null) return;
    this.#upright.hidden = Math.abs(radians) < 1e-6;
    set(this.#upright, { "data-turn": Math.round((radians * 180) / Math.PI) });
    this.#upright.querySelector("svg")!.style.transform = `rotate(${radians}rad)`;
  }
}
