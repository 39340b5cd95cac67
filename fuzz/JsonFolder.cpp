#include "fuzz/JsonFolder.hpp"

#include <filesystem>

#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/Target.hpp"

namespace tern::fuzz {

void checkFolderOf(const std::string& input, FileNames names,
                   void (*check)(const imports::SourceFiles&)) {
  const JsonResult read = decodeJson(input);
  if (read.error) return;
  const test::TemporaryFolder folder;
  for (const std::string_view name : names) {
    const Value& file = read.value[name];
    if (file.isAbsent() || file.isNull()) continue;
    folder.write(name,
                 file.isText() ? std::string(file.text()) : encodeJson(file, JsonLayout::compact));
  }
  const imports::OpenedSource opened = imports::openSource(folder.path());
  require(!opened.error, "a folder is a source");
  check(opened.files);
}

std::string inputOf(const test::TemporaryFolder& folder, FileNames names) {
  Value input = Value::map();
  for (const std::string_view name : names) {
    if (!std::filesystem::exists(folder.at(name))) continue;
    const JsonResult file = decodeJson(folder.read(name));
    require(!file.error, "a seed's file is JSON");
    input.set(name, file.value);
  }
  return encodeJson(input, JsonLayout::compact);
}

}  // namespace tern::fuzz
