#include "TernCoreKit/platform/PlainFile.hpp"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace tern::inline v5 {

std::variant<std::string, FileError> readPlainFile(const std::string& path,
                                                   std::uintmax_t mostBytes) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return FileError{ENOENT, "no such file"};
  if (error) return FileError{error.value(), error.message()};
  if (!fs::is_regular_file(status)) return FileError{EINVAL, "is no file"};
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return FileError{error.value(), error.message()};
  if (size > mostBytes) return FileError{EFBIG, "is too large"};
  std::string text(static_cast<std::size_t>(size), '\0');
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return FileError{EACCES, "cannot be opened"};
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!stream) return FileError{EIO, "cannot be read to its end"};
  return text;
}

bool isFolderAt(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

}  // namespace tern
