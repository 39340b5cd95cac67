// Reads the stations of a transit feed: each one that pathways lead through is a draft.
//
//   ReadStations read = readGtfs(source, {.station = "place-pktrm"});
//   if (read.error) ...
//
// Threads: free functions. Fails: by value, with one line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

// Neither: the only one that there is.
struct StationWish {
  // By its id in the feed.
  std::string station = {};
  bool all = false;
};

struct [[nodiscard]] ReadStations {
  // By the stations' ids.
  std::vector<Draft> drafts;
  // What they are called together: the feed's publisher, else its agency, else its file or folder.
  std::string publisher;
  // Why there is none.
  std::optional<std::string> error;
  // Whether another wish would help.
  bool isOfWish = false;
};

ReadStations readGtfs(const SourceFiles& source, const StationWish& wish);

}  // namespace tern::imports
