// Every kind of record as a row of one table, so that what all records promise is written once.
//
//   for (const RecordKind& kind : recordKinds()) {
//     const AnyRecord record = kind.make(Value::map({{"id", 1}}));
//     kind.plain[0].read(kind.copy(record));
//
// A row makes, copies and reads records without telling their type.
//
// Ownership: records are shared; the table lives as long as the process. Threads: any.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {

using AnyRecord = std::shared_ptr<const void>;

// A field that holds what the document gave.
struct PlainField {
  const char* name;
  // By `copyWithZone`.
  bool isCopied;
  std::function<const Value&(const AnyRecord&)> read;
};

// A field in which a map becomes a record, or a collection of records.
struct NestedField {
  using Elements = std::vector<std::shared_ptr<const TernBaseModel>>;

  const char* name;
  bool isCopied;
  // The value that is no map; absent when a record or collection is held.
  std::function<const Value&(const AnyRecord&)> plain;
  // The record or collection; null when a plain value is held.
  std::function<const void*(const AnyRecord&)> object;
  // The records of the collection. No function where a single record is held.
  std::function<Elements(const AnyRecord&)> elements;
};

struct RecordKind {
  const char* name;
  bool stopsAtUnknownKeys;
  std::function<AnyRecord(Value)> make;
  std::function<AnyRecord(const AnyRecord&)> copy;
  // The same by way of the base; no function for a kind that has none.
  std::function<AnyRecord(const AnyRecord&)> copyAsBase;
  // All fields but those whose value depends on other fields or that documents cannot give.
  std::vector<PlainField> plain;
  std::vector<NestedField> nested;
};

// What gtest prints of a row.
inline void PrintTo(const RecordKind& kind, std::ostream* out) { *out << kind.name; }

const std::vector<RecordKind>& recordKinds();

}  // namespace tern::test
