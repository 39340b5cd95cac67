#include "TernCoreKit/service/TernCoreUtils.hpp"

#include <cmath>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::inline v5 {
namespace {

std::string failure(std::string_view reason) {
  return "Error parsing JSON: " + std::string(reason);
}

// Why a value cannot be written, when it lies within so many lists and maps; empty when it can.
std::string_view writingFault(const Value& value, int depth) {
  if (value.isNumber() && !std::isfinite(value.number())) return "A number is not finite.";
  if (depth == maximumJsonDepth && (value.isList() || value.isMap())) {
    return "Lists and maps nest too deeply.";
  }
  for (const Value& item : value.items()) {
    if (const auto fault = writingFault(item, depth + 1); !fault.empty()) return fault;
  }
  for (const Value::Entry& entry : value.entries()) {
    if (const auto fault = writingFault(entry.value, depth + 1); !fault.empty()) return fault;
  }
  return {};
}

}  // namespace

void TernCoreUtils::parseJSONWithData(
    std::string data, const std::function<void(std::optional<std::string>, Value)>& completion) {
  JsonResult result = decodeJson(std::move(data));
  if (result.error.has_value()) {
    completion(failure(*result.error), {});
  } else {
    completion(std::nullopt, std::move(result.value));
  }
}

void TernCoreUtils::createJSONWithData(
    const Value& object,
    const std::function<void(std::optional<std::string>, std::optional<std::string>)>& completion) {
  const std::string_view fault =
      object.isAbsent() ? "There is nothing to write." : writingFault(object, 0);
  if (fault.empty()) {
    completion(std::nullopt, encodeJson(object, JsonLayout::rows));
  } else {
    completion(failure(fault), std::nullopt);
  }
}

}  // namespace tern
