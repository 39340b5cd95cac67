// Feeds the JSON reader with whatever libFuzzer thinks of. What is decoded must come back the same
// from either layout; what is not must say why.
//
//   json_fuzz -max_len=4096 CORPUS_FOLDER
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "TernCoreKit/platform/Json.hpp"

namespace {

void require(bool promise) {
  if (!promise) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const tern::JsonResult result = tern::decodeJson(text);
  if (result.error) {
    require(!result.error->empty() && result.value.isAbsent());
    return 0;
  }
  for (const auto layout :
       {tern::JsonLayout::compact, tern::JsonLayout::pretty, tern::JsonLayout::rows}) {
    const std::string encoded = tern::encodeJson(result.value, layout);
    const tern::JsonResult again = tern::decodeJson(encoded);
    require(!again.error && again.value == result.value);
    require(tern::encodeJson(again.value, layout) == encoded);
  }
  return 0;
}
