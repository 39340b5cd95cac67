// A plugin of somebody else's: one function for its host, and TernCoreKit for its own use.
#include <TernCoreKit/TernCoreKit.hpp>

extern "C" __attribute__((visibility("default"))) long long plugin_floors(const char* document) {
  const tern::JsonResult result = tern::decodeJson(document);
  const auto venue = tern::TernActiveVenue::initWithDictionary(result.value);
  return venue->buildings ? static_cast<long long>(venue->buildings->getAllFloors().size()) : 0;
}
