// The indices of a graph's arrays, each a type of its own, so that one cannot be taken for another.
//
// Threads: any. Fails: never; using an index of the wrong kind does not compile.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

namespace tern::inline v5::detail {

// A node, in the arrays that a search reads. Positions follow the walkways.
enum class Position : std::uint32_t {};
// A waypoint, in the list that it was given in.
enum class WaypointIndex : std::uint32_t {};
// A waypoint, among those that the maps hold.
enum class KnownIndex : std::uint32_t {};
// A path, in the list that it was given in; those between venues come behind them.
enum class PathIndex : std::uint32_t {};
// An edge of a node, among the edges of all nodes.
enum class EdgeIndex : std::uint32_t {};
// A link of a node, among the links of all nodes.
enum class LinkIndex : std::uint32_t {};
// A path type, among those that paths have, by accessibility.
enum class TypeRank : std::uint32_t {};
// What paths of one type and direction share.
enum class RuleIndex : std::uint32_t {};
// A map, among those that waypoints lie on.
enum class MapIndex : std::uint32_t {};
// An id that paths name: below the number of waypoints the first waypoint that has it.
enum class PathEnd : std::uint32_t {};

template <class T>
concept Index = std::is_enum_v<T> && std::same_as<std::underlying_type_t<T>, std::uint32_t>;

template <Index I>
constexpr std::uint32_t numberOf(I index) {
  return static_cast<std::uint32_t>(index);
}

template <Index I>
constexpr I& operator++(I& index) {
  return index = I{numberOf(index) + 1};
}

template <Index I>
inline constexpr I none{std::numeric_limits<std::uint32_t>::max()};
inline constexpr Position noPosition = none<Position>;

// A vector whose elements are found by one kind of index.
template <Index I, class T>
class Indexed : private std::vector<T> {
  using Base = std::vector<T>;

 public:
  using Base::back;
  using Base::Base;
  using Base::begin;
  using Base::capacity;
  using Base::data;
  using Base::empty;
  using Base::end;
  using Base::push_back;
  using Base::reserve;
  using Base::resize;
  using Base::shrink_to_fit;
  using Base::size;

  T& operator[](I index) { return Base::operator[](numberOf(index)); }
  const T& operator[](I index) const { return Base::operator[](numberOf(index)); }
  // The index that the next element gets.
  I endIndex() const { return I{static_cast<std::uint32_t>(size())}; }
};

}  // namespace tern::detail
