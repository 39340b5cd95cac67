// Names in the language of whoever reads.
import { object, text, type Json } from "./json.js";
import type { Names } from "./Venue.js";

// Of a record, or of anything with "name" and "extensors.names" or "names" by locale.
export function namesOf(record: Json, instead = ""): Names {
  const given = { ...object(object(record["extensors"])["names"]), ...object(record["names"]) };
  const others = new Map<string, string>();
  for (const [locale, name] of Object.entries(given)) {
    const language = locale.split(/[-_]/)[0]?.toLowerCase() ?? "";
    if (text(name) !== "" && !others.has(language)) others.set(language, text(name));
  }
  const name = text(record["name"]).trim();
  return { name: name === "" ? instead : name, others };
}

export function nameIn(language: string, names: Names): string {
  return names.others.get(language) ?? names.name;
}

// Whatever the case, the accents and the width of the letters are.
export function folded(name: string): string {
  return name.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase().replaceAll("ß", "ss").trim();
}
