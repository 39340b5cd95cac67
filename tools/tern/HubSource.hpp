// Reads venues from a mapping service through a TernHub, waiting for each answer.
//
// Only the documents that are asked for are requested. What the service does not answer is taken
// from the disk cache, as a hub does; `remark` says so.
//
// Ownership: takes the place of the process's HTTP transport and file system while it lives.
// Threads: one. Fails: by value, with one line that names the service.
//
//   HubSource service(options, "/home/me/.cache", STDERR_FILENO);
//   const auto venue = service.loadVenue(1, std::nullopt);
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/service/WatchedTransport.hpp"
#include "tools/tern/HostOptions.hpp"
#include "tools/tern/RequestTrace.hpp"
#include "tools/tern/VenueSource.hpp"

namespace tern::command {

class HubSource final : public VenueSource {
 public:
  // The folder is the cache's; the trace goes to the descriptor, which stays the caller's.
  HubSource(const HostOptions& options, const std::string& cacheFolder, int diagnostics);
  ~HubSource() override;
  HubSource(const HubSource&) = delete;
  HubSource& operator=(const HubSource&) = delete;

  Loaded<TernVenueCollection> readVenues() override;
  Loaded<TernActiveVenue> loadVenue(std::optional<std::int64_t> venueId,
                                    std::optional<std::int64_t> buildingId) override;
  // The documents are those that the disk cache holds once they are loaded.
  Loaded<VenueFiles> loadFiles(std::vector<std::int64_t> venueIds) override;
  // That the service failed and the cache took its place.
  std::string remark() const override;

 private:
  // Documents by their path in a venue folder.
  using Texts = std::map<std::string, std::string, std::less<>>;

  std::variant<std::int64_t, Failure> chosenVenue(std::optional<std::int64_t> venueId);
  // Returns when routes can be searched.
  std::optional<Failure> addBuildings(const std::shared_ptr<TernActiveVenue>& venue,
                                      std::optional<std::int64_t> buildingId);
  // Loads a venue and adds its documents.
  std::optional<Failure> addTexts(std::int64_t venueId, Texts& texts);
  // Adds what is cached of an endpoint's answer.
  std::optional<Failure> addText(const std::string& path, const std::string& endpoint,
                                 Texts& texts) const;
  // A load that found nothing to build on reports no error.
  Failure isEmpty(const std::string& what) const;
  Failure failed(const TernError& error) const;

  const std::string host_;
  const std::shared_ptr<WatchedTransport> transport_;
  std::optional<RequestTrace> trace_;
  std::shared_ptr<TernHub> hub_;
};

}  // namespace tern::command
