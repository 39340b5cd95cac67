// The map's colours, as theme.css has them now.
import { colour } from "../theme/theme.js";

export interface MapColours {
  readonly ink: string;
  readonly paper: string;
  readonly quiet: string;
  readonly accent: string;
  readonly start: string;
  readonly end: string;
  readonly exit: string;
  readonly amenity: string;
  readonly mover: string;
  readonly way: string;
  readonly alarm: string;
  readonly other: string;
}

export function mapColours(): MapColours {
  return {
    ink: colour("map-ink"),
    paper: colour("map-halo"),
    quiet: colour("quiet"),
    accent: colour("accent"),
    start: colour("start"),
    end: colour("end"),
    exit: colour("exit"),
    amenity: colour("amenity"),
    mover: colour("mover"),
    way: colour("way-casing"),
    alarm: colour("alarm"),
    other: colour("other-way"),
  };
}
