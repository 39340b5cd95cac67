#include "TernCoreKit/model/detail/FieldTable.hpp"

#include <string>

#include "TernCoreKit/platform/Log.hpp"

namespace tern::inline v5::detail {

void logUnknownKey(std::string_view key, std::string_view kind) {
  std::string line = "unknown key \"";
  line.append(key).append("\" in ").append(kind);
  logSdk(line);
}

void logWrongKind(std::string_view what, std::string_view kind, std::string_view wanted) {
  std::string line(what);
  line.append(" of ").append(kind).append(" is not ").append(wanted);
  logSdk(line);
}

}  // namespace tern::detail
