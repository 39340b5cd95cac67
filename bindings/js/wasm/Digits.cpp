// Takes the place of a part of libc++ 16: how std::to_chars writes a number with so many decimals.
// That one looks up 105 kB of tables, a third of what a page would have to fetch; this one counts,
// and gives the same digits.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace {

// A whole number below 2^1152, from its lowest 32 bits up: any double, and ten times any fraction
// of one.
class Whole {
 public:
  Whole(std::uint64_t number, unsigned doubled) {
    for (unsigned bit = 0; bit < 64; ++bit) {
      if ((number >> bit & 1U) != 0) set(bit + doubled);
    }
  }

  bool has(unsigned bit) const { return (words_[bit / 32] >> bit % 32 & 1U) != 0; }
  bool isZero() const {
    return std::all_of(words_, words_ + count, [](std::uint32_t word) { return word == 0; });
  }

  // Leaves the quotient and gives the remainder.
  std::uint32_t divide(std::uint32_t by) {
    std::uint64_t rest = 0;
    for (unsigned i = count; i-- > 0;) {
      rest = rest << 32U | words_[i];
      words_[i] = static_cast<std::uint32_t>(rest / by);
      rest %= by;
    }
    return static_cast<std::uint32_t>(rest);
  }
  void multiply(std::uint32_t by) {
    std::uint64_t carry = 0;
    for (std::uint32_t& word : words_) {
      carry += std::uint64_t{word} * by;
      word = static_cast<std::uint32_t>(carry);
      carry >>= 32U;
    }
  }
  // Leaves what is below 2^bit and gives the rest, which is below 16.
  unsigned cut(unsigned bit) {
    unsigned high = 0;
    for (unsigned i = 0; i < 4; ++i) {
      if (!has(bit + i)) continue;
      high |= 1U << i;
      words_[(bit + i) / 32] &= ~(1U << (bit + i) % 32);
    }
    return high;
  }

 private:
  static constexpr unsigned count = 36;

  void set(unsigned bit) { words_[bit / 32] |= 1U << bit % 32; }

  std::uint32_t words_[count] = {};
};

// Digits in a buffer that may end.
struct Writer {
  void put(char c) {
    if (at != end) {
      *at++ = c;
    } else {
      isFull = true;
    }
  }

  char* at;
  char* end;
  bool isFull = false;
};

void writeWhole(Writer& out, Whole number) {
  char digits[320];
  char* first = digits + sizeof digits;
  do {
    *--first = static_cast<char>('0' + number.divide(10));
  } while (!number.isZero());
  while (first != digits + sizeof digits) out.put(*first++);
}

// The next number of those digits; true when it has a digit more, a 1 before these.
bool increase(char* first, char* last) {
  while (last != first) {
    --last;
    if (*last == '.') continue;
    if (*last != '9') {
      ++*last;
      return false;
    }
    *last = '0';
  }
  return true;
}

}  // namespace

namespace std {
inline namespace __2 {

to_chars_result __d2fixed_buffered_n(char* first, char* last, double value, uint32_t decimals) {
  int exponent = 0;
  const auto digits = static_cast<uint64_t>(ldexp(frexp(value, &exponent), 53));
  exponent -= 53;
  Writer out{first, last};
  // The value is `digits` doubled or halved so many times.
  const unsigned halved = exponent < 0 ? static_cast<unsigned>(-exponent) : 0;
  writeWhole(out, exponent < 0 ? Whole(halved < 64 ? digits >> halved : 0, 0)
                               : Whole(digits, static_cast<unsigned>(exponent)));
  Whole fraction(halved == 0 ? 0 : halved < 64 ? digits & ((1ULL << halved) - 1) : digits, 0);
  if (decimals > 0) out.put('.');
  for (uint32_t i = 0; i < decimals; ++i) {
    fraction.multiply(10);
    out.put(static_cast<char>('0' + (halved > 0 ? fraction.cut(halved) : 0)));
  }
  if (out.isFull) return {last, errc::value_too_large};
  // To the nearest, and of two that are equally near to the even one.
  if (halved == 0 || !fraction.has(halved - 1)) return {out.at, errc()};
  fraction.multiply(2);
  fraction.cut(halved);
  const bool isEven = (out.at[-1] - '0') % 2 == 0;
  if ((isEven && fraction.isZero()) || !increase(first, out.at)) return {out.at, errc()};
  if (out.at == last) return {last, errc::value_too_large};
  copy_backward(first, out.at, out.at + 1);
  *first = '1';
  return {out.at + 1, errc()};
}

// What the rest of libc++ calls of that part for what nobody here asks for: exponents with so many
// decimals, and numbers of single precision.
to_chars_result __d2exp_buffered_n(char*, char*, double, uint32_t) { __builtin_trap(); }
void __append_n_digits(uint32_t, uint32_t, char*) { __builtin_trap(); }
void __append_nine_digits(uint32_t, char*) { __builtin_trap(); }

}  // namespace __2
}  // namespace std
