// A floor's drawing as an image, which runs and fetches nothing, whatever it holds. The browser
// draws it beside what the page does, as sharp as it is large.
import { withFrame } from "../venue/frame.js";
import { drawnDark } from "../venue/colours.js";
import type { SignedFloor } from "../venue/signs.js";
import { transformOf, type Place, type Size } from "./frame.js";

export class FloorImage {
  readonly signed: SignedFloor;
  readonly isDark: boolean;
  readonly element: HTMLImageElement;
  // The colour of the ground around the building; empty where there is none.
  readonly ground: string;
  #url: string;

  constructor(signed: SignedFloor, isDark: boolean) {
    const { floor } = signed;
    const framed = withFrame(signed.drawing, floor.frame);
    const drawing = isDark ? drawnDark(framed) : framed;
    this.signed = signed;
    this.isDark = isDark;
    this.ground = groundOf(drawing, floor.frame);
    this.#url = URL.createObjectURL(new Blob([drawing], { type: "image/svg+xml" }));
    this.element = new Image();
    this.element.className = "floor";
    this.element.alt = "";
    this.element.decoding = "async";
    this.element.draggable = false;
    this.element.width = Math.ceil(floor.frame[2]);
    this.element.height = Math.ceil(floor.frame[3]);
    this.element.style.width = `${floor.frame[2]}px`;
    this.element.style.height = `${floor.frame[3]}px`;
    this.element.setAttribute("elementtiming", "floor");
    if (floor.drawing !== "") this.element.src = this.#url;
  }

  // When it can be shown at once; a drawing that is broken shows nothing.
  async decoded(): Promise<void> {
    if (this.signed.floor.drawing !== "") await this.element.decode().catch(() => undefined);
  }

  put(place: Place, size: Size): void {
    this.element.style.transform = transformOf(this.signed.floor.frame, place, size);
  }

  release(): void {
    this.element.remove();
    const revoke = () => URL.revokeObjectURL(this.#url);
    if (this.element.complete) return revoke();
    // What is still being loaded is let come: without its address it would be told of as missing.
    for (const end of ["load", "error"]) this.element.addEventListener(end, revoke);
  }
}

// A drawing often begins with a rectangle that covers all of it.
function groundOf(drawing: string, [, , width, height]: readonly number[]): string {
  const first = /^[^]{0,400}?<rect\b([^<>]*)>/.exec(drawing)?.[1] ?? "";
  const value = (name: string) => new RegExp(`\\s${name}="([^"]*)"`).exec(first)?.[1] ?? "";
  const covers = Number(value("width")) >= width! && Number(value("height")) >= height!;
  return covers && /^#[0-9a-f]{3,6}$/i.test(value("fill")) ? value("fill") : "";
}
