#include "tools/import/source/ZipArchive.hpp"

#include <zip.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

namespace {

namespace fs = std::filesystem;

// Up to this a small archive may unpack to any multiple of its size.
constexpr std::size_t harmlessBytes = std::size_t{1} << 20U;
constexpr std::size_t unpackedAtOnce = std::size_t{64} << 10U;
// An archive ends with a record of 22 bytes and a comment of up to 64 KiB.
constexpr std::uintmax_t mostTailBytes = (std::size_t{64} << 10U) + 22 + 20;

std::string bytesOf(const fs::path& file, std::uintmax_t from, std::uintmax_t count) {
  std::ifstream stream(file, std::ios::binary);
  stream.seekg(static_cast<std::streamoff>(from));
  std::string bytes(static_cast<std::size_t>(count), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(count));
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  return bytes;
}

std::uint64_t numberAt(std::string_view bytes, std::size_t at, std::size_t count) {
  std::uint64_t number = 0;
  for (std::size_t i = count; i > 0; --i) {
    if (at + i > bytes.size()) return 0;
    number = number << 8U | static_cast<unsigned char>(bytes[at + i - 1]);
  }
  return number;
}

// The largest count of entries that a record at the end of the file tells of. libzip sets up all
// entries before it can be asked how many there are.
std::uint64_t statedEntries(const fs::path& file) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  if (error) return 0;
  const std::uintmax_t tailBytes = std::min(size, mostTailBytes);
  const std::string tail = bytesOf(file, size - tailBytes, tailBytes);
  std::uint64_t most = 0;
  constexpr std::string_view end = "PK\5\6";
  for (std::size_t at = tail.find(end); at != std::string::npos; at = tail.find(end, at + 1)) {
    most = std::max(most, numberAt(tail, at + 10, 2));
  }
  constexpr std::string_view locator = "PK\6\7";
  for (std::size_t at = tail.find(locator); at != std::string::npos;
       at = tail.find(locator, at + 1)) {
    const std::uint64_t from = numberAt(tail, at + 8, 8);
    if (from < size) most = std::max(most, numberAt(bytesOf(file, from, 56), 32, 8));
  }
  return most;
}

bool leadsOut(std::string_view name) {
  if (name.empty() || name.front() == '/' || name.find_first_of("\\:") != std::string_view::npos) {
    return true;
  }
  while (!name.empty()) {
    const std::size_t slash = std::min(name.find('/'), name.size());
    if (name.substr(0, slash) == "..") return true;
    name.remove_prefix(std::min(slash + 1, name.size()));
  }
  return false;
}

std::vector<std::string> namesIn(zip* archive) {
  std::vector<std::string> names;
  const zip_int64_t count = zip_get_num_entries(archive, 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    const char* const name = zip_get_name(archive, static_cast<zip_uint64_t>(i), 0);
    if (name == nullptr || leadsOut(name) || isOfMacOs(name)) continue;
    if (std::string_view(name).ends_with('/')) continue;
    names.emplace_back(name);
  }
  std::ranges::sort(names);
  names.erase(std::ranges::unique(names).begin(), names.end());
  return names;
}

std::string sentenceOf(zip_error_t& error) {
  std::string sentence = zip_error_strerror(&error);
  zip_error_fini(&error);
  return sentence;
}

// Why an archive of so many bytes is not to be opened, by what it says of its entries. Where they
// lie over one another, each may be harmless and all of them together are not.
std::optional<std::string> objectionTo(zip* archive, std::uintmax_t bytes) {
  std::uint64_t packed = bytes;
  std::uint64_t unpacked = bytes * mostUnpacking + harmlessBytes;
  const zip_int64_t count = zip_get_num_entries(archive, 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t entry;
    if (zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &entry) != 0) continue;
    if (entry.comp_size > packed)
      return " is no archive that can be read: its entries are longer than it";
    if (entry.size > unpacked) {
      return " unpacks to more than " + std::to_string(mostUnpacking) + " times its size";
    }
    packed -= entry.comp_size;
    unpacked -= entry.size;
  }
  return std::nullopt;
}

// All that there really is, which is no more than the entry says.
ReadFile unpacked(const std::string& name, zip_file_t* file, std::uint64_t statedBytes) {
  std::string text;
  std::array<char, unpackedAtOnce> chunk;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  zip_int64_t count = 0;
  while ((count = zip_fread(file, chunk.data(), chunk.size())) > 0) {
    text.append(chunk.data(), static_cast<std::size_t>(count));
    if (text.size() > statedBytes) break;
  }
  if (count != 0) return {{}, name + " is damaged"};
  return {std::move(text), std::nullopt};
}

}  // namespace

ZipArchive::~ZipArchive() { zip_discard(archive_); }

ReadFile ZipArchive::read(const std::string& name) const {
  zip_stat_t entry;
  if (!std::ranges::binary_search(names_, name) ||
      zip_stat(archive_, name.c_str(), 0, &entry) != 0) {
    return {{}, name + " is not in the archive"};
  }
  if (entry.encryption_method != ZIP_EM_NONE) return {{}, name + " is encrypted"};
  if (entry.size > mostFileBytes) {
    return {{}, name + " is larger than " + std::to_string(mostFileBytes >> 20U) + " MiB"};
  }
  zip_file_t* const file = zip_fopen_index(archive_, entry.index, 0);
  if (file == nullptr) return {{}, name + " is damaged: " + zip_strerror(archive_)};
  ReadFile read = unpacked(name, file, entry.size);
  if (zip_fclose(file) != 0 && !read.error) return {{}, name + " is damaged"};
  return read;
}

OpenedZip openZip(const fs::path& file) {
  if (statedEntries(file) > mostFiles) {
    return {nullptr, file.string() + " holds more than " + std::to_string(mostFiles) + " files"};
  }
  int code = 0;
  zip* const archive = zip_open(file.c_str(), ZIP_RDONLY, &code);
  if (archive == nullptr) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    return {nullptr, file.string() + " is no archive that can be read: " + sentenceOf(error)};
  }
  auto opened = std::make_shared<const ZipArchive>(archive, namesIn(archive));
  std::error_code gone;
  const std::uintmax_t bytes = fs::file_size(file, gone);
  if (auto objection = objectionTo(archive, gone ? 0 : bytes)) {
    return {nullptr, file.string() + *objection};
  }
  return {std::move(opened), std::nullopt};
}

bool isZip(const fs::path& file) {
  const std::string head = bytesOf(file, 0, 4);
  return file.extension() == ".zip" || file.extension() == ".ZIP" || head == "PK\3\4" ||
         head == "PK\5\6";
}

}  // namespace tern::imports
