// The files of an IMDF archive (OGC 20-094), as lists of features of each type.
//
// A feature says its type itself; where it does not, its file's name does. Files of features that
// the format does not know are told of as a whole.
//
// Ownership: owns the documents, into which the features point. Threads: one caller at a time.
// Fails: by value; a file that cannot be read is told of, and the others count.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Names.hpp"
#include "tools/import/draft/Oddities.hpp"
#include "tools/import/source/GeoJsonFiles.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

struct ImdfFeature {
  // The feature's own; that of its file and its place there when it has none.
  std::string id;
  const Value* properties = nullptr;
  const Value* geometry = nullptr;

  // Null and what is no text read as empty.
  std::string_view text(std::string_view key) const { return (*properties)[key].text(); }
  // In small letters, whichever the source has.
  std::string category() const;
  // Of another feature, or empty.
  std::string idOf(std::string_view key) const { return imports::idOf((*properties)[key]); }
  // A label: a map of languages to texts. A plain text is one of no language.
  Names label(std::string_view key) const;
};

class ImdfFiles {
 public:
  // Whether such files are there.
  static bool areIn(const SourceFiles& source);

  ImdfFiles(const SourceFiles& source, Oddities& told);

  // "unit", "level", ...
  const std::vector<ImdfFeature>& of(std::string_view type) { return features_[std::string(type)]; }
  // As the manifest says; empty where it does not.
  const std::string& language() const { return language_; }
  // Differs with every change of a file.
  std::uint64_t stamp() const { return read_.stamp; }

 private:
  void addFeatures(const GeoJsonFile& file, Oddities& told);

  GeoJsonFiles read_;
  std::map<std::string, std::vector<ImdfFeature>> features_;
  std::string language_;
};

}  // namespace tern::imports
