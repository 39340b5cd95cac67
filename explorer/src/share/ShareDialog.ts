// What is shown, to be handed on: as a link, as a code that a camera reads, as a picture, and for
// maps of the world. Nothing leaves the device but where somebody sends it.
import { h, iconButton } from "../panel/dom.js";
import { fileName, titleOf, venueName, type Shown } from "../picture/Shown.js";
import { encodeAddress } from "../state/address.js";
import { lineIcon, type Line } from "../theme/icons.js";
import { codeOf } from "./code.js";
import { featuresOf } from "./features.js";
import { pngOf } from "./picture.js";

// In whatever language its reader wants, and as a map for everybody.
export function linkOf({ state }: Shown): string {
  const hash = encodeAddress({ ...state, language: null, isOverview: false, data: null, path: null });
  return location.origin + location.pathname + location.search + hash;
}

function save(blob: Blob, name: string): void {
  const url = URL.createObjectURL(blob);
  const link = h("a", { attributes: { href: url, download: name } });
  document.body.append(link);
  link.click();
  link.remove();
  // The download has begun with the click, but may still read.
  setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

class ShareDialog {
  #shown: Shown;
  #link: string;
  #element: HTMLDialogElement;
  #body = h("div", { class: "dialog-body" });

  constructor(shown: Shown) {
    this.#shown = shown;
    this.#link = linkOf(shown);
    const texts = shown.context.texts();
    const close = iconButton(lineIcon("close"), texts.of("close"), () => this.#element.close());
    const head = h(
      "div",
      { class: "dialog-head" },
      h("h2", { class: "dialog-name", text: texts.of("share"), attributes: { id: "share-name" } }),
      close,
    );
    const what = h("p", { class: "dialog-what", text: titleOf(shown) });
    this.#element = h(
      "dialog",
      {
        class: "dialog",
        attributes: { "aria-labelledby": "share-name" },
        on: {
          close: () => this.#closed(),
          click: (event: Event) => event.target === this.#element && this.#element.close(),
        },
      },
      h("div", { class: "dialog-paper" }, head, what, this.#body),
    );
    this.#body.replaceChildren(this.#address(), ...this.#choices());
    document.body.append(this.#element);
    this.#element.showModal();
  }

  // The button that opened it may have been made anew meanwhile, as other ways are found late.
  #closed(): void {
    this.#element.remove();
    if (document.activeElement !== document.body) return;
    const label = this.#shown.context.texts().of("share");
    const buttons = [...document.querySelectorAll("button")];
    buttons.find((each) => [each.ariaLabel, each.textContent].includes(label))?.focus();
  }

  #address(): HTMLElement {
    const texts = this.#shown.context.texts();
    const field = h("input", {
      class: "link-field",
      attributes: { type: "text", readonly: true, "aria-label": texts.of("link") },
      on: { focus: () => field.select() },
    });
    field.value = this.#link;
    const copied = h("span", { class: "button-text", text: texts.of("copy") });
    const copy = async () => {
      // Without a secure connection there is none, and the field is to be copied by hand.
      if (navigator.clipboard === undefined) return field.focus();
      await navigator.clipboard.writeText(this.#link);
      copied.textContent = texts.of("copied");
      this.#shown.context.say(texts.of("copied"));
    };
    const button = h(
      "button",
      { class: "button is-main link-copy", attributes: { type: "button" }, on: { click: this.#tried(copy) } },
      copied,
    );
    return h("div", { class: "link" }, field, button);
  }

  #choices(): HTMLElement[] {
    const shown = this.#shown;
    const texts = shown.context.texts();
    const choices = [this.#choice("code", texts.of("asCode"), () => this.#showCode())];
    if (navigator.share !== undefined) {
      choices.push(this.#choice("share", texts.of("send"), () => this.#send()));
    }
    choices.push(this.#choice("picture", texts.of("asPicture"), () => this.#savePicture()));
    const features = featuresOf(shown);
    if (features !== null) {
      const text = `${JSON.stringify(features)}\n`;
      const blob = new Blob([text], { type: "application/geo+json" });
      choices.push(
        this.#choice("globe", texts.of("asFeatures"), () => save(blob, fileName(shown, "geojson"))),
      );
    }
    return choices;
  }

  #choice(icon: Line, label: string, chosen: () => void | Promise<void>): HTMLElement {
    return h(
      "button",
      { class: "menu-row", attributes: { type: "button" }, on: { click: this.#tried(chosen) } },
      lineIcon(icon),
      h("span", { text: label }),
    );
  }

  #tried(work: () => void | Promise<void>): () => void {
    return () => void Promise.resolve().then(work).catch((error) => this.#shown.context.failed(error));
  }

  #showCode(): void {
    const texts = this.#shown.context.texts();
    const code = codeOf(this.#link, texts.of("codeOf", { link: this.#link }));
    const back = this.#choice("back", texts.of("back"), () => {
      this.#body.replaceChildren(this.#address(), ...this.#choices());
      this.#body.querySelector<HTMLElement>(".menu-row")?.focus();
    });
    const shown = code ?? h("p", { class: "note", text: texts.of("codeTooLong") });
    this.#body.replaceChildren(shown, h("p", { class: "code-hint", text: texts.of("codeHint") }), back);
    back.focus();
  }

  async #send(): Promise<void> {
    const what = { title: venueName(this.#shown), text: titleOf(this.#shown), url: this.#link };
    try {
      await navigator.share(what);
      this.#element.close();
    } catch (error) {
      // Whoever changes their mind has done nothing wrong.
      if (!(error instanceof DOMException && error.name === "AbortError")) throw error;
    }
  }

  async #savePicture(): Promise<void> {
    save(await pngOf(this.#shown), fileName(this.#shown, "png"));
    this.#shown.context.say(this.#shown.context.texts().of("saved"));
  }
}

export function openShare(shown: Shown): void {
  new ShareDialog(shown);
}
