// Movers that are out of order: a switch on the card of each, and the list of those that are, from
// which they are put in order again.
import { closedMovers } from "../engine/closings.js";
import { symbolFor, symbolIcon } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import type { Mover } from "../venue/Venue.js";
import { endOfMover, floorsJoined, type Context } from "./Context.js";
import { h } from "./dom.js";

function close(context: Context, mover: Mover, isClosed: boolean): void {
  const { store, texts, say } = context;
  const others = store.state.closed.filter((id) => id !== mover.id);
  store.update({ closed: isClosed ? [...others, mover.id] : others });
  const name = nameIn(texts().language, mover.names);
  say(texts().of(isClosed ? "isClosed" : "isOpen", { name }));
}

export function closingSwitch(context: Context, mover: Mover): HTMLElement {
  const { store, texts } = context;
  const changed = (event: Event) => {
    close(context, mover, (event.target as HTMLInputElement).checked);
  };
  const checked = store.state.closed.includes(mover.id);
  const attributes = { type: "checkbox", role: "switch", checked };
  return h(
    "label",
    { class: "switch" },
    h(
      "span",
      { class: "switch-words" },
      h("span", { class: "switch-name", text: texts().of("outOfOrder") }),
      h("span", { class: "switch-hint", text: texts().of("outOfOrderHint") }),
    ),
    h("input", { class: "switch-input", attributes, on: { change: changed } }),
  );
}

export class OutOfOrder {
  readonly element = h("section", { class: "closed" });
  #context: Context;

  constructor(context: Context) {
    this.#context = context;
    context.store.subscribe((state, before) => {
      if (state.closed !== before.closed) this.refresh();
    });
    this.refresh();
  }

  refresh(): void {
    const { venue, store, texts } = this.#context;
    const movers = closedMovers(venue, store.state);
    const hadFocus = this.element.contains(document.activeElement);
    this.element.hidden = movers.length === 0;
    this.element.replaceChildren(
      h("h2", { class: "heading", text: texts().of("outOfOrder") }),
      h("ul", { class: "rows" }, ...movers.map((mover) => this.#row(mover))),
    );
    if (hadFocus) this.element.querySelector<HTMLElement>("button")?.focus();
  }

  #row(mover: Mover): HTMLElement {
    const { texts, store } = this.#context;
    const name = nameIn(texts().language, mover.names);
    const label = texts().of("openAgainName", { name });
    const show = () => store.update({ place: endOfMover(mover) });
    return h(
      "li",
      { class: "closed-item" },
      h(
        "button",
        { class: "row closed-row", attributes: { type: "button" }, on: { click: show } },
        symbolIcon(symbolFor([mover.type.names.name])),
        h(
          "span",
          { class: "result-words" },
          h("span", { class: "result-name", text: name }),
          h("span", { class: "result-where", text: floorsJoined(this.#context, mover) }),
        ),
      ),
      h("button", {
        class: "button is-small",
        text: texts().of("openAgain"),
        attributes: { type: "button", "aria-label": label },
        on: { click: () => close(this.#context, mover, false) },
      }),
    );
  }
}
