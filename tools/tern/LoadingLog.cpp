#include "tools/tern/LoadingLog.hpp"

#include <string>
#include <string_view>

#include "TernCoreKit/platform/Log.hpp"
#include "tools/service/Exhaustion.hpp"
#include "tools/tern/Output.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

void writeLine(int descriptor, std::string line) { Output(descriptor).write(line.append("\n")); }

}  // namespace

LoadingLog::LoadingLog(int descriptor) : descriptor_(descriptor) {
  setLogSink([descriptor, lines = lines_](std::string_view line) {
    if (lines->fetch_add(1) < linesShown) writeLine(descriptor, onOneLine(line));
  });
}

LoadingLog::~LoadingLog() {
  // Where there is no memory for another sink, this one goes on: it shares what it counts with.
  service::hasEnough([] { setLogSink([](std::string_view) {}); });
  const int more = *lines_ - linesShown;
  service::hasEnough([&] {
    if (more > 0) writeLine(descriptor_, "and " + std::to_string(more) + " more such lines");
  });
}

}  // namespace tern::command
