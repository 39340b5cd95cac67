// OpenStreetMap files in protocol buffers, as they come: what they unpack to is bounded, and what
// of them is read is imported.
#include <string>
#include <vector>

#include "fuzz/ImportChecks.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/osm/WrittenPbf.hpp"
#include "tools/import/osm/OsmFile.hpp"

namespace tern::fuzz {
namespace {

using test::pbfBlob;
using test::pbfBlock;
using test::pbfHeader;

constexpr std::size_t fewBytes = std::size_t{4} << 20U;

void run(const std::string& bytes) {
  const auto read = imports::readOsmFile(bytes, imports::OsmEncoding::pbf, fewBytes);
  require(!read.error || !read.error->empty(), "an error says what is wrong");
  require(read.data.nodes.size() + read.data.ways.size() <= fewBytes / 100,
          "no more is read than was allowed");
  if (read.error) return;
  const test::TemporaryFolder folder;
  folder.write("site.osm.pbf", bytes);
  checkOsm(imports::openSource(folder.at("site.osm.pbf")).files);
}

std::vector<std::string> seeds() {
  const std::vector<std::string> texts{"", "highway", "footway", "level", "0"};
  const std::string block = pbfBlock(texts, 5, {1, 2, 3, 4});
  const std::string bomb = pbfBlock({"", std::string(1'000, 'x')}, 9'000, {1, 1, 1, 1});
  return {pbfHeader() + pbfBlob({.data = block, .isPacked = false}),
          pbfHeader() + pbfBlob({.data = block}), pbfHeader() + pbfBlob({.data = bomb}),
          pbfHeader() + pbfBlob({.data = block, .statedBytes = 1 << 30})};
}

}  // namespace

extern const Target importPbfTarget{
    .name = "import-pbf", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
