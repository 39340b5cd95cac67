// The codes of pedestrian networks and of the floor plans that come with them, and what they mean.
//
// Ownership: constants. Threads: free functions over constants. Fails: never.
#pragma once

#include <string>
#include <string_view>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Draft.hpp"
#include "tools/import/network/LiftKinds.hpp"
#include "tools/import/network/NetworkFiles.hpp"

namespace tern::imports {

// By "route_type"; a lift counts as one whose kind is not known yet.
LinkKind linkKindOf(const NetworkRecord& link);
// By "direction".
Direction directionOf(const NetworkRecord& link);
// By "elevator".
LiftStatement liftStatementOf(const NetworkRecord& link);
// By "lev_diff": a step of more than two centimetres.
bool hasSteps(const NetworkRecord& link);
// By "vtcl_slope": more than five percent.
bool isSteep(const NetworkRecord& link);
// In words: width, slope, steps, roof, tactile paving, kind of lift.
Value detailsOf(const NetworkRecord& link);

// By "category", "restricted" and "nonpublic".
AreaKind areaKindOf(const NetworkRecord& space);

// A kind of place.
struct PlaceRow {
  std::string_view id;
  Names names;
};

// Of a facility's "category"; null for one that has no meaning here yet.
const PlaceRow* placeOfFacility(std::string_view category);
// Of a space's "category"; null where a space is no place to go to.
const PlaceRow* placeOfSpace(AreaKind kind, std::string_view category);
// An opening that is named: an exit, a ticket gate, or the shop behind it.
const PlaceRow* placeOfOpening(std::string_view name);

// As a sign would have it: an exit that is called "3A" is "出口3A".
std::string fullName(std::string_view name, const PlaceRow& place);

// Whether the name says no more than that it is such a place: "トイレ（男性用）".
bool isGeneric(std::string_view name, const PlaceRow& place);
// Whether the name says no more than what something is: "階段の範囲".
bool isGeneric(std::string_view name);

}  // namespace tern::imports
