// What the page shows at the moment somebody asks to share or print it.
import type { FoundWay } from "../engine/CurrentWay.js";
import { floorName, nameOfEnd, type Context } from "../panel/Context.js";
import { isMarked, linesOn, shownWay } from "../shownWay.js";
import type { State } from "../state/State.js";
import { withFrame } from "../venue/frame.js";
import { nameIn } from "../venue/names.js";
import { signedFloor } from "../venue/signs.js";
import type { Floor } from "../venue/Venue.js";
import { cropped, type Frame } from "./crop.js";
import type { PictureRequest } from "./FloorPicture.js";

export interface Shown {
  readonly context: Context;
  readonly state: State;
  readonly found: FoundWay | null;
  readonly floor: Floor;
  // What whoever hosts the page calls it, or the venue's name.
  readonly name: string;
}

export interface ShownPicture extends PictureRequest {
  // The floor's drawing as a document of its own, and its frame in map units.
  readonly drawing: string;
  readonly drawn: Frame;
}

// Where the way leads, or what is chosen, or the floor.
export function titleOf({ context, state, found, floor }: Shown): string {
  if (found !== null && state.from !== null && state.to !== null) {
    return `${nameOfEnd(context, state.from)} → ${nameOfEnd(context, state.to)}`;
  }
  return state.place === null ? floorName(context, floor) : nameOfEnd(context, state.place);
}

export function lengthsOf({ context }: Shown, mm: number, seconds: number): string {
  const texts = context.texts();
  return `${texts.length(mm)} · ${texts.minutes(seconds)}`;
}

// The chosen way alone. `shapes` are the least and the most that the picture is wide as a multiple
// of its height.
export function pictureOf(
  { context, state, found }: Shown,
  floor: Floor,
  width: number,
  shapes: readonly [number, number],
): ShownPicture {
  const { language } = context.texts();
  const { drawing, signs } = signedFloor(context.venue, floor);
  const chosen = found && { ...found, choices: [found.way] };
  return {
    drawing: drawing === "" ? "" : withFrame(drawing, floor.frame),
    drawn: floor.frame,
    frame: cropped(floor, linesOn(found?.way ?? null, floor.map).flat(), shapes),
    width,
    way: shownWay(context, state, chosen, floor, signs),
    signs,
    isHidden: (sign) => isMarked(context, state, sign),
    language,
  };
}

export function venueName({ context, name }: Shown): string {
  return name === "" ? nameIn(context.texts().language, context.venue.names) : name;
}

// A name for a file, of letters and digits in any writing.
export function fileName(shown: Shown, ending: string): string {
  const words = titleOf(shown).match(/[\p{L}\p{N}]+/gu) ?? [];
  return `${words.join("-").toLowerCase().slice(0, 80) || "map"}.${ending}`;
}
