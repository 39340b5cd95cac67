#include "tools/import/Import.hpp"

#include <utility>
#include <vector>

#include "tools/import/network/NetworkFiles.hpp"
#include "tools/import/network/NetworkReader.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

namespace {

Imported failed(bool isOfSource, std::string sentence) {
  return {{}, ImportFailure{isOfSource, std::move(sentence)}};
}

}  // namespace

Imported importSource(const std::filesystem::path& source, const std::filesystem::path& out,
                      const ImportWishes& wishes) {
  if (!wishes.format.empty() && wishes.format != "network") {
    return failed(true, "the format " + wishes.format + " cannot be read yet");
  }
  const OpenedSource opened = openSource(source);
  if (opened.error) return failed(true, *opened.error);
  if (wishes.format.empty() && !NetworkFiles::areIn(opened.files)) {
    return failed(true, source.string() +
                            " holds no building data that is known: no nodes and links as GeoJSON");
  }
  ReadDraft read = readNetwork(opened.files);
  if (read.error) return failed(true, source.string() + ": " + *read.error);
  const std::vector<Draft> drafts{std::move(read.draft)};
  WrittenVenues written = writeVenues(drafts, wishes.venue, out);
  if (written.error) return failed(false, *written.error);
  return {std::move(written), std::nullopt};
}

}  // namespace tern::imports
