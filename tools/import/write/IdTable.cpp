#include "tools/import/write/IdTable.hpp"

#include <utility>
#include <vector>

namespace tern::imports {

void IdTable::keep(std::string_view kindName, std::string_view sourceId, std::int64_t id) {
  if (id < 1 || id > mostId) return;
  Kind& kind = kindOf(kindName);
  if (kind.ids.contains(std::string(sourceId)) || !kind.taken.insert(id).second) return;
  kind.ids.emplace(sourceId, id);
}

void IdTable::keep(const Value& document) {
  for (const Value::Entry& kind : document.entries()) {
    for (const Value::Entry& id : kind.value.entries()) {
      keep(kind.key.text(), id.key.text(), id.value.integer());
    }
  }
}

std::int64_t IdTable::of(std::string_view kindName, std::string_view sourceId) {
  Kind& kind = kindOf(kindName);
  const auto [known, isNew] = kind.ids.try_emplace(std::string(sourceId), 0);
  if (isNew) {
    std::uint64_t hash = hashOf(sourceId);
    do {
      known->second = static_cast<std::int64_t>(hash % mostId) + 1;
      hash = hashOf("+", hash);
    } while (!kind.taken.insert(known->second).second);
  }
  kind.asked.try_emplace(known->first, known->second);
  return known->second;
}

Value IdTable::takeDocument() {
  Value document = Value::map();
  for (auto& [name, kind] : kinds_) {
    if (kind.asked.empty()) continue;
    std::vector<Value> entries;
    entries.reserve(2 * kind.asked.size());
    for (const auto& [sourceId, id] : kind.asked) {
      entries.emplace_back(sourceId);
      entries.emplace_back(id);
    }
    document.set(name, Value::mapOf(entries));
    kind.asked.clear();
  }
  return document;
}

}  // namespace tern::imports
