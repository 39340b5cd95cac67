// What whoever hosts the page may set, in config.json beside it. Each value is looked at alone: one
// that cannot be used is as if it were not there, and is named.
import { object } from "./venue/json.js";

export interface Config {
  // The address of the folder of documents, with a slash at its end.
  readonly data: string;
  // The address of what a check found; null: nobody is asked.
  readonly findings: string | null;
  // The ids of those that are offered; empty: those that the documents list.
  readonly venues: readonly number[];
  readonly name: string;
  readonly logo: string | null;
  readonly colours: Readonly<Record<string, string>>;
  // The names of the values that cannot be used.
  readonly refused: readonly string[];
}

const colourNames = ["accent", "accentDark"];
const longestName = 60;

// An address below the page's own origin; nothing else may be asked for anyway.
function ownAddress(value: unknown): string | undefined {
  if (typeof value !== "string" || value === "") return undefined;
  try {
    const url = new URL(value, document.baseURI);
    return url.origin === location.origin ? url.href : undefined;
  } catch {
    return undefined;
  }
}

function ownFolder(value: unknown): string | undefined {
  const address = ownAddress(value);
  return address === undefined || address.endsWith("/") ? address : `${address}/`;
}

function ids(value: unknown): number[] | undefined {
  return Array.isArray(value) && value.every(Number.isSafeInteger) ? (value as number[]) : undefined;
}

function shortText(value: unknown): string | undefined {
  return typeof value === "string" && value.length <= longestName ? value : undefined;
}

function colours(value: unknown): Record<string, string> | undefined {
  const entries = Object.entries(object(value));
  const isGood = entries.every(
    ([name, each]) =>
      colourNames.includes(name) && typeof each === "string" && /^#[0-9a-f]{6}$/i.test(each),
  );
  return entries.length > 0 && isGood ? (Object.fromEntries(entries) as Record<string, string>) : undefined;
}

export function readConfig(value: unknown): Config {
  const given = object(value);
  const refused: string[] = [];
  const known = ["data", "findings", "venues", "name", "logo", "colours"];
  for (const name of Object.keys(given)) if (!known.includes(name)) refused.push(name);
  const read = <T>(name: string, reader: (value: unknown) => T | undefined, instead: T): T => {
    if (given[name] === undefined) return instead;
    const found = reader(given[name]);
    if (found === undefined) refused.push(name);
    return found ?? instead;
  };
  return {
    data: read("data", ownFolder, ownFolder("data/")!),
    findings: read<string | null>("findings", ownAddress, null),
    venues: read("venues", ids, []),
    name: read("name", shortText, ""),
    logo: read<string | null>("logo", ownAddress, null),
    colours: read("colours", colours, {}),
    refused,
  };
}

// Without the file everything is as it is.
export async function fetchConfig(): Promise<Config> {
  try {
    const response = await fetch("config.json");
    return readConfig(response.ok ? await response.json() : {});
  } catch {
    return { ...readConfig({}), refused: ["config.json"] };
  }
}
