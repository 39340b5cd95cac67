// Archives as they come. What is unpacked is bounded by the archive's size, no name leads out of a
// folder, and what holds a feed, a network or IMDF is read as one.
#include <zip.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "fuzz/ImportChecks.hpp"
#include "fuzz/SeedFeed.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/import/gtfs/GtfsFeed.hpp"
#include "tools/import/imdf/ImdfFiles.hpp"
#include "tools/import/network/NetworkFiles.hpp"

namespace tern::fuzz {
namespace {

using imports::SourceFiles;
using Entries = std::vector<std::pair<std::string, std::string>>;

bool staysWithin(const std::string& name) {
  const std::string whole = (std::filesystem::path("/folder") / name).lexically_normal().string();
  return whole.starts_with("/folder/") && name.find_first_of("\\:") == std::string::npos;
}

void checkNames(const SourceFiles& files, std::size_t archiveBytes) {
  constexpr std::size_t harmlessBytes = std::size_t{1} << 20U;
  std::size_t unpacked = 0;
  for (const std::string& name : files.names()) {
    require(staysWithin(name), "no name leads out of a folder");
    const imports::ReadFile read = files.read(name);
    require(!read.error || read.text.empty(), "there is a text, or an error");
    unpacked += read.text.size();
  }
  require(unpacked <= imports::mostUnpacking * archiveBytes + harmlessBytes,
          "an archive unpacks to so many times its size");
  require(files.read("../source.zip").error.has_value(), "nothing outside is read");
}

void run(const std::string& bytes) {
  const test::TemporaryFolder folder;
  folder.write("source.zip", bytes);
  const imports::OpenedSource opened = imports::openSource(folder.at("source.zip"));
  if (opened.error) {
    require(!opened.error->empty(), "an error says what is wrong");
    return;
  }
  checkNames(opened.files, bytes.size());
  if (imports::GtfsFeed::isIn(opened.files)) checkFeed(opened.files);
  if (imports::NetworkFiles::areIn(opened.files)) checkNetwork(opened.files);
  if (imports::ImdfFiles::areIn(opened.files)) checkImdf(opened.files);
}

// Bytes that are the same on every day.
std::string packed(const Entries& entries, zip_int32_t method) {
  constexpr zip_uint16_t someDay = 0x5A21;
  const test::TemporaryFolder folder;
  zip* const archive = zip_open(folder.at("seed.zip").c_str(), ZIP_CREATE, nullptr);
  for (const auto& [name, text] : entries) {
    zip_source_t* const source = zip_source_buffer(archive, text.data(), text.size(), 0);
    const auto index =
        static_cast<zip_uint64_t>(zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8));
    zip_set_file_compression(archive, index, method, 0);
    zip_file_set_dostime(archive, index, 0, someDay, 0);
  }
  require(zip_close(archive) == 0, "a seed is written");
  return folder.read("seed.zip");
}

std::vector<std::string> seeds() {
  const auto files = seedFeed();
  Entries feed;
  for (std::size_t i = 0; i < files.size(); ++i) {
    feed.emplace_back("feed/" + std::string(feedFiles[i]), files[i]);
  }
  const Entries outward{{"../up", "x"}, {"a/../../b", "y"}, {"/c", "z"}, {"d", "w"}};
  const Entries bomb{{"bomb", std::string(std::size_t{3} << 20U, '0')}};
  return {packed(feed, ZIP_CM_STORE), packed(feed, ZIP_CM_DEFLATE), packed(outward, ZIP_CM_STORE),
          packed(bomb, ZIP_CM_DEFLATE)};
}

}  // namespace

extern const Target importArchiveTarget{
    .name = "import-archive", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
