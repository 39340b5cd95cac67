// Somebody who has nothing but the steps of a route, and eyes: walks a venue's ways by them.
//
// They know where they are and, after the first metres, which way they face. Where nothing is told
// they go straight on; a turn that is told they look for where its metres say. Ways are judged by
// where they lead within a glance, not by the first link that is drawn. Where they cannot face any
// way yet, at the beginning and out of a lift, they try the ways in turn; the one on which what is
// told next is found best is theirs.
//
// Ownership: borrows the venue. Threads: one. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "TernCoreKit/guidance/TernStep.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::test {

// What a reader knows of a step: nothing of where it is.
struct ToldStep {
  TernStep::Kind kind = TernStep::Kind::depart;
  std::optional<TernDirection> direction;
  // To the next step.
  double metres = 0;
  std::optional<std::int64_t> mover;
  std::optional<std::int64_t> toMapId;
  std::optional<std::int64_t> destination;
};

std::vector<ToldStep> toldSteps(const std::vector<TernStep>& steps);

class Follower {
 public:
  explicit Follower(const TernActiveVenue& venue);

  // The id of the waypoint where the steps lead from a start; none where they cannot be followed.
  std::optional<std::int64_t> endOf(std::int64_t start, const std::vector<ToldStep>& steps) const;
  // Far where they are on different maps.
  double metresApart(std::int64_t a, std::int64_t b) const;
  // Whether somebody who walks can be there: not on stairs, or in a lift.
  bool isOnFoot(std::int64_t id) const { return waysFrom(id) > 0; }
  // How many ways there are on foot.
  std::ptrdiff_t waysFrom(std::int64_t id) const;

 private:
  struct Way {
    std::size_t to = 0;
    std::int64_t type = 0;
    double metres = 0;
  };
  struct Spot {
    std::int64_t id = 0;
    std::int64_t mapId = 0;
    TernCoordinate at;  // metres
    std::vector<Way> ways;
  };
  // Somebody at a spot.
  struct Person {
    std::size_t spot = 0;
    std::optional<std::size_t> from;
    // Where they came along, ending here; one point while they face no way.
    std::vector<TernCoordinate> trail;
    // The way that they have chosen.
    std::vector<std::size_t> ahead;
    // Since the last step.
    double walked = 0;
    // How badly what was told fits what they found.
    double misfit = 0;
  };
  // What they see along a way.
  struct Glance {
    std::vector<std::size_t> spots;
    double length = 0;
    TernCoordinate end;
    bool isDeadEnd = false;
  };
  // A spot beside the way, and the way there.
  struct Near {
    std::size_t spot = 0;
    std::optional<std::size_t> from;
    double metres = 0;
    double drawn = 0;
    std::optional<std::size_t> first;
  };

  bool isOnFoot(const Spot& from, const Way& way) const;
  std::vector<Glance> glances(const Person& person, double length) const;
  void look(const Person& person, const Way& first, double length, std::vector<Glance>& seen) const;
  std::optional<std::size_t> straightOn(const Person& person) const;
  Person moved(const Person& person, std::size_t to) const;
  std::vector<std::vector<Person>> walks(const Person& person, double until) const;
  std::vector<Near> nearTo(const Person& person, double within) const;
  std::vector<Person> turned(const std::vector<Person>& walk, TernDirection direction,
                             double metres, double next) const;
  template <class Found>
  std::optional<std::pair<Person, Near>> reached(const std::vector<Person>& walk,
                                                 const ToldStep& told, double metres,
                                                 Found found) const;
  std::vector<Person> ridden(const Person& entry, const Way& first, const ToldStep& told) const;
  std::vector<Person> taken(const Person& person, const Near& near, const ToldStep& told) const;
  std::vector<Person> done(const std::vector<Person>& walk, const ToldStep& told,
                           double metres) const;
  bool isGoal(std::size_t spot, const ToldStep& told) const;
  std::vector<Person> started(std::size_t spot, const ToldStep& told) const;

  const TernActiveVenue& venue_;
  std::vector<Spot> spots_;
};

}  // namespace tern::test
