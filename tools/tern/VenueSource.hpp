// Where venues come from: a folder, or a service.
//
// Ownership: hands out what it reads and keeps nothing of it. Threads: one. Fails: by value, with
// one line that names the file or the service.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tools/tern/Arguments.hpp"
#include "tools/tern/VenueChoice.hpp"
#include "tools/tern/VenueFiles.hpp"

namespace tern::command {

class VenueSource {
 public:
  virtual ~VenueSource() = default;

  // The venues of the customer.
  virtual Loaded<TernVenueCollection> readVenues() = 0;
  // A venue with its graph. Without a venue's id it is the only one that the customer has; without
  // a building's id it gets all buildings of its document, in ascending order of their ids.
  virtual Loaded<TernActiveVenue> loadVenue(std::optional<std::int64_t> venueId,
                                            std::optional<std::int64_t> buildingId) = 0;
  // Those venues, loaded to see that they can be, with their documents; without ids the only one.
  virtual Loaded<VenueFiles> loadFiles(std::vector<std::int64_t> venueIds) = 0;
  // What to tell of loads that succeeded; empty when all is as it should be.
  virtual std::string remark() const { return {}; }
};

// The source that the call names. What a service is asked is traced to the descriptor, which stays
// the caller's.
std::variant<std::unique_ptr<VenueSource>, Failure> openSource(const Arguments& call,
                                                               int diagnostics);

}  // namespace tern::command
