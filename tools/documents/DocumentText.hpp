// Writes a large JSON document piece by piece, a record on each line, so that no more than one
// record of it is ever held as a Value.
//
//   DocumentText text;
//   text.beginMap();
//   text.field("id", 7);
//   text.beginBatch("items");
//   text.item(Value::map({{"id", 1}}));
//   text.endBatch();
//   text.endMap();
//   text.finished();  // {"id":7,"items":{"items":[
//                     // {"id":1}]}}
// Threads: one caller at a time.
#pragma once

#include <string>
#include <string_view>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::documents {

class DocumentText {
 public:
  // A map as the document itself or as the next item of a list; with a key, as that key's value.
  void beginMap();
  void beginMap(std::string_view key);
  void endMap();

  // The form in which records come: the key's value is a map whose "items" is a list.
  void beginBatch(std::string_view key);
  // Ends the list and its map.
  void endBatch();

  void field(std::string_view key, const Value& value);
  void item(const Value& value);

  std::string finished();

 private:
  void separate();
  void writeKey(std::string_view key);

  std::string out_;
  // Whether something stands before the next piece on its level.
  bool follows_ = false;
};

}  // namespace tern::documents
