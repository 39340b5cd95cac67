// Movers, out of the paths that are not walked.
import type { Edge, Mover, Names, PathType, Spot } from "./Venue.js";

export const walking = 1;

export interface Path {
  readonly names: Names;
  readonly type: number;
  readonly waypoints: readonly number[];
}

// The waypoints that paths of one type join, in groups.
class Groups {
  #parents = new Map<number, number>();

  root(id: number): number {
    let root = id;
    for (let next = this.#parents.get(root); next !== undefined; next = this.#parents.get(root)) {
      root = next;
    }
    for (let each = id; each !== root; ) {
      const next = this.#parents.get(each)!;
      this.#parents.set(each, root);
      each = next;
    }
    return root;
  }

  join(a: number, b: number): void {
    const [first, second] = [this.root(a), this.root(b)];
    // The smallest id is the root, and so the mover's id.
    if (first !== second) this.#parents.set(Math.max(first, second), Math.min(first, second));
  }
}

// A path joins each of its waypoints with each.
export function edgesOf({ waypoints }: Path): Edge[] {
  return waypoints.flatMap((a, index) => waypoints.slice(index + 1).map((b) => [a, b] as const));
}

function namesOfAll(paths: readonly Path[], type: PathType): Names {
  const [first] = paths;
  const isOne = paths.every((path) => path.names.name === first?.names.name);
  return first !== undefined && isOne && first.names.name !== "" ? first.names : type.names;
}

export function moversOf(
  paths: readonly Path[],
  types: ReadonlyMap<number, PathType>,
  waypoints: ReadonlyMap<number, Spot>,
): Mover[] {
  const movers: Mover[] = [];
  for (const type of types.values()) {
    if (type.id === walking) continue;
    const groups = new Groups();
    const own = paths.filter((path) => path.type === type.id && path.waypoints.length > 0);
    for (const path of own) for (const id of path.waypoints) groups.join(path.waypoints[0]!, id);
    const together = new Map<number, Path[]>();
    for (const path of own) {
      const root = groups.root(path.waypoints[0]!);
      together.set(root, [...(together.get(root) ?? []), path]);
    }
    for (const [id, each] of together) {
      const ids = new Set(each.flatMap((path) => path.waypoints));
      const spots = [...ids].map((one) => waypoints.get(one)).filter((spot) => spot !== undefined);
      if (spots.length === 0) continue;
      movers.push({ id, names: namesOfAll(each, type), type, spots, edges: each.flatMap(edgesOf) });
    }
  }
  return movers;
}
