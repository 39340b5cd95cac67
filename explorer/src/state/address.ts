// The state as the address's hash: "#venue=1&map=12&from=w22001&to=d14". What it does not say, or
// says wrongly, is as in the empty state.
import { emptyState, reachMinutes, type End, type State } from "./State.js";

const kinds = {
  d: "destination",
  a: "amenity",
  w: "waypoint",
  m: "mover",
  t: "pathType",
} as const satisfies Record<string, End["kind"]>;
const letters = Object.fromEntries(Object.entries(kinds).map(([letter, kind]) => [kind, letter]));
const mostInAList = 50;

function numberOf(text: string | null): number | null {
  if (text === null || !/^-?\d{1,15}$/.test(text)) return null;
  return Number(text);
}

export function endText(end: End): string {
  return `${letters[end.kind]}${end.id}`;
}

export function endOf(text: string | null): End | null {
  const found = /^([dawmt])(-?\d{1,15})$/.exec(text ?? "");
  if (found === null) return null;
  return { kind: kinds[found[1] as keyof typeof kinds], id: Number(found[2]) };
}

function listOf<T>(text: string | null, read: (each: string) => T | null): T[] {
  if (text === null) return [];
  return text.split(",").slice(0, mostInAList).map(read).filter((each) => each !== null);
}

export function decodeAddress(hash: string): State {
  const words = new URLSearchParams(hash.replace(/^#/, ""));
  const language = words.get("lang");
  const data = words.get("data");
  return {
    ...emptyState,
    venue: numberOf(words.get("venue")),
    map: numberOf(words.get("map")),
    place: endOf(words.get("place")),
    from: endOf(words.get("from")),
    via: listOf(words.get("via"), endOf),
    to: endOf(words.get("to")),
    way: Math.max(0, numberOf(words.get("way")) ?? 0),
    level: numberOf(words.get("level")),
    closed: listOf(words.get("closed"), numberOf),
    isOverview: words.get("overview") === "1",
    data: data === "type" || data === "level" ? data : null,
    path: numberOf(words.get("path")),
    category: numberOf(words.get("category")),
    reach: reachMinutes.find((each) => String(each) === words.get("reach")) ?? null,
    language: language !== null && /^[a-z]{2,3}$/.test(language) ? language : null,
  };
}

export function encodeAddress(state: State): string {
  const words: [string, string][] = [];
  const add = (name: string, value: string | number | null) => {
    if (value !== null && value !== "") words.push([name, String(value)]);
  };
  add("venue", state.venue);
  add("map", state.map);
  add("place", state.place && endText(state.place));
  add("from", state.from && endText(state.from));
  add("via", state.via.map(endText).join(","));
  add("to", state.to && endText(state.to));
  add("way", state.way || null);
  add("level", state.level);
  add("closed", state.closed.join(","));
  add("overview", state.isOverview ? 1 : null);
  add("data", state.data);
  add("path", state.path);
  add("category", state.category);
  add("reach", state.reach);
  add("lang", state.language);
  return words.length === 0 ? "" : `#${words.map(([name, value]) => `${name}=${value}`).join("&")}`;
}
