// Reads a small document and a few facts of it through the installed library.
#include <TernCoreKit/TernCoreKit.hpp>
#include <cstdio>

int main() {
  const tern::JsonResult result = tern::decodeJson(R"({"floors":3})");
  if (result.error || result.value.find("floors") == nullptr ||
      result.value.find("floors")->integer() != 3) {
    std::puts("The document was not read");
    return 1;
  }
  std::puts("The document was read");
}
