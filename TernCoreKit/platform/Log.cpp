#include "TernCoreKit/platform/Log.hpp"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"

namespace tern::inline v5 {
namespace {

void writeToStandardError(std::string_view line) {
  // One call, so that lines of several threads do not mix.
  const std::string text = std::string(line) + '\n';
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace

void setLogSink(LogSink sink) {
  detail::current<const LogSink>().set(sink ? std::make_shared<const LogSink>(std::move(sink))
                                            : nullptr);
}

void logLine(std::string_view line) {
  if (const auto sink = detail::current<const LogSink>().get()) {
    (*sink)(line);
  } else {
    writeToStandardError(line);
  }
}

void logSdk(std::string_view text) { logLine("Tern SDK: " + std::string(text)); }

}  // namespace tern
