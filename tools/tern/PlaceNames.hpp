// Ids in the place of names: what stands where a command asks for a waypoint, a destination or an
// amenity. Every command that has loaded a venue goes through here.
//
// A whole number is an id where the venue has such a record, and else a name like any other text. A
// name is a place whose whole name it is, whatever its case and accents.
//
// Threads: as readers of the venues. Fails: by value: a name that fits several places lists them,
// one that fits none names the closest.
#pragma once

#include <memory>
#include <variant>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

// The call with ids only. A goal of several waypoints is a list of these.
std::variant<Arguments, Failure> withIds(
    Arguments call, const std::vector<std::shared_ptr<TernActiveVenue>>& venues);

// What the command answers to the call with ids only.
Outcome answerAbout(const AboutVenue& about, const Arguments& call,
                    const std::shared_ptr<TernActiveVenue>& venue);
Outcome answerAbout(const AboutVenue& about, const Arguments& call,
                    const std::shared_ptr<TernMultiActiveVenues>& venues);

}  // namespace tern::command
