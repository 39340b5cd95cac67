// Our own icons, on a grid of 24 by 24.

// Filled: what stands on the map, and what is meant by names and keywords there.
export const symbols = {
  exit: "M11 4h8v16h-8v-2h6V6h-6zM9 8l-4.5 4L9 16v-3h6v-2H9z",
  toilets:
    "M7.5 3.5a1.8 1.8 0 1 0 .01 0zM5 8h5v6H9v6H6v-6H5zM16.5 3.5a1.8 1.8 0 1 0 .01 0zM15 8h3l2 7h-2v5h-3v-5h-2z",
  information: "M12 4a1.8 1.8 0 1 0 .01 0zM9.3 9.4h4.2V18h1.7v2H8.8v-2h1.8v-6.6H9.3z",
  cash: "M3 7h18v10H3zm2 2v6h14V9zm7 .6a2.4 2.4 0 1 0 .01 0z",
  baby: "M4 10h7V4a7 7 0 0 1 7 7h2.5v1.6h-2.4A6 6 0 0 1 15.5 16h-7A6 6 0 0 1 4 10zM8 17.4a1.8 1.8 0 1 0 .01 0zM16 17.4a1.8 1.8 0 1 0 .01 0z",
  food: "M7 3h1.2v6H9V3h1.2v6H11V3h1.2v7a2.7 2.7 0 0 1-2 2.5V21H8v-8.5A2.7 2.7 0 0 1 6 10V3zM16 3c2 0 3 2.2 3 5v5.4h-1.8V21H15V3z",
  parking: "M8 4h5a4.6 4.6 0 0 1 0 9.2h-2.4V20H8zm2.6 2.4v4.4H13a2.2 2.2 0 0 0 0-4.4z",
  aid: "M10 4h4v6h6v4h-6v6h-4v-6H4v-4h6z",
  locker: "M6 3h12v18H6zm2 2v14h8V5zm5 6h1.6v3H13z",
  ticket: "M3 7h18v3a2 2 0 0 0 0 4v3H3v-3a2 2 0 0 0 0-4z",
  water: "M12 3c3 4 5.5 7 5.5 10.5a5.5 5.5 0 0 1-11 0C6.5 10 9 7 12 3z",
  place: "M12 7.5a4.5 4.5 0 1 0 .01 0z",
  lift: "M12 3l6.5 7.5h-13zM12 21l-6.5-7.5h13z",
  escalator: "M3 17h4L16 6h5v3h-3.5L8.5 20H3z",
  stairs: "M3 20v-4h4v-4h4V8h4V4h6v16z",
  ramp: "M3 19L21 8v11z",
  walkway: "M3 15h18v3H3zM7 12V9h6V6l5 4.5-5 4.5v-3z",
  gate: "M4 5h3v14H4zm13 0h3v14h-3zm-9 6h4V8.5l4 3.5-4 3.5V13H8z",
} as const;

export type Symbol = keyof typeof symbols;

const known: readonly (readonly [Symbol, RegExp])[] = [
  ["escalator", /escalator|moving stairs|rolltreppe|fahrtreppe|escalier m|escalera mec|エスカレーター/],
  ["walkway", /moving walkway|travelator|fahrsteig|trottoir roulant|動く歩道/],
  ["lift", /\blift|elevator|aufzug|ascens|エレベーター/],
  ["stairs", /stair|\bsteps|treppe|escalier|escaler|階段/],
  ["ramp", /\bramp|slope|rampe|rampa|スロープ/],
  ["gate", /\bgate|turnstile|schranke|portillon|torniquete|改札/],
  ["exit", /\bexit|entrance|way out|ausgang|eingang|sortie|entrée|salida|出口|入口/],
  ["toilets", /toilet|restroom|\bwc\b|lavator|washroom|aseo|お手洗|トイレ/],
  ["baby", /baby|nursery|wickel|bébé|bebé|ベビー|授乳/],
  ["information", /information|\binfo|help|auskunft|accueil|案内/],
  ["cash", /cash|\batm|bank|geldautomat|distributeur|cajero/],
  ["food", /food|drink|restaurant|caf[eé]|dining/],
  ["parking", /parking|car park|parkplatz|aparcamiento|駐車/],
  ["aid", /first aid|medical|defibrillator|\baed\b|erste hilfe|救護/],
  ["locker", /locker|luggage|schließfach|consigne|ロッカー/],
  ["ticket", /ticket|fahrkarte|billet|きっぷ|券/],
  ["water", /water|trinkwasser|水/],
];

export function symbolFor(words: readonly string[]): Symbol {
  for (const word of words) {
    const found = known.find(([, pattern]) => pattern.test(word.toLowerCase()));
    if (found !== undefined) return found[0];
  }
  return "place";
}

// Drawn with a line: what stands on buttons.
const lines = {
  search: "M10.5 4a6.5 6.5 0 1 0 .01 0M15.3 15.3L20.5 20.5",
  close: "M6 6l12 12M18 6L6 18",
  back: "M14.5 5.5L8 12l6.5 6.5",
  swap: "M8 4v16M8 4L4.5 7.5M8 4l3.5 3.5M16 20V4M16 20l-3.5-3.5M16 20l3.5-3.5",
  go: "M5 19V11a3 3 0 0 1 3-3h11M15 4l4 4-4 4",
  start: "M12 8a4 4 0 1 0 .01 0M12 2.5v3M12 18.5v3M2.5 12h3M18.5 12h3",
  order: "M4 6h9M4 12h6M4 18h3M17 5v14M13.5 15.5L17 19l3.5-3.5",
  reach: "M12 9.5a2.5 2.5 0 1 0 .01 0M12 3a9 9 0 1 0 .01 0M12 6.2a5.8 5.8 0 1 0 .01 0",
  plus: "M12 5v14M5 12h14",
  minus: "M5 12h14",
  north: "M12 3.5l5 16-5-4-5 4z",
  depart: "M12 7a5 5 0 1 0 .01 0",
  arrive: "M12 21c4-5 6.5-8.2 6.5-11.3a6.5 6.5 0 0 0-13 0C5.5 12.8 8 16 12 21zM12 7.6a2.2 2.2 0 1 0 .01 0",
  straight: "M12 20V4M6 10l6-6 6 6",
  left: "M18 20v-6a4 4 0 0 0-4-4H5M10 5l-5 5 5 5",
  right: "M6 20v-6a4 4 0 0 1 4-4h9M14 5l5 5-5 5",
  slightLeft: "M15 20v-6L7 6M7 12V6h6",
  slightRight: "M9 20v-6l8-8M17 12V6h-6",
  sharpLeft: "M16 20V5L6 15M6 8.5V15h6.5",
  sharpRight: "M8 20V5l10 10M18 8.5V15h-6.5",
  around: "M7 20V9a4.5 4.5 0 0 1 9 0v7M12 12.5l4 4 4-4",
  share: "M12 15V3.5M7.5 8L12 3.5 16.5 8M5 12v8h14v-8",
  print: "M7 8V3.5h10V8M7 17H4V8h16v9h-3M7 14h10v6.5H7z",
  code: "M4 4h6v6H4zM14 4h6v6h-6zM4 14h6v6H4zM14 14h2v2M20 14v6h-6v-1",
  picture: "M4 5h16v14H4zM4 16l5-5 4 4 3-3 4 4M15.5 9.5h.01",
  globe: "M12 3.5a8.5 8.5 0 1 0 .01 0M3.5 12h17M12 3.5c3 2.6 3.7 5.4 3.7 8.5s-.7 5.9-3.7 8.5c-3-2.6-3.7-5.4-3.7-8.5s.7-5.9 3.7-8.5",
  data: "M5.5 4.5a2 2 0 1 0 .01 0M18.5 4.5a2 2 0 1 0 .01 0M12 15.5a2 2 0 1 0 .01 0M7.5 6.5h9M6.4 8.2l4.6 7.6M17.6 8.2L13 15.8",
  crossing: "M4 12h16M14 6l6 6-6 6",
} as const;

export type Line = keyof typeof lines;

const svg = "http://www.w3.org/2000/svg";

function icon(d: string, name: string): SVGSVGElement {
  const element = document.createElementNS(svg, "svg");
  element.setAttribute("viewBox", "0 0 24 24");
  element.setAttribute("class", name);
  element.setAttribute("aria-hidden", "true");
  const path = document.createElementNS(svg, "path");
  path.setAttribute("d", d);
  element.append(path);
  return element;
}

export function lineIcon(name: Line): SVGSVGElement {
  return icon(lines[name], "icon");
}

export function symbolIcon(name: Symbol): SVGSVGElement {
  return icon(symbols[name], "icon icon-filled");
}

// A symbol on a round plate, as an address of an image.
export function plateAddress(name: Symbol, plate: string, ink: string, border: string): string {
  const text =
    `<svg xmlns="${svg}" width="52" height="52" viewBox="-1 -1 26 26">` +
    `<circle cx="12" cy="12" r="12" fill="${plate}" stroke="${border}" stroke-width="1.6"/>` +
    `<path transform="translate(4.2 4.2) scale(.65)" d="${symbols[name]}" fill="${ink}"` +
    ` fill-rule="evenodd"/></svg>`;
  return `data:image/svg+xml,${encodeURIComponent(text)}`;
}

// A symbol that is struck through.
export function barredAddress(name: Symbol, ink: string, plate: string): string {
  const text =
    `<svg xmlns="${svg}" width="60" height="60" viewBox="-3 -3 30 30">` +
    `<circle cx="12" cy="12" r="12.4" fill="${plate}" stroke="${ink}" stroke-width="2.6"/>` +
    `<path transform="translate(4.6 4.6) scale(.62)" d="${symbols[name]}" fill="${ink}"` +
    ` fill-rule="evenodd"/>` +
    `<path d="M3.2 20.8L20.8 3.2" stroke="${plate}" stroke-width="4.8"/>` +
    `<path d="M3.2 20.8L20.8 3.2" stroke="${ink}" stroke-width="2.6"/></svg>`;
  return `data:image/svg+xml,${encodeURIComponent(text)}`;
}
