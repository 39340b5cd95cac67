// The GeoJSON files of a pedestrian network, as lists of records of each kind.
//
// A node or a link is known by its properties, what else there is by the end of its file's name:
// "BLShinyoko_B1_Space.geojson". A site may come in any number of parts.
//
// Ownership: owns the documents, into which the records point. Threads: one caller at a time.
// Fails: by value; a file that cannot be read is told of, and the others count.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Oddities.hpp"
#include "tools/import/source/GeoJsonFiles.hpp"
#include "tools/import/source/PlaneSystem.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

enum class RecordKind {
  node,
  link,
  floor,
  space,
  opening,
  facility,
  drawing,
  fixture,
  site,
  building,
  other
};

const Value& propertyOf(const Value& properties, std::string_view key);

struct NetworkRecord {
  // The record's own; that of its file and its place there when it has none.
  std::string id;
  const Value* properties = nullptr;
  const Value* geometry = nullptr;
  PlaneSystem system;

  // Of a key in small letters; some files have it in capitals.
  const Value& value(std::string_view key) const { return propertyOf(*properties, key); }
  bool has(std::string_view key) const { return !value(key).isAbsent() && !value(key).isNull(); }
  // Null and empty texts read as empty.
  std::string_view text(std::string_view key) const { return value(key).text(); }
  // Of another record, or empty; numbers are ids too.
  std::string idOf(std::string_view key) const { return imports::idOf(value(key)); }
  // Codes come as texts and as numbers; -1 for neither.
  int code(std::string_view key) const;
};

class NetworkFiles {
 public:
  // Whether such files are there.
  static bool areIn(const SourceFiles& source);

  NetworkFiles(const SourceFiles& source, Oddities& told);

  const std::vector<NetworkRecord>& of(RecordKind kind) { return records_[kind]; }
  // Differs with every change of a file.
  std::uint64_t stamp() const { return read_.stamp; }

 private:
  void addFeatures(const GeoJsonFile& file, Oddities& told);

  GeoJsonFiles read_;
  std::map<RecordKind, std::vector<NetworkRecord>> records_;
};

}  // namespace tern::imports
