// Transit feeds: their files one behind the other, with a form feed between.
#include "fuzz/ImportChecks.hpp"
#include "fuzz/SeedFeed.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::fuzz {
namespace {

constexpr char between = '\f';

void run(const std::string& text) {
  const test::TemporaryFolder folder;
  std::string_view rest = text;
  for (const std::string_view file : feedFiles) {
    const std::size_t end = std::min(rest.find(between), rest.size());
    if (end > 0) folder.write(file, rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  const imports::OpenedSource opened = imports::openSource(folder.path());
  require(!opened.error, "a folder is a source");
  checkFeed(opened.files);
}

std::vector<std::string> seeds() {
  std::string whole;
  for (const std::string& file : seedFeed()) whole += (whole.empty() ? "" : "\f") + file;
  const std::array<std::string, feedFiles.size()> files = seedFeed();
  return {whole, files[0] + between + files[1]};
}

}  // namespace

extern const Target importFeedTarget{
    .name = "import-feed", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
