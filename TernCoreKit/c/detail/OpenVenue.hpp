// What a handle to a venue stands for.
//
// Ownership: shares the venues. Threads: any.
// Fails: opening, by a Refusal with what is missing or broken.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/c/detail/JoinedTurn.hpp"
#include "TernCoreKit/loading/DocumentSource.hpp"

namespace tern::inline v5::detail {

struct OpenVenue {
  // Null for a single venue; goes after the answers have let joined ones go.
  std::shared_ptr<JoinedTurn> turn;
  TernAnswers answers;
};

// The venues of these ids, or the only one; several are joined.
std::shared_ptr<OpenVenue> openVenue(const DocumentSource& source,
                                     const std::vector<std::int64_t>& ids);

}  // namespace tern::detail
