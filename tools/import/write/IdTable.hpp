// Numbers for the ids of a source: texts of any form become whole numbers from 1 to 2^31 - 1.
//
// A number follows from the id alone, so that it stays the same whatever else the source holds.
// Where two ids fall on one number, the one that comes first has it; numbers of an import before
// this one are kept, which leaves even those as they were.
//
//   IdTable ids;
//   ids.keep("waypoint", "a29ef722", 90);     // from the import before
//   ids.of("waypoint", "a29ef722");           // 90
//
// Threads: one caller at a time.
// Fails: never.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Hash.hpp"

namespace tern::imports {

inline constexpr std::int64_t mostId = 0x7FFFFFFF;

class IdTable {
 public:
  // Reserves a number, unless it is out of range or taken.
  void keep(std::string_view kind, std::string_view sourceId, std::int64_t id);
  // All numbers that `document` told of an earlier table; what else it holds is passed over.
  void keep(const Value& document);

  // Each kind of record has numbers of its own.
  std::int64_t of(std::string_view kind, std::string_view sourceId);

  // {"waypoint": {"<source id>": number, ...}, ...} of the ids that were asked for since the last
  // time, sorted.
  Value takeDocument();

 private:
  struct Kind {
    std::unordered_map<std::string, std::int64_t> ids;
    std::unordered_set<std::int64_t> taken;
    std::map<std::string, std::int64_t> asked;
  };

  Kind& kindOf(std::string_view name) { return kinds_[std::string(name)]; }

  std::map<std::string, Kind> kinds_;
};

}  // namespace tern::imports
