/// @file
/// Where the documents of a venue folder come from: a folder, or whoever hands them over. They are
///
///     full.json                                    the customer and the list of venues
///     venue/<id>/full.json                         a venue
///     venue/<id>/building/<id>/full.json           one of its buildings, with floors and maps
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// A document of more bytes is refused.
inline constexpr std::uintmax_t maximumDocumentBytes = std::uintmax_t{1} << 30U;

/// Gives documents by their path below the venue folder.
///
/// Ownership: a value; `read` owns what it needs.
/// Threads: as `read`.
/// Fails: by the error of `read`, TN007 where there is no such document.
///
///     const DocumentSource source{{}, [&](const std::string& path) { return texts.at(path); }};
struct DocumentSource {
  /// What errors call the place, such as the folder; empty for one without a name.
  std::string place = {};
  /// The text of the document, or one line that says why there is none. REQUIRES: not empty.
  std::function<std::variant<std::string, TernError>(const std::string& path)> read = {};

  /// What errors call a document: its path behind the place.
  TERN_API std::string nameOf(std::string_view path) const;
};

/// The documents that lie in a folder.
TERN_API DocumentSource folderDocuments(std::string folder);

}  // namespace tern
