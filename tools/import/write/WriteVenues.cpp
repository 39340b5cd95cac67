#include "tools/import/write/WriteVenues.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/import/write/Documents.hpp"
#include "tools/import/write/FolderSwap.hpp"
#include "tools/import/write/IdTable.hpp"
#include "tools/import/write/LostNodes.hpp"

namespace tern::imports {

namespace {

namespace fs = std::filesystem;

std::string venuePath(std::int64_t id) { return "venue/" + std::to_string(id) + "/"; }

// The numbers of the import before, whichever venues it wrote; none when there was none. A file
// that is not ours tells of none.
void keepFormerIds(IdTable& ids, const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  fs::directory_iterator venue(folder / "venue", error);
  for (const fs::directory_iterator end; !error && venue != end; venue.increment(error)) {
    std::error_code ignored;
    fs::path file = venue->path() / "ids.json";
    if (fs::is_regular_file(file, ignored)) files.push_back(std::move(file));
  }
  std::ranges::sort(files);
  for (const fs::path& file : files) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    ids.keep(decodeJson(std::move(text).str()).value);
  }
}

WrittenVenue summaryOf(const VenuePlan& plan) {
  return {plan.id,
          plan.name,
          plan.floors.size(),
          plan.waypoints.size(),
          plan.paths.size(),
          plan.destinations.size(),
          plan.amenities.size(),
          plan.kinds,
          plan.placement.residual};
}

std::optional<std::string> writeVenue(FolderSwap& swap, const VenuePlan& plan, const Value& ids) {
  const std::string path = venuePath(plan.id);
  if (auto error = swap.write(path + "full.json", venueDocument(plan))) return error;
  if (auto error = swap.write(path + "destinations.json", destinationsDocument(plan))) return error;
  if (auto error = swap.write(path + "ids.json", encodeJson(ids, JsonLayout::rows) + "\n")) {
    return error;
  }
  for (std::size_t i = 0; i < plan.buildingIds.size(); ++i) {
    const std::string file =
        path + "building/" + std::to_string(plan.buildingIds[i]) + "/full.json";
    if (auto error = swap.write(file, buildingDocument(plan, i))) return error;
  }
  return std::nullopt;
}

std::optional<std::string> writeCustomer(FolderSwap& swap, const std::string& name,
                                         std::span<const VenuePlan> plans) {
  if (auto error = swap.write("full.json", customerDocument(name, plans))) return error;
  if (auto error = swap.write("locale/full.json", localesDocument(plans))) return error;
  return swap.write(pathOf(mapTemplate), documentOf(mapTemplate));
}

}  // namespace

WrittenVenues writeVenues(std::span<const Draft> drafts, const VenueWishes& wishes,
                          const fs::path& folder) {
  WrittenVenues written;
  FolderSwap swap(folder);
  if ((written.error = swap.begin())) return written;
  IdTable ids;
  keepFormerIds(ids, folder);
  std::vector<VenuePlan> plans;
  for (const Draft& draft : drafts) {
    plans.push_back(planVenue(draft, wishes, ids));
    tellLostNodes(plans.back());
    if ((written.error = writeVenue(swap, plans.back(), ids.takeDocument()))) return written;
    written.venues.push_back(summaryOf(plans.back()));
    const std::vector<Oddity>& told = plans.back().oddities.told();
    written.told.insert(written.told.end(), told.begin(), told.end());
  }
  const std::string customer = wishes.customer.value_or(plans.front().name);
  if ((written.error = writeCustomer(swap, customer, plans))) return written;
  written.error = swap.commit();
  return written;
}

}  // namespace tern::imports
