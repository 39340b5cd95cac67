#include "TernCoreKit/platform/Log.hpp"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5 {
namespace {

void writeToStandardError(std::string_view line) {
  // One call, so that lines of several threads do not mix.
  const std::string text = std::string(line) + '\n';
  std::fwrite(text.data(), 1, text.size(), stderr);
}

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

// Keys and texts of services come with what they like: a line break in one would forge a line, an
// escape sequence would steer the terminal.
std::string withoutControls(std::string_view line) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string safe;
  for (const char c : line) {
    if (!isControl(c)) {
      safe += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    safe += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
  }
  return safe;
}

void writeLine(std::string_view line) {
  if (const auto sink = detail::current<const LogSink>().get()) {
    (*sink)(line);
  } else {
    writeToStandardError(line);
  }
}

}  // namespace

void setLogSink(LogSink sink) {
  detail::current<const LogSink>().set(sink ? std::make_shared<const LogSink>(std::move(sink))
                                            : nullptr);
}

void logLine(std::string_view line) {
  const bool isSafe = std::ranges::none_of(line, isControl);
  detail::attempt([&] { writeLine(isSafe ? line : withoutControls(line)); });
}

void logSdk(std::string_view text) {
  detail::attempt([&] { logLine("Tern SDK: " + std::string(text)); });
}

}  // namespace tern
