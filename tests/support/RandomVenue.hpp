// Makes small venues of every kind, well-made and absurd, out of a tape of random bytes.
//
// A tape that has run out reads as zeros, and zero is always the plainest choice, so that a
// property that fails on a tape shrinks to a small venue.
//
//   RC_GTEST_PROP(TernASGrid, isLinear, ()) {
//     Tape tape(*tapes());
//     const VenueLists lists = randomVenue(tape);
#pragma once

#include <rapidcheck.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "tests/support/LiteralGrid.hpp"

namespace tern::test {

class Tape {
 public:
  explicit Tape(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

  // A number below `count`, which is at most 256.
  std::size_t below(std::size_t count);
  bool oneIn(std::size_t count) { return below(count) + 1 == count; }
  template <class T>
  const T& pick(const std::vector<T>& choices) {
    return choices[below(choices.size())];
  }

 private:
  std::vector<std::uint8_t> bytes_;
  std::size_t next_ = 0;
};

rc::Gen<std::vector<std::uint8_t>> tapes();

// Several buildings and floors, paths of one to five waypoints, and, by the luck of the tape: ids
// that repeat, that nobody knows and that are missing; weights, levels and places that no venue
// has; links of length 0; venues joined by exits; null records.
VenueLists randomVenue(Tape& tape);

// One of the venue's waypoint ids, or now and then one that it does not have.
std::int64_t randomWaypointId(Tape& tape, const VenueLists& lists);
std::int64_t randomAccessLevel(Tape& tape);

std::shared_ptr<TernMapCollection> collect(const TernASGrid::Maps& maps);

}  // namespace tern::test
