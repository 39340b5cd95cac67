#include "TernCoreKit/spatial/tree/KDTreeArchive.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::inline v5 {

namespace {

constexpr std::int64_t formatVersion = 1;

// FNV-1a of the text that the nodes are saved as.
std::int64_t checksumOf(const Value& nodes) {
  std::uint64_t sum = 0xcbf29ce484222325U;
  for (const char byte : encodeJson(nodes, JsonLayout::compact)) {
    sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  }
  return std::bit_cast<std::int64_t>(sum);
}

// Whether a node says its axis and where its right subtree begins as it was written: a fraction or
// a number that 32 bits cannot hold would read as another.
bool isNode(const Value& node) {
  const auto isIndex = [](const Value& value) {
    return value.isInteger() && value.integer() >= 0 &&
           value.integer() <= std::numeric_limits<std::uint32_t>::max();
  };
  const auto fields = node.items();
  return fields.size() == 3 && isIndex(fields[0]) && isIndex(fields[1]);
}

}  // namespace

Value KDTreeArchive::seal(Value nodes, std::size_t dimensions) {
  const std::int64_t checksum = checksumOf(nodes);
  return Value::map({{"kdTree", formatVersion},
                     {"dimensions", static_cast<std::int64_t>(dimensions)},
                     {"checksum", checksum},
                     {"nodes", std::move(nodes)}});
}

KDTreeArchive KDTreeArchive::open(const Value& sealed, std::size_t dimensions) {
  if (!sealed["kdTree"].isInteger()) return damaged("not a k-d tree");
  if (sealed["kdTree"].integer() != formatVersion) return damaged("of an unknown version");
  if (sealed["dimensions"] != Value(static_cast<std::int64_t>(dimensions))) {
    return damaged("of another number of dimensions");
  }
  const Value& nodes = sealed["nodes"];
  if (!nodes.isList()) return damaged("without its nodes");
  if (sealed["checksum"] != Value(checksumOf(nodes))) return damaged("not as it was saved");
  if (!std::ranges::all_of(nodes.items(), isNode)) return damaged("a bad node");
  return {nodes, std::nullopt};
}

KDTreeArchive KDTreeArchive::damaged(std::string what) {
  return {Value(), TernError::initWithErrorType(TernErrorTypeIncorrectJSON,
                                                "k-d tree cannot be read: " + std::move(what))};
}

std::optional<TernError> KDTreeArchive::save(const Value& sealed, const std::string& path) {
  const auto files = fileSystem();
  const auto folderEnd = path.rfind('/');
  auto failed = files->createFolders(
      std::string_view(path).substr(0, folderEnd == std::string::npos ? 0 : folderEnd));
  if (!failed) failed = files->createFile(path, encodeJson(sealed, JsonLayout::compact));
  if (!failed) return std::nullopt;
  return TernError::initWithErrorType(TernErrorTypeUndefined,
                                      "k-d tree cannot be saved: " + failed->text);
}

KDTreeArchive KDTreeArchive::load(const std::string& path, std::size_t dimensions) {
  auto text = fileSystem()->readFile(path);
  if (!text) {
    return {Value(), TernError::initWithErrorType(TernErrorTypeObjectNotFound,
                                                  "k-d tree cannot be read: no such file")};
  }
  const JsonResult decoded = decodeJson(std::move(*text));
  return decoded.error ? damaged(*decoded.error) : open(decoded.value, dimensions);
}

}  // namespace tern
