#include "tools/import/write/FolderSwap.hpp"

#include <fcntl.h>
#include <stdio.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <system_error>
#include <utility>

namespace tern::imports {

namespace fs = std::filesystem;

namespace {

// Longer than it takes to write the largest import.
constexpr std::chrono::minutes patience(1);

std::string problem(const std::string& what, const fs::path& path, const std::error_code& error) {
  return what + " " + path.string() + ": " + error.message();
}

// Follows links, so that what a link leads to is replaced and not the link.
fs::path resolved(const fs::path& folder) {
  std::error_code error;
  const fs::path absolute = fs::absolute(folder, error);
  fs::path whole = fs::weakly_canonical(absolute, error);
  if (error) whole = absolute;
  return whole.has_filename() ? whole : whole.parent_path();
}

// A name beside the folder that nobody gives a folder of his own.
fs::path besideOf(const fs::path& folder, const char* ending) {
  return folder.parent_path() / ("." + folder.filename().string() + ending);
}

bool isPartOfVenueFolder(const fs::path& name) {
  constexpr std::array known{"full.json", "locale", "venue", "map-template"};
  for (const char* part : known) {
    if (name == part) return true;
  }
  return false;
}

// Whether there is a venue folder and nothing else.
bool isVenueFolder(const fs::path& folder) {
  std::error_code error;
  if (!fs::is_regular_file(folder / "full.json", error)) return false;
  if (!fs::is_directory(folder / "venue", error)) return false;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (!isPartOfVenueFolder(entry->path().filename())) return false;
  }
  return !error;
}

std::optional<std::string> objectionTo(const fs::path& folder) {
  std::error_code error;
  const fs::file_status status = fs::status(folder, error);
  if (status.type() == fs::file_type::not_found) return std::nullopt;
  if (error) return problem("cannot reach", folder, error);
  if (!fs::is_directory(status)) return folder.string() + " is no folder";
  const bool isEmpty = fs::is_empty(folder, error);
  if (error) return problem("cannot read", folder, error);
  if (isEmpty || isVenueFolder(folder)) return std::nullopt;
  return folder.string() + " holds other things than a venue folder; name a new or an empty one";
}

// False where the system cannot, or where there is nothing to exchange with.
bool exchangeInOneStep([[maybe_unused]] const fs::path& a, [[maybe_unused]] const fs::path& b) {
#ifdef RENAME_EXCHANGE
  return renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0;
#else
  return false;
#endif
}

}  // namespace

FolderSwap::FolderSwap(const fs::path& folder)
    : folder_(resolved(folder)),
      beside_(besideOf(folder_, ".importing")),
      before_(besideOf(folder_, ".replaced")) {}

FolderSwap::~FolderSwap() {
  std::error_code ignored;
  fs::remove_all(beside_, ignored);
}

FolderSwap::Problem FolderSwap::begin() {
  std::error_code error;
  fs::create_directories(folder_.parent_path(), error);
  if (error) return problem("cannot make", folder_.parent_path(), error);
  if (!lock_.take(folder_.parent_path(), patience)) {
    return "another import is writing in " + folder_.parent_path().string() + "; try again later";
  }
  if (!fs::exists(folder_, error) && fs::is_directory(before_, error)) {
    fs::rename(before_, folder_, error);
    if (error) return problem("cannot restore", folder_, error);
  }
  if (auto objection = objectionTo(folder_)) return objection;
  fs::remove_all(before_, error);
  if (!error) fs::remove_all(beside_, error);
  if (error) return problem("cannot remove", beside_, error);
  fs::create_directory(beside_, error);
  if (error) return problem("cannot make", beside_, error);
  return std::nullopt;
}

FolderSwap::Problem FolderSwap::write(const std::string& path, std::string_view text) {
  const fs::path file = beside_ / path;
  std::error_code error;
  fs::create_directories(file.parent_path(), error);
  if (error) return problem("cannot make", file.parent_path(), error);
  errno = 0;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.close();
  if (!stream) return problem("cannot write", file, {errno, std::generic_category()});
  return std::nullopt;
}

FolderSwap::Problem FolderSwap::exchange() {
  if (exchangeInOneStep(beside_, folder_)) return std::nullopt;
  std::error_code error;
  if (!fs::exists(folder_, error)) {
    fs::rename(beside_, folder_, error);
    if (error) return problem("cannot make", folder_, error);
    return std::nullopt;
  }
  fs::rename(folder_, before_, error);
  if (error) return problem("cannot replace", folder_, error);
  fs::rename(beside_, folder_, error);
  if (!error) return std::nullopt;
  std::error_code ignored;
  fs::rename(before_, folder_, ignored);
  return problem("cannot replace", folder_, error);
}

FolderSwap::Problem FolderSwap::commit() {
  if (auto failed = exchange()) return failed;
  std::error_code ignored;
  fs::remove_all(before_, ignored);
  return std::nullopt;
}

}  // namespace tern::imports
