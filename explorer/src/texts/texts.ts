// The page's own words, in the languages that the library's steps come in.
import de from "./de.json";
import en from "./en.json";
import es from "./es.json";
import fr from "./fr.json";
import ja from "./ja.json";

export type Key = keyof typeof en;

const all: Readonly<Record<string, Readonly<Record<Key, string>>>> = { en, de, fr, es, ja };

export const languages = Object.keys(all);

export class Texts {
  readonly language: string;
  #words: Readonly<Record<Key, string>>;

  // The language that is wanted, else the first that the browser asks for and is there.
  constructor(wanted: string | null) {
    const asked = [wanted ?? "", ...navigator.languages].map((each) => each.split("-")[0] ?? "");
    this.language = asked.find((each) => languages.includes(each)) ?? "en";
    this.#words = all[this.language]!;
  }

  of(key: Key, values: Readonly<Record<string, string | number>> = {}): string {
    return this.#words[key].replace(/\{(\w+)\}/g, (all, name: string) => String(values[name] ?? all));
  }

  length(mm: number): string {
    const metres = mm / 1000;
    const isFar = metres >= 999.5;
    return this.#counted(isFar ? metres / 1000 : metres, isFar ? "kilometer" : "meter", isFar ? 1 : 0);
  }

  minutes(seconds: number): string {
    return this.#counted(Math.max(1, Math.round(seconds / 60)), "minute", 0);
  }

  list(words: readonly string[]): string {
    return new Intl.ListFormat(this.language, { type: "disjunction" }).format(words);
  }

  nameOf(language: string): string {
    return all[language]!.language;
  }

  #counted(value: number, unit: string, digits: number): string {
    return new Intl.NumberFormat(this.language, {
      style: "unit",
      unit,
      unitDisplay: "short",
      minimumFractionDigits: digits,
      maximumFractionDigits: digits,
    }).format(value);
  }
}
