// A list of numbers that are mostly small: in one, two or four bytes each, as the largest needs.
//
// Ownership: owns its numbers. Threads: as a standard container. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace tern::inline v5::detail {

class PackedNumbers {
 public:
  void reserve(std::size_t count) { bytes_.reserve(count * width_); }
  std::size_t size() const { return bytes_.size() / width_; }

  void push_back(std::uint32_t number) {
    while (width_ < sizeof number && number >> 8 * width_ != 0) widen();
    bytes_.resize(bytes_.size() + width_);
    write(size() - 1, number);
  }

  std::uint32_t operator[](std::size_t at) const {
    switch (width_) {
      case 1:
        return bytes_[at];
      case 2:
        return read<std::uint16_t>(at);
      default:
        return read<std::uint32_t>(at);
    }
  }

 private:
  template <class Number>
  Number read(std::size_t at) const {
    Number number;
    std::memcpy(&number, &bytes_[at * sizeof number], sizeof number);
    return number;
  }
  void write(std::size_t at, std::uint32_t number) {
    const auto small = static_cast<std::uint8_t>(number);
    const auto middle = static_cast<std::uint16_t>(number);
    const void* from = width_ == 1   ? &small
                       : width_ == 2 ? static_cast<const void*>(&middle)
                                     : &number;
    std::memcpy(&bytes_[at * width_], from, width_);
  }
  void widen() {
    PackedNumbers wide;
    wide.width_ = width_ * 2;
    wide.bytes_.reserve(bytes_.capacity() * 2);
    for (std::size_t i = 0; i < size(); ++i) wide.push_back((*this)[i]);
    *this = std::move(wide);
  }

  std::size_t width_ = 1;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace tern::detail
