// Several venues that stand beside each other, as one. Maps and waypoints have ids of their own
// throughout, places only within their venue: those of each further one are counted on.
import type { Json } from "./json.js";
import { levelsOf } from "./levels.js";
import { walking } from "./movers.js";
import { readVenue } from "./read.js";
import type { PathType, Place, Venue } from "./Venue.js";

export interface VenueDocuments {
  readonly venue: Json;
  readonly buildings: readonly Json[];
}

const placesOfAVenue = 1e9;

// Of a place as its own venue knows it.
export function joinedId(index: number, id: number): number {
  return index * placesOfAVenue + id;
}

function merged<Key, Value>(maps: readonly ReadonlyMap<Key, Value>[]): Map<Key, Value> {
  return new Map([...maps].reverse().flatMap((each) => [...each]));
}

function usedTypes(venues: readonly Venue[], types: ReadonlyMap<number, PathType>): PathType[] {
  const used = new Set(venues.flatMap(({ movers }) => movers.map(({ type }) => type.id)));
  return [...types.values()].filter((type) => type.id === walking || used.has(type.id));
}

export function readJoined(all: readonly VenueDocuments[]): Venue {
  const venues = all.map(({ venue, buildings }) => readVenue(venue, buildings));
  const [first, ...others] = venues;
  if (first === undefined || others.length === 0) return first ?? readVenue({}, []);
  const pathTypes = merged(venues.map((each) => each.pathTypes));
  const places = venues.flatMap((venue, index) =>
    venue.places.map((place): Place => ({ ...place, id: joinedId(index, place.id) })),
  );
  return {
    ...first,
    buildings: venues.flatMap((each) => each.buildings),
    floors: merged(venues.map((each) => each.floors)),
    places,
    waypoints: merged(venues.map((each) => each.waypoints)),
    joined: new Set(venues.flatMap((each) => [...each.joined])),
    walks: venues.flatMap((each) => each.walks),
    pathTypes,
    movers: venues.flatMap((each) => each.movers),
    levels: levelsOf(usedTypes(venues, pathTypes)),
  };
}
