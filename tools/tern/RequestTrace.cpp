#include "tools/tern/RequestTrace.hpp"

#include <string_view>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/Output.hpp"

namespace tern::command {

RequestTrace::RequestTrace(int descriptor)
    : observer_(addObserver([descriptor](std::string_view name, const Value& payload) {
        Output(descriptor).write(jsonLine(Value::map({{"event", name}, {"payload", payload}})));
      })) {}

}  // namespace tern::command
