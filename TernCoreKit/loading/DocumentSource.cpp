#include "TernCoreKit/loading/DocumentSource.hpp"

#include <cerrno>
#include <utility>

#include "TernCoreKit/platform/PlainFile.hpp"

namespace tern::inline v5 {

namespace {

TernError unreadable(const std::string& folder, const std::string& file, const FileError& error) {
  if (!isFolderAt(folder)) {
    return TernError::initWithErrorType(TernErrorTypeObjectNotFound,
                                        "there is no folder " + folder);
  }
  if (error.code == EFBIG) {
    return TernError::initWithErrorType(TernErrorTypeIncorrectJSON,
                                        file + ": is larger than 1 GiB");
  }
  return TernError::initWithErrorType(TernErrorTypeObjectNotFound, file + ": " + error.text);
}

}  // namespace

std::string DocumentSource::nameOf(std::string_view path) const {
  std::string name = place;
  if (!name.empty() && name.back() != '/') name += '/';
  return name.append(path);
}

DocumentSource folderDocuments(std::string folder) {
  DocumentSource source{std::move(folder)};
  source.read = [named = source](const std::string& path) -> std::variant<std::string, TernError> {
    const std::string file = named.nameOf(path);
    auto text = readPlainFile(file, maximumDocumentBytes);
    if (const auto* error = std::get_if<FileError>(&text)) {
      return unreadable(named.place, file, *error);
    }
    return std::get<std::string>(std::move(text));
  };
  return source;
}

}  // namespace tern
