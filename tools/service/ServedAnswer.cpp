#include "tools/service/ServedAnswer.hpp"

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::service {

ServedAnswer errorAnswer(int status, std::string_view message) {
  return {status, encodeJson(Value::map({{"statusCode", status}, {"message", message}}),
                             JsonLayout::compact)};
}

}  // namespace tern::service
