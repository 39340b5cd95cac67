// What a mapping service answers to the GET requests for the documents of a venue folder:
//
//   path below /QRVS/api/customer/<id>       file of the folder
//   /full                                    full.json, with "externalIds" only those venues of it
//   /locale/full                             locale/full.json
//   /map-template/<id>/full                  map-template/<id>/full.json
//   /venue/<id>/full                         venue/<id>/full.json
//   /venue/<id>/building/<id>/full           venue/<id>/building/<id>/full.json
//   /destination/full?venueIds=<id>,<id>     an "items" list of the venue/<id>/destinations.json
//
// The files are read for each request, so a document that is replaced is served anew. One is sent
// as its file holds it, broken or not, unless the answer has to look into it.
//
// Threads: any. Fails: by the status of an answer.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/service/ServedAnswer.hpp"

namespace tern::service {

class ServedDocuments {
 public:
  // Nothing outside the folder is ever read, also not over a symbolic link in it.
  explicit ServedDocuments(std::string folder);

  // Why the folder cannot be served; absent when it can.
  std::optional<std::string> complaint() const;

  // The target is path and query as they were sent. A document whose stamp is the given one is
  // answered with 304; it is the text of "updatedAt" in its "recordHistory", else of "generatedAt".
  ServedAnswer answer(std::string_view target, const std::optional<std::string>& stamp) const;

 private:
  std::optional<Value> readDocument(const std::string& file) const;
  ServedAnswer answerFile(const std::string& file, const std::optional<std::string>& stamp) const;
  ServedAnswer answerDestinations(std::string_view venueIds) const;

  // The stamp of a document with that text; none for what is no JSON object.
  std::optional<std::string> stampOfText(const std::string& text) const;

  std::string folder_;
  std::shared_ptr<FileSystem> files_;
  mutable Mutex mutex_;
  // By the hash of a text: its stamp, so that a large document is not decoded each time.
  mutable std::unordered_map<std::size_t, std::string> stamps_ TERN_GUARDED_BY(mutex_);
};

}  // namespace tern::service
