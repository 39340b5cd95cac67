// Elements of SVG. Whatever text comes from a venue goes in as text.
export const svgName = "http://www.w3.org/2000/svg";

export function s<Tag extends keyof SVGElementTagNameMap>(
  tag: Tag,
  attributes: Readonly<Record<string, string | number>>,
  ...children: (Node | string)[]
): SVGElementTagNameMap[Tag] {
  const element = document.createElementNS(svgName, tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, String(value));
  element.append(...children);
  return element;
}
