#include "TernCoreKit/platform/Log.hpp"

#include <algorithm>
#include <cstddef>
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

// How many of the first bytes are a control character: those of ASCII, and in UTF-8 those of ISO
// 8859, among which terminals have line breaks and escapes too.
std::size_t controlBytes(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
  const bool isLate = text.size() > 1 && byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0;
  return isLate ? 2 : 0;
}

// Keys and texts of services come with what they like: a line break in one would forge a line, an
// escape sequence would steer the terminal.
std::string withoutControls(std::string_view line) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string safe;
  while (!line.empty()) {
    const std::size_t controls = controlBytes(line);
    for (const char c : line.substr(0, controls)) {
      const auto byte = static_cast<unsigned char>(c);
      safe += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
    }
    if (controls == 0) safe += line.front();
    line.remove_prefix(std::max<std::size_t>(controls, 1));
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
  detail::attempt([&] { writeLine(withoutControls(line)); });
}

void logSdk(std::string_view text) {
  detail::attempt([&] { logLine("Tern SDK: " + std::string(text)); });
}

}  // namespace tern
