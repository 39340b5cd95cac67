// Loads venues or buildings strictly one after another. Each load begins on the background queue,
// which is free again while the load waits for the service. None begins inside another, also where
// the queue runs its tasks at once.
//
// Ownership: what is under way keeps itself. Threads: any; `finish` runs on the background queue.
// Fails: as `load` does; one that never completes ends the row without `finish`, and one for which
// there is no memory ends it with false.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace tern::inline v5::detail {

// To be called once, when a load has completed.
using LoadNext = std::function<void()>;

void loadInTurn(std::vector<std::int64_t> ids,
                std::function<void(std::int64_t id, LoadNext next)> load,
                std::function<void(bool areAllBegun)> finish);

}  // namespace tern::detail
