/// @file
/// The process-wide diagnostic log: one line a call, no levels.
///
/// A host application may put its own sink in place of the default one, which writes each line to
/// standard error. A line never holds a secret or a token.
/// Threads: `logLine` may be called from any thread; the sink is called on that thread, outside
/// every lock of the library, and must itself be safe to call from several at once. `setLogSink`
/// may be called at any time: a line that is being written goes to the old sink or to the new one.
/// Fails: never; a line for which there is no memory is left out.
#pragma once

#include <functional>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Takes one line, which is valid only during the call and has no line break at its end.
using LogSink = std::function<void(std::string_view line)>;

/// Puts a sink in the place of the current one; an empty one brings the default back.
TERN_API void setLogSink(LogSink sink);

/// Hands a line to the sink. Control characters in it, line breaks among them, are written as \\x
/// and two hexadecimal digits.
TERN_API void logLine(std::string_view line);

/// Writes the line behind the library's own prefix, "Tern SDK: ".
TERN_API void logSdk(std::string_view text);

}  // namespace tern
