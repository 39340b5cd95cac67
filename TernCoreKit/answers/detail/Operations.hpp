// What can be asked: one table of operations, each a name and the function that answers it.
//
// A function reads its fields, returns anything when one of them was wrong, and else the answer
// without its "id". A new operation is a file with its function, its name among those below and a
// row of the table.
//
// REQUIRES: the venue's graph and trees, or the joined graph, are built.
// Threads: one request at a time on one venue. Fails: by the fields' error.
#pragma once

#include <span>
#include <string_view>

#include "TernCoreKit/answers/detail/RequestFields.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {
struct TernActiveVenue;
class TernMultiActiveVenues;
class TernPlaces;
}  // namespace tern

namespace tern::inline v5::detail {

using AnswerVenue = Value(TernActiveVenue& venue, RequestFields& fields);
using AnswerJoined = Value(const TernMultiActiveVenues& venues, RequestFields& fields);
using AnswerPlaces = Value(const TernPlaces& places, RequestFields& fields);

// RouteOperations.cpp
AnswerVenue answerRoute, answerRouteToAny, answerAlternatives, answerClosestByRoute;
AnswerJoined answerJoinedRoute;
// DirectionsOperation.cpp
AnswerVenue answerDirections;
// TourOperations.cpp
AnswerVenue answerTour, answerSolve;
// NearestOperations.cpp
AnswerVenue answerNearest, answerNearestOnMap, answerNearestByWalk;
// WalkOperations.cpp
AnswerVenue answerMatrix, answerReach;
// PointOperations.cpp
AnswerVenue answerClosest, answerConvert, answerCenter;
// GraphOperations.cpp
AnswerVenue answerBlockEdge, answerBlockEntry, answerBlockExit, answerNeighbors;
// PlacesOperations.cpp
AnswerPlaces answerPlaces;

struct Operation {
  std::string_view name;
  // Null when it is the names of a venue that are asked.
  AnswerVenue* answer;
  // Where it is asked of several venues at once; null when a request names one of them.
  AnswerJoined* answerJoined = nullptr;
  AnswerPlaces* answerPlaces = nullptr;
};

std::span<const Operation> operations();
// Null when there is none of that name.
const Operation* findOperation(std::string_view name);

}  // namespace tern::detail
