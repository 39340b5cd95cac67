// What holds of all that the readers of building data make of a source, however wrong it is: the
// drafts are whole, and the venue of each loads and answers.
//
// Threads: one. Fails: by `require`.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::fuzz {

// Either an error, which says something, or at least one draft.
void checkDrafts(std::span<const imports::Draft> drafts, const std::optional<std::string>& error);

// As a network, as a feed, as IMDF and as OpenStreetMap, whichever the source is.
void checkNetwork(const imports::SourceFiles& source);
void checkFeed(const imports::SourceFiles& source);
void checkImdf(const imports::SourceFiles& source);
void checkOsm(const imports::SourceFiles& source);

}  // namespace tern::fuzz
