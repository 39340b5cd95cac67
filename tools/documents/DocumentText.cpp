#include "tools/documents/DocumentText.hpp"

#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::documents {

void DocumentText::separate() {
  if (follows_) out_ += ',';
  follows_ = true;
}

void DocumentText::writeKey(std::string_view key) {
  separate();
  out_ += encodeJson(key, JsonLayout::compact);
  out_ += ':';
}

void DocumentText::beginMap() {
  separate();
  if (!out_.empty()) out_ += '\n';
  out_ += '{';
  follows_ = false;
}

void DocumentText::beginMap(std::string_view key) {
  writeKey(key);
  out_ += '{';
  follows_ = false;
}

void DocumentText::endMap() {
  out_ += '}';
  follows_ = true;
}

void DocumentText::beginBatch(std::string_view key) {
  writeKey(key);
  out_ += "{\"items\":[";
  follows_ = false;
}

void DocumentText::endBatch() {
  out_ += "]}";
  follows_ = true;
}

void DocumentText::field(std::string_view key, const Value& value) {
  writeKey(key);
  out_ += encodeJson(value, JsonLayout::compact);
}

void DocumentText::item(const Value& value) {
  separate();
  out_ += '\n';
  out_ += encodeJson(value, JsonLayout::compact);
}

std::string DocumentText::finished() {
  out_ += '\n';
  return std::move(out_);
}

}  // namespace tern::documents
