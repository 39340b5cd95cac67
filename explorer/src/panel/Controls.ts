// Buttons of the map, for who has neither wheel nor two fingers.
import { lineIcon } from "../theme/icons.js";
import type { MapView } from "../map/MapView.js";
import type { Texts } from "../texts/texts.js";
import { iconButton, set } from "./dom.js";

const zoomFactor = 1.8;

export class Controls {
  #element: HTMLElement;
  #texts: () => Texts;
  #map: () => MapView;
  #upright: HTMLButtonElement | null = null;

  constructor(element: HTMLElement, texts: () => Texts, map: () => MapView) {
    this.#element = element;
    this.#texts = texts;
    this.#map = map;
    this.refresh();
  }

  refresh(): void {
    const texts = this.#texts();
    this.#upright = iconButton(lineIcon("north"), texts.of("upright"), () => this.#map().turnUpright());
    this.#upright.hidden = true;
    this.#element.replaceChildren(
      this.#upright,
      iconButton(lineIcon("plus"), texts.of("zoomIn"), () => this.#map().zoomBy(zoomFactor)),
      iconButton(lineIcon("minus"), texts.of("zoomOut"), () => this.#map().zoomBy(1 / zoomFactor)),
    );
  }

  turned(radians: number): void {
    if (this.#upright === null) return;
    this.#upright.hidden = Math.abs(radians) < 1e-6;
    set(this.#upright, { "data-turn": Math.round((radians * 180) / Math.PI) });
    this.#upright.querySelector("svg")!.style.transform = `rotate(${radians}rad)`;
  }
}
