// Movers, out of the paths that are not walked.
import type { Mover, PathType, Spot } from "./Venue.js";

export const walking = 1;

export interface Path {
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

export function moversOf(
  paths: readonly Path[],
  types: ReadonlyMap<number, PathType>,
  waypoints: ReadonlyMap<number, Spot>,
): Mover[] {
  const movers: Mover[] = [];
  for (const type of types.values()) {
    if (type.id === walking) continue;
    const groups = new Groups();
    const ids = new Set<number>();
    for (const path of paths) {
      if (path.type !== type.id) continue;
      for (const id of path.waypoints) {
        ids.add(id);
        groups.join(path.waypoints[0]!, id);
      }
    }
    const spots = new Map<number, Spot[]>();
    for (const id of ids) {
      const spot = waypoints.get(id);
      const root = groups.root(id);
      if (spot !== undefined) spots.set(root, [...(spots.get(root) ?? []), spot]);
    }
    for (const [id, each] of spots) movers.push({ id, type, spots: each });
  }
  return movers;
}
