// The floor's image as a layer of the map: it is moved by a transform alone.
import Layer from "ol/layer/Layer.js";
import ViewHint from "ol/ViewHint.js";
import type { FrameState } from "ol/Map.js";
import type { FloorImage } from "./FloorImage.js";

export class FloorLayer extends Layer {
  #holder = document.createElement("div");
  #image: FloorImage | null = null;

  constructor() {
    super({});
    this.#holder.className = "floor-holder";
  }

  show(image: FloorImage): void {
    const before = this.#image;
    this.#image = image;
    this.#holder.append(image.element);
    if (before !== image) before?.release();
    this.changed();
  }

  get image(): FloorImage | null {
    return this.#image;
  }

  // There is always something to show, though no source.
  override render(frame: FrameState | null): HTMLElement {
    const state = frame?.viewState;
    if (state !== undefined && this.#image !== null) {
      const [width = 0, height = 0] = frame!.size;
      const [x = 0, y = 0] = state.center;
      const { resolution, rotation } = state;
      const hints = frame!.viewHints;
      const isMoving = hints[ViewHint.ANIMATING]! > 0 || hints[ViewHint.INTERACTING]! > 0;
      this.#image.element.classList.toggle("is-moving", isMoving);
      this.#image.put({ center: [x, -y], resolution, rotation }, { width, height });
    }
    return this.#holder;
  }
}
