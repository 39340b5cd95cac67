// Elements. Whatever text comes from a venue goes in as text.
type Child = Node | string | null;

interface Properties {
  readonly class?: string;
  readonly text?: string;
  readonly on?: Readonly<Record<string, (event: never) => void>>;
  readonly attributes?: Readonly<Record<string, string | number | boolean | null>>;
}

export function h<Tag extends keyof HTMLElementTagNameMap>(
  tag: Tag,
  properties: Properties = {},
  ...children: Child[]
): HTMLElementTagNameMap[Tag] {
  const element = document.createElement(tag);
  if (properties.class !== undefined) element.className = properties.class;
  if (properties.text !== undefined) element.textContent = properties.text;
  set(element, properties.attributes ?? {});
  for (const [name, listener] of Object.entries(properties.on ?? {})) {
    element.addEventListener(name, listener as EventListener);
  }
  element.append(...children.filter((child) => child !== null));
  return element;
}

// False and null take an attribute away, true sets it without a value.
export function set(
  element: Element,
  attributes: Readonly<Record<string, string | number | boolean | null>>,
): void {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === null || value === false) element.removeAttribute(name);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
}

// A button with an icon, whose name is read to who cannot see it.
export function iconButton(icon: Node, label: string, pressed: () => void): HTMLButtonElement {
  const attributes = { type: "button", "aria-label": label, title: label };
  return h("button", { class: "icon-button", attributes, on: { click: pressed } }, icon);
}
