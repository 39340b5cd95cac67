// A record declares its fields once, as a table of names and members; making a record from a
// document, copying one and filling a collection's own fields are generic code over such tables.
//
//   template <>
//   const detail::FieldTable<TernPath>& detail::fieldsOf<TernPath>() {
//     using Table = detail::FieldTable<TernPath>;
//     static const detail::Immortal table{
//         Table("TernPath", {Table::copied<&TernPath::id>("id"), ...})};
//     return table.value;
//   }
//
// Ownership: a table lives as long as the process.
// Threads: any; a KeyOrder belongs to one thread.
// Fails: what a document has wrong is logged, and the record left as it stands.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "TernCoreKit/model/detail/HeldCollections.hpp"
#include "TernCoreKit/platform/Nested.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5::detail {

// Log lines of records that could not be made as their document says.
void logUnknownKey(std::string_view key, std::string_view kind);
void logWrongKind(std::string_view what, std::string_view kind, std::string_view wanted);

// Which field stood at which position of the last document. The documents of a batch nearly always
// have their keys in one order, so that the first guess is right.
class KeyOrder {
 public:
  std::uint8_t& fieldAt(std::size_t position) {
    return fieldAt_[std::min(position, fieldAt_.size() - 1)];
  }

 private:
  std::array<std::uint8_t, 24> fieldAt_{};
};

// What a table does with a key that is none of its fields.
enum class UnknownKeys { stop, ignore };

inline void copyField(const Value& from, Value& to) { to = from; }

template <class T>
void copyField(const Nested<T>& from, Nested<T>& to) {
  if (!from) {
    to = from.plain();
  } else if constexpr (HeldCollection<T>) {
    to = copyOfCollection(*from.get());
  } else {
    to = from->copyWithZone();
  }
}

template <class T>
void copyField(const std::vector<std::shared_ptr<T>>& from, std::vector<std::shared_ptr<T>>& to) {
  to = from;
}

template <class Record>
class FieldTable {
 public:
  struct Field {
    Value name;
    // The usual case, a plain value; null for every other.
    Value Record::*plain;
    // Takes the value out of the document; null where a document cannot give the field.
    void (*store)(Record& record, Value& value);
    // Null where a copy leaves the field out.
    void (*copy)(const Record& from, Record& to);
  };

  // Runs when all keys have been stored; what `store` did not take is still in the document.
  using Finish = void (*)(Record& record, Value& dictionary);

  FieldTable(std::string_view kind, std::vector<Field> fields, Finish finish = nullptr,
             UnknownKeys unknownKeys = UnknownKeys::stop)
      : kind_(kind), fields_(std::move(fields)), finish_(finish), unknownKeys_(unknownKeys) {}

  // A field that a copy of the record carries, and one that it does not.
  template <auto Member>
  static Field copied(std::string_view name);
  template <auto Member>
  static Field uncopied(std::string_view name);
  // A name that a document may use but that gives nothing.
  static Field ignored(std::string_view name) { return {name, nullptr, nullptr, nullptr}; }

  std::string_view kind() const { return kind_; }

  std::shared_ptr<Record> make(Value dictionary, KeyOrder& order) const;
  std::shared_ptr<Record> make(Value dictionary) const;
  std::shared_ptr<Record> copy(const Record& from) const;
  // Moves the values of known keys into the record; false when an unknown one stopped it.
  bool fill(Record& record, Value& dictionary, KeyOrder& order) const;

 private:
  const Field* fieldOf(const Value& key, std::uint8_t& guess) const;
  const Field* search(const Value& key, std::uint8_t& guess) const;

  std::string_view kind_;
  std::vector<Field> fields_;
  Finish finish_;
  UnknownKeys unknownKeys_;
};

// The table of a kind of record, or of a collection's own fields; defined in the source of that
// kind.
template <class Record>
const FieldTable<Record>& fieldsOf();

// Makes a field's map a record.
template <class T>
void makeNested(Nested<T>& field) {
  if (field.plain().isMap()) field = T::initWithDictionary(field.takePlain());
}

// Bodies follow.

template <auto Member>
struct FieldOf;

template <class Owner, class Type, Type Owner::*Member>
struct FieldOf<Member> {
  static constexpr bool isPlain = std::is_same_v<Type, Value>;
  static constexpr bool isStored = std::is_constructible_v<Type, Value>;

  template <class Record>
  static void store(Record& record, Value& value) {
    record.*Member = std::move(value);
  }
  template <class Record>
  static void copy(const Record& from, Record& to) {
    copyField(from.*Member, to.*Member);
  }
};

template <class Record>
template <auto Member>
auto FieldTable<Record>::copied(std::string_view name) -> Field {
  Field field = uncopied<Member>(name);
  field.copy = &FieldOf<Member>::template copy<Record>;
  return field;
}

template <class Record>
template <auto Member>
auto FieldTable<Record>::uncopied(std::string_view name) -> Field {
  Field field = ignored(name);
  if constexpr (FieldOf<Member>::isPlain) field.plain = Member;
  if constexpr (FieldOf<Member>::isStored) {
    field.store = &FieldOf<Member>::template store<Record>;
  }
  return field;
}

template <class Record>
std::shared_ptr<Record> FieldTable<Record>::make(Value dictionary, KeyOrder& order) const {
  auto record = std::make_shared<Record>();
  if (!dictionary.isMap()) {
    logWrongKind("the document", kind_, "a map");
  } else if (fill(*record, dictionary, order) && finish_ != nullptr) {
    finish_(*record, dictionary);
  }
  return record;
}

template <class Record>
std::shared_ptr<Record> FieldTable<Record>::make(Value dictionary) const {
  KeyOrder order;
  return make(std::move(dictionary), order);
}

template <class Record>
std::shared_ptr<Record> FieldTable<Record>::copy(const Record& from) const {
  auto to = std::make_shared<Record>();
  for (const Field& field : fields_) {
    if (field.copy != nullptr) field.copy(from, *to);
  }
  return to;
}

template <class Record>
bool FieldTable<Record>::fill(Record& record, Value& dictionary, KeyOrder& order) const {
  std::size_t position = 0;
  for (Value::Entry& entry : dictionary.entries()) {
    const Field* field = fieldOf(entry.key, order.fieldAt(position++));
    if (field == nullptr) {
      if (unknownKeys_ == UnknownKeys::ignore) continue;
      logUnknownKey(entry.key.text(), kind_);
      return false;
    }
    if (field->plain != nullptr) {
      record.*(field->plain) = std::move(entry.value);
    } else if (field->store != nullptr) {
      field->store(record, entry.value);
    }
  }
  return true;
}

template <class Record>
auto FieldTable<Record>::fieldOf(const Value& key, std::uint8_t& guess) const -> const Field* {
  if (guess < fields_.size() && fields_[guess].name.sameBytes(key)) return &fields_[guess];
  return search(key, guess);
}

template <class Record>
auto FieldTable<Record>::search(const Value& key, std::uint8_t& guess) const -> const Field* {
  auto found = std::find_if(fields_.begin(), fields_.end(),
                            [&](const Field& field) { return field.name.sameBytes(key); });
  if (found == fields_.end()) {
    const std::string_view text = key.text();
    found = std::find_if(fields_.begin(), fields_.end(),
                         [&](const Field& field) { return field.name.text() == text; });
  }
  if (found == fields_.end()) return nullptr;
  guess = static_cast<std::uint8_t>(found - fields_.begin());
  return &*found;
}

}  // namespace tern::detail
