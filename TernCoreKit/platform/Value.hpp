#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// The one dynamic type of the library: what a decoded document is made of and what a record's
/// field holds.
///
/// A Value is absent, JSON null, a boolean, a 64-bit integer, a double, a text, a list or a map. A
/// map keeps the order of its document. Sixteen bytes; moving one is two stores, copying one copies
/// all that lies below it. Texts of up to fifteen bytes live inside.
///
/// Ownership: a Value owns its contents; views that it hands out (`text`, `items`, `entries`) live
/// as long as it is neither changed, moved nor destroyed.
/// Threads: as a standard container: any number of readers, or one writer.
/// Fails: reading never does: a typed reader of another kind gives 0, false or empty, an unknown
/// key gives an absent value. Growing past 2^32 - 1 elements or bytes throws std::length_error.
///
///     Value point = Value::map({{"id", 7}, {"coordinates", Value::list({1.5, 2.0})}});
///     point["id"].integer();                  // 7
///     point["coordinates"].items()[0].number();  // 1.5
///     point["name"].isAbsent();               // true
class TERN_API Value {
 public:
  /// What a Value is; `number` is a double.
  enum class Kind : std::uint8_t { absent, null, boolean, integer, number, text, list, map };

  /// One key of a map with its value, in document order.
  struct Entry;

  Value() noexcept = default;
  /// JSON null.
  Value(std::nullptr_t) noexcept {
    setWords(0, tagWord(tagNull));
  }  // NOLINT(google-explicit-constructor)
  /// A boolean.
  Value(std::same_as<bool> auto flag) noexcept {  // NOLINT(google-explicit-constructor)
    setWords(std::uint64_t{flag}, tagWord(tagBoolean));
  }
  /// An integer.
  template <std::integral T>
  requires(!std::same_as<T, bool> && (sizeof(T) < 8 || std::signed_integral<T>)) Value(T integer)
  noexcept {  // NOLINT(google-explicit-constructor)
    setWords(static_cast<std::uint64_t>(static_cast<std::int64_t>(integer)), tagWord(tagInteger));
  }
  /// A double.
  Value(std::floating_point auto number) noexcept {  // NOLINT(google-explicit-constructor)
    setWords(std::bit_cast<std::uint64_t>(static_cast<double>(number)), tagWord(tagNumber));
  }
  /// A text.
  Value(std::string_view text) {  // NOLINT(google-explicit-constructor)
    if (text.size() < tagAt + 1) {
      setShortText(text);
    } else {
      setLongText(text);
    }
  }
  /// A text.
  /// REQUIRES: not null.
  Value(const char* text) : Value(std::string_view(text)) {}  // NOLINT
  /// A text.
  Value(const std::string& text) : Value(std::string_view(text)) {}  // NOLINT

  /// A list of these items.
  static Value list(std::initializer_list<Value> items = {});
  /// A map of these entries.
  /// REQUIRES: the keys differ.
  static Value map(std::initializer_list<Entry> entries = {});

  /// Takes the values out and makes a list of them.
  static Value listOf(std::span<Value> items);
  /// Takes the values out and makes a map of every second one as a key and the one
  /// behind it as its value.
  /// REQUIRES: their number is even; the keys are texts and differ.
  static Value mapOf(std::span<Value> keysAndValues);

  /// Copies all that lies below.
  Value(const Value& other) {
    if (other.ownsBlock()) {
      copyBlock(other);
    } else {
      setWords(other.words_[0], other.words_[1]);
    }
  }
  /// Leaves an absent value behind.
  Value(Value&& other) noexcept {
    setWords(other.words_[0], other.words_[1]);
    other.setWords(0, 0);
  }
  /// Copies all that lies below; the other value may lie within this one.
  Value& operator=(const Value& other) {
    if (this != &other) *this = Value(other);
    return *this;
  }
  /// The other value may lie within this one.
  Value& operator=(Value&& other) noexcept {
    Value taken(std::move(other));
    std::swap(words_, taken.words_);
    return *this;
  }
  ~Value() {
    if (ownsBlock()) release();
  }

  /// What it is.
  Kind kind() const noexcept;
  /// What a Value is before something is put into it.
  bool isAbsent() const noexcept { return tag() == tagAbsent; }
  /// JSON null.
  bool isNull() const noexcept { return tag() == tagNull; }
  /// True or false.
  bool isBoolean() const noexcept { return tag() == tagBoolean; }
  /// A whole number of 64 bits.
  bool isInteger() const noexcept { return tag() == tagInteger; }
  /// An integer or a double.
  bool isNumber() const noexcept { return tag() == tagInteger || tag() == tagNumber; }
  /// Text in UTF-8.
  bool isText() const noexcept { return tag() == tagShortText || tag() == tagLongText; }
  /// A list of values.
  bool isList() const noexcept { return tag() == tagList; }
  /// Keys with values.
  bool isMap() const noexcept { return tag() == tagMap; }

  /// The number, 0 for what is none. A double is cut towards zero and held within 64 bits; a
  /// boolean reads as 0 or 1.
  std::int64_t integer() const noexcept {
    return isInteger() ? static_cast<std::int64_t>(words_[0]) : cutToInteger();
  }
  /// The number as a double, 0 for what is none; a boolean reads as 0 or 1.
  double number() const noexcept;
  /// True for true and for any number but 0.
  bool flag() const noexcept;
  /// The text, empty for what is none. Valid until the value changes, moves or ends.
  std::string_view text() const noexcept;

  /// What a text template prints for the value: a text itself, a number in decimal (a double that
  /// is a whole number of 64 bits as that number, another in the shortest form that reads back as
  /// the same double), 1 or 0 for a boolean, "<null>" for null;
  /// empty for what is absent, a list or a map.
  std::string printed() const;

  /// Elements of a list or entries of a map; 0 for every other kind.
  std::size_t size() const noexcept;
  /// The elements of a list; empty for every other kind. Valid until the value changes, moves or
  /// ends.
  std::span<const Value> items() const noexcept;
  /// The elements of a list, to change them in their places.
  std::span<Value> items() noexcept;
  /// The entries of a map; empty for every other kind. Valid until the value changes, moves or
  /// ends.
  std::span<const Entry> entries() const noexcept;
  /// The entries of a map, to change their values in their places.
  std::span<Entry> entries() noexcept;

  /// The value under the key of a map, by a scan; absent when there is none.
  const Value& operator[](std::string_view key) const noexcept;
  /// The value under the key of a map, by a scan; null when there is none.
  const Value* find(std::string_view key) const noexcept;
  /// The same, to change it in its place.
  Value* find(std::string_view key) noexcept;

  /// Adds to a list; anything else becomes a list first.
  void append(Value item);
  /// Sets a key of a map, in its place when it is there, else at the end; anything else becomes a
  /// map first.
  void set(std::string_view key, Value value);

  /// Equal kind and contents; an integer and a double are equal when their numbers are. Maps are
  /// equal only in the same order.
  friend TERN_API bool operator==(const Value& a, const Value& b) noexcept;

  /// Whether two texts of up to fifteen bytes, or any two other values without contents of their
  /// own, are the same, by their bytes alone: a quick test that may say no to equal longer texts.
  bool sameBytes(const Value& other) const noexcept {
    return words_[0] == other.words_[0] && words_[1] == other.words_[1];
  }

 private:
  static constexpr std::size_t tagAt = 15;
  static constexpr unsigned char tagAbsent = 0;
  static constexpr unsigned char tagNull = 1;
  static constexpr unsigned char tagBoolean = 2;
  static constexpr unsigned char tagInteger = 3;
  static constexpr unsigned char tagNumber = 4;
  static constexpr unsigned char tagShortText = 5;  // its length stands in the high four bits
  static constexpr unsigned char tagLongText = 6;   // from here on a block is owned
  static constexpr unsigned char tagList = 7;
  static constexpr unsigned char tagMap = 8;

  struct Block;
  struct Blocks;

  Value(unsigned char tag, Block* block) noexcept;

  const unsigned char* bytes() const noexcept {
    return reinterpret_cast<const unsigned char*>(words_);
  }
  unsigned char tag() const noexcept { return bytes()[tagAt] & 15U; }
  bool ownsBlock() const noexcept { return tag() >= tagLongText; }
  // A word that has the given byte where the tag is.
  static constexpr std::uint64_t tagWord(std::size_t byte) noexcept {
    return std::endian::native == std::endian::little ? std::uint64_t{byte} << 56U : byte;
  }
  void setWords(std::uint64_t first, std::uint64_t second) noexcept {
    words_[0] = first;
    words_[1] = second;
  }
  std::int64_t cutToInteger() const noexcept;
  void setShortText(std::string_view text) noexcept;
  void setLongText(std::string_view text);
  Block* block() const noexcept;
  void setBlock(unsigned char tag, Block* block) noexcept;
  void copyBlock(const Value& other);
  void release() noexcept;
  template <class Element>
  void copyElements(unsigned char tag, std::span<const Element> elements);
  template <class Element>
  Element* roomForOneMore(unsigned char tag);

  // A payload of eight bytes, or the bytes of a short text; the tag in the last byte. All zero is
  // absent.
  std::uint64_t words_[2] = {};
};

/// One key of a map with its value, in document order.
struct Value::Entry {
  /// A text, always.
  Value key;
  /// What stands under it.
  Value value;
};

static_assert(sizeof(Value) == 16 && sizeof(Value::Entry) == 32);

/// What lies on the heap for a long text, a list or a map: this header and the elements behind it.
struct Value::Block {
  /// How many elements there are.
  std::uint32_t size;
  /// How many there is room for.
  std::uint32_t capacity;

  /// The first of them.
  template <class Element>
  Element* elements() {
    return reinterpret_cast<Element*>(this + 1);
  }
};

inline Value::Block* Value::block() const noexcept {
  return reinterpret_cast<Block*>(static_cast<std::uintptr_t>(words_[0]));
}

inline double Value::number() const noexcept {
  if (tag() == tagNumber) return std::bit_cast<double>(words_[0]);
  if (tag() != tagInteger && tag() != tagBoolean) return 0;
  return static_cast<double>(static_cast<std::int64_t>(words_[0]));
}

inline std::size_t Value::size() const noexcept {
  return (isList() || isMap()) && block() != nullptr ? block()->size : 0;
}

inline std::span<Value> Value::items() noexcept {
  if (!isList() || block() == nullptr) return {};
  return {block()->elements<Value>(), block()->size};
}

inline std::span<const Value> Value::items() const noexcept {
  return const_cast<Value*>(this)->items();
}

inline std::span<Value::Entry> Value::entries() noexcept {
  if (!isMap() || block() == nullptr) return {};
  return {block()->elements<Entry>(), block()->size};
}

inline std::span<const Value::Entry> Value::entries() const noexcept {
  return const_cast<Value*>(this)->entries();
}

/// Puts the words together from loads of a fixed size, which may overlap: a copy of a size that is
/// known only at run time costs more than all the rest.
inline void Value::setShortText(std::string_view text) noexcept {
  const std::size_t size = text.size();
  const std::uint64_t last = tagWord(tagShortText | size << 4U);
  if constexpr (std::endian::native != std::endian::little) {
    setWords(0, last);
    if (size > 0) std::memcpy(words_, text.data(), size);
    return;
  }
  const auto load = [&](auto word, std::size_t at) {
    std::memcpy(&word, text.data() + at, sizeof word);
    return std::uint64_t{word};
  };
  if (size >= 8) {
    setWords(load(std::uint64_t{}, 0),
             load(std::uint64_t{}, size - 8) >> 8 * (15 - size) >> 8 | last);
  } else if (size >= 4) {
    setWords(load(std::uint32_t{}, 0) | load(std::uint32_t{}, size - 4) << 8 * (size - 4), last);
  } else if (size >= 1) {
    const std::size_t middle = size / 2;
    setWords(load(std::uint8_t{}, 0) | load(std::uint8_t{}, middle) << 8 * middle |
                 load(std::uint8_t{}, size - 1) << 8 * (size - 1),
             last);
  } else {
    setWords(0, last);
  }
}

}  // namespace tern
