// Movers that are out of order: a switch on the card of each, and the list of those that are, from
// which they are put in order again.
import { closedMovers } from "../engine/closings.js";
import { lineIcon, symbolFor, symbolIcon } from "../theme/icons.js";
import { nameIn } from "../venue/names.js";
import type { Mover } from "../venue/Venue.js";
import { endOfMover, floorsOf, moverName, type Context } from "./Context.js";
import { h, iconButton } from "./dom.js";

function close(context: Context, mover: Mover, isClosed: boolean): void {
  const { store, texts, say } = context;
  const others = store.state.closed.filter((id) => id !== mover.id);
  store.update({ closed: isClosed ? [...others, mover.id] : others });
  const name = moverName(context, mover);
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
      h("h2", { class: "chips-label", text: texts().of("outOfOrder") }),
      h("ul", { class: "chips" }, ...movers.map((mover) => this.#item(mover))),
    );
    if (hadFocus) this.element.querySelector<HTMLElement>("button")?.focus();
  }

  #item(mover: Mover): HTMLElement {
    const { texts, store, venue } = this.#context;
    const { language } = texts();
    const name = moverName(this.#context, mover);
    const [floor] = floorsOf(this.#context, mover);
    const building = floor === undefined ? "" : nameIn(language, floor.building.names);
    const show = () => store.update({ place: endOfMover(mover) });
    const again = texts().of("openAgain", { name });
    return h(
      "li",
      { class: "closed-item" },
      h(
        "button",
        { class: "closed-name", attributes: { type: "button" }, on: { click: show } },
        symbolIcon(symbolFor([mover.type.names.name])),
        name,
        venue.buildings.length > 1 ? h("span", { class: "closed-where", text: building }) : null,
      ),
      iconButton(lineIcon("close"), again, () => close(this.#context, mover, false)),
    );
  }
}
