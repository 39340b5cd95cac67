// What kind of thing a path type is, and how long it takes.
//
// Threads: any. Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "TernCoreKit/guidance/detail/WalkedRoute.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"

namespace tern::inline v5::detail {

enum class MoverKind { lift, escalator, stairs, ramp, movingWalkway, gate, other };

// By the words of its name, in the languages that are known, as a phrase book lists them.
MoverKind moverKindOf(const TernPathType* pathType);
// "lift" and so on, as the languages' files call it.
std::string_view moverName(MoverKind kind);

std::shared_ptr<const TernPathType> pathTypeOf(const MapPlace& place, std::int64_t id);

// To walk so far on the level. Seconds.
double walkingSeconds(double mm);
// To ride from the entry to the exit: past so many floors, up above 0 and down below, or along so
// many metres where it stays on its floor.
double ridingSeconds(const TernPathType* pathType, int floors, double metres);

}  // namespace tern::detail
