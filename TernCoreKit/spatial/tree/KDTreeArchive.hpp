#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The outside of a saved k-d tree: which kind of file it is, and a checksum that tells damage.
/// Used by KDTree, which says what lies inside.
///
/// Ownership: values. Threads: any; of several that save to one path one wins.
/// Fails: by value, with one line that says what is wrong.
struct [[nodiscard]] KDTreeArchive {
  /// A list with an entry for each node.
  Value nodes;
  /// Why there are no nodes; absent when there are.
  std::optional<TernError> error;

  /// The archive as a value, with its kind, its dimensions and its checksum.
  TERN_API static Value seal(Value nodes, std::size_t dimensions);
  /// An error when that is no sealed archive of so many dimensions, or not as it was sealed.
  TERN_API static KDTreeArchive open(const Value& sealed, std::size_t dimensions);
  /// The error of an archive that is not as it was sealed.
  TERN_API static KDTreeArchive damaged(std::string what);

  /// The path is one of the process-wide file system; folders that it lacks are made.
  TERN_API static std::optional<TernError> save(const Value& sealed, const std::string& path);
  /// Reads and opens what `save` wrote; an error when there is none.
  TERN_API static KDTreeArchive load(const std::string& path, std::size_t dimensions);
};

}  // namespace tern
