#include "TernCoreKit/platform/Value.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::inline v5 {
namespace {

// Values and entries hold no pointer into themselves, so their bytes may be carried elsewhere; the
// old place then reads as absent. Most containers are small: a loop of moves of a known size is
// quicker than two calls.
template <class Element>
void relocate(Element* to, void* from, std::size_t count) {
  auto* source = static_cast<unsigned char*>(from);
  for (std::size_t i = 0; i < count; ++i, source += sizeof(Element)) {
    std::memcpy(static_cast<void*>(to + i), source, sizeof(Element));
    std::memset(source, 0, sizeof(Element));
  }
}

const Value absentValue;

}  // namespace

// What makes blocks; no block at all for no elements: empty lists are frequent.
struct Value::Blocks {
  template <class Element>
  static Block* make(std::size_t capacity) {
    if (capacity == 0) return nullptr;
    if (capacity > std::numeric_limits<std::uint32_t>::max())
      throw std::length_error("tern::Value");
    auto* block = static_cast<Block*>(std::malloc(sizeof(Block) + capacity * sizeof(Element)));
    if (block == nullptr) throw std::bad_alloc();
    block->size = 0;
    block->capacity = static_cast<std::uint32_t>(capacity);
    return block;
  }

  template <class Element>
  static Block* adopt(void* elements, std::size_t count) {
    Block* block = make<Element>(count);
    if (block == nullptr) return nullptr;
    relocate(block->elements<Element>(), elements, count);
    block->size = block->capacity;
    return block;
  }
};

Value::Value(unsigned char tag, Block* block) noexcept { setBlock(tag, block); }

void Value::setBlock(unsigned char tag, Block* block) noexcept {
  setWords(reinterpret_cast<std::uintptr_t>(block), tagWord(tag));
}

void Value::setLongText(std::string_view text) {
  Block* block = Blocks::make<char>(text.size());
  std::memcpy(block->elements<char>(), text.data(), text.size());
  block->size = block->capacity;
  setBlock(tagLongText, block);
}

Value Value::list(std::initializer_list<Value> items) {
  std::vector<Value> copies(items);
  return listOf(copies);
}

Value Value::map(std::initializer_list<Entry> entries) {
  Value result = mapOf({});
  for (const Entry& entry : entries) result.set(entry.key.text(), entry.value);
  return result;
}

// The result may be made in the place of one of the values, so it comes last.
Value Value::listOf(std::span<Value> items) {
  return {tagList, Blocks::adopt<Value>(items.data(), items.size())};
}

Value Value::mapOf(std::span<Value> keysAndValues) {
  return {tagMap, Blocks::adopt<Entry>(keysAndValues.data(), keysAndValues.size() / 2)};
}

void Value::copyBlock(const Value& other) {
  // Releases what is copied already when memory runs out half-way.
  Value copy;
  if (other.isText()) copy.setLongText(other.text());
  if (other.isList()) copy.copyElements(tagList, other.items());
  if (other.isMap()) copy.copyElements(tagMap, other.entries());
  std::swap(words_, copy.words_);
}

template <class Element>
void Value::copyElements(unsigned char tag, std::span<const Element> elements) {
  Block* block = Blocks::make<Element>(elements.size());
  setBlock(tag, block);
  for (const Element& element : elements) {
    new (block->elements<Element>() + block->size) Element(element);
    ++block->size;
  }
}

void Value::release() noexcept {
  Block* owned = block();
  if (owned == nullptr) return;
  if (isList()) std::destroy_n(owned->elements<Value>(), owned->size);
  if (isMap()) std::destroy_n(owned->elements<Entry>(), owned->size);
  std::free(owned);
}

Value::Kind Value::kind() const noexcept {
  switch (tag()) {
    case tagNull:
      return Kind::null;
    case tagBoolean:
      return Kind::boolean;
    case tagInteger:
      return Kind::integer;
    case tagNumber:
      return Kind::number;
    case tagShortText:
    case tagLongText:
      return Kind::text;
    case tagList:
      return Kind::list;
    case tagMap:
      return Kind::map;
    default:
      return Kind::absent;
  }
}

std::int64_t Value::cutToInteger() const noexcept {
  if (tag() == tagBoolean) return static_cast<std::int64_t>(words_[0]);
  if (tag() != tagNumber) return 0;
  const double wide = number();
  constexpr double limit = 9223372036854775808.0;
  if (wide >= limit) return std::numeric_limits<std::int64_t>::max();
  if (wide < -limit) return std::numeric_limits<std::int64_t>::min();
  return wide != wide ? 0 : static_cast<std::int64_t>(wide);
}

bool Value::flag() const noexcept { return number() != 0; }

std::string_view Value::text() const noexcept {
  if (tag() == tagShortText) {
    return {reinterpret_cast<const char*>(words_), static_cast<std::size_t>(bytes()[tagAt] >> 4U)};
  }
  if (tag() == tagLongText) return {block()->elements<char>(), block()->size};
  return {};
}

std::string Value::printed() const {
  char digits[32];
  switch (kind()) {
    case Kind::null:
      return "<null>";
    case Kind::boolean:
      return flag() ? "1" : "0";
    case Kind::integer:
      return {digits, std::to_chars(digits, digits + sizeof digits, integer()).ptr};
    case Kind::number:
      if (const auto whole = wholeNumber(number())) return Value(*whole).printed();
      return {digits, std::to_chars(digits, digits + sizeof digits, number()).ptr};
    default:
      return std::string(text());
  }
}

const Value* Value::find(std::string_view key) const noexcept {
  for (const Entry& entry : entries()) {
    if (entry.key.text() == key) return &entry.value;
  }
  return nullptr;
}

Value* Value::find(std::string_view key) noexcept {
  return const_cast<Value*>(static_cast<const Value*>(this)->find(key));
}

const Value& Value::operator[](std::string_view key) const noexcept {
  const Value* found = find(key);
  return found != nullptr ? *found : absentValue;
}

template <class Element>
Element* Value::roomForOneMore(unsigned char tag) {
  if (this->tag() != tag) {
    Value fresh;
    fresh.setBlock(tag, nullptr);
    *this = std::move(fresh);
  }
  Block* old = block();
  const std::size_t size = this->size();
  if (old == nullptr || size == old->capacity) {
    Block* grown = Blocks::make<Element>(std::max<std::size_t>(4, size * 2));
    if (old != nullptr) relocate(grown->elements<Element>(), old->elements<Element>(), size);
    grown->size = static_cast<std::uint32_t>(size);
    std::free(old);
    setBlock(tag, grown);
  }
  return block()->elements<Element>() + size;
}

void Value::append(Value item) {
  new (roomForOneMore<Value>(tagList)) Value(std::move(item));
  ++block()->size;
}

void Value::set(std::string_view key, Value value) {
  if (Value* found = find(key)) {
    *found = std::move(value);
    return;
  }
  Value keyText(key);
  new (roomForOneMore<Entry>(tagMap)) Entry{std::move(keyText), std::move(value)};
  ++block()->size;
}

bool operator==(const Value& a, const Value& b) noexcept {
  if (a.isInteger() && b.isInteger()) return a.integer() == b.integer();
  // Exact, where the nearest double of the integer may be another number.
  if (a.isInteger() && b.isNumber()) return wholeNumber(b.number()) == a.integer();
  if (a.isNumber() && b.isInteger()) return wholeNumber(a.number()) == b.integer();
  if (a.isNumber() && b.isNumber()) return a.number() == b.number();
  if (a.kind() != b.kind()) return false;
  switch (a.kind()) {
    case Value::Kind::boolean:
      return a.flag() == b.flag();
    case Value::Kind::text:
      return a.text() == b.text();
    case Value::Kind::list:
      return std::ranges::equal(a.items(), b.items());
    case Value::Kind::map:
      return std::ranges::equal(a.entries(), b.entries(), [](const auto& x, const auto& y) {
        return x.key == y.key && x.value == y.value;
      });
    default:
      return true;
  }
}

}  // namespace tern
