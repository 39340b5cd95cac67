// Options that several commands take.
//
// Threads: any. Fails: never.
#pragma once

#include <array>

#include "tools/tern/Option.hpp"

namespace tern::command {

// Where the data comes from.
inline constexpr std::array sourceOptions{
    Option{"--data", "DIR", "the venue folder to read", readText},
    Option{"--host", "URL", "the mapping service to ask, in place of a folder", readUrl},
};

// What of it is loaded.
inline constexpr std::array venueOptions{
    Option{"--venue", "V,...", "the venue, or several to join; left out: the only one",
           readVenueIds},
    Option{"--building", "B", "load this building only", readWhole},
};

// Those that stand beside --host only.
inline constexpr std::array hostOptions{
    Option{"--customer", "N", "the customer's id", readWhole, required},
    Option{"--client-id", "ID", "who asks the service", readText, required},
    Option{"--client-secret", "S", "the secret; better set TERN_CLIENT_SECRET", readText},
    Option{"--cache", "DIR", "the folder to keep the service's answers in", readText},
    Option{"--no-reload", "", "do not ask the service for what is cached"},
    Option{"--locale", "L", "the language of the names", readText, orElse("en-US")},
    Option{"--geojson", "", "ask for shapes as GeoJSON"},
    Option{"--timeout", "S", "the longest silence, in seconds", readWholeBetween<1, 86'400>,
           orElse("30")},
    Option{"--ca-file", "FILE", "certificates to trust in place of the system's", readText},
    Option{"--trace", "", "show each request on standard error"},
};

inline constexpr Option jsonOption{"--json", "",
                                   "print the answer, or what is wrong, as one JSON object"};
inline constexpr Option fromOption{
    "--from",     "W",      "where to start: a waypoint, or a place by its name",
    readPlace,    required, {},
    Naming::start};
inline constexpr Option startsOption{
    "--from", "W,...",      "where to start: waypoints, or places by name", readPlaces, required,
    {},       Naming::start};
inline constexpr Option toOption{
    "--to", "W",         "where to go: a waypoint, or a place by its name", readPlace, required,
    {},     Naming::goal};
inline constexpr Option accessibilityOption{
    "--accessibility", "N", "take only paths of this level or below", readWhole, orElse("100")};
inline constexpr Option languageOption{"--language",
                                       "L",
                                       "tell the steps in en, de, fr, es or ja; en-US has feet",
                                       readText,
                                       optional,
                                       {},
                                       Naming::none,
                                       "en en-US de fr es ja"};
inline constexpr Option pictureOption{
    "--picture", "FILE", "draw the way to FILE.svg, FILE.html or FILE.geojson", readPictureFile};
inline constexpr Option atOption{"--at", "X,Y", "a point of the map, in map units", readPoint,
                                 required};

}  // namespace tern::command
