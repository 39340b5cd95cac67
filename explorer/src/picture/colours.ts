// What is printed or sent on stands on white, whatever the page is in.
import type { MapColours } from "../map/colours.js";

export const pictureColours: MapColours = {
  ink: "#1b232c",
  paper: "#ffffff",
  quiet: "#55606c",
  accent: "#2257c4",
  start: "#2c7a4b",
  end: "#c23b22",
  amenity: "#4f6f8a",
  mover: "#46586a",
  way: "#ffffff",
  exit: "#2c7a4b",
  alarm: "#c23b22",
  other: "#8fa9d6",
};
