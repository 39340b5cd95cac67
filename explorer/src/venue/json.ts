// Documents come from a stranger: what is not as it should be reads as empty.
export type Json = Readonly<Record<string, unknown>>;

export function object(value: unknown): Json {
  return typeof value === "object" && value !== null && !Array.isArray(value) ? (value as Json) : {};
}

export function list(value: unknown): readonly unknown[] {
  return Array.isArray(value) ? value : [];
}

// The records of a batch.
export function items(value: unknown): readonly Json[] {
  return list(object(value)["items"]).map(object);
}

export function text(value: unknown): string {
  return typeof value === "string" ? value : "";
}

export function number(value: unknown): number | null {
  return typeof value === "number" && Number.isFinite(value) ? value : null;
}

export function integer(value: unknown): number | null {
  return Number.isSafeInteger(value) ? (value as number) : null;
}

export function integers(value: unknown): number[] {
  return list(value).filter((each): each is number => Number.isSafeInteger(each));
}

export function point(value: unknown): readonly [number, number] | null {
  const [x, y] = list(value).map(number);
  return x === undefined || y === undefined || x === null || y === null ? null : [x, y];
}
