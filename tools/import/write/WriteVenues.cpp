#include "tools/import/write/WriteVenues.hpp"

#include <fstream>
#include <sstream>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/import/write/Documents.hpp"
#include "tools/import/write/FolderSwap.hpp"
#include "tools/import/write/IdTable.hpp"

namespace tern::imports {

namespace {

namespace fs = std::filesystem;

std::string venuePath(std::int64_t id) { return "venue/" + std::to_string(id) + "/"; }

// The numbers of the import before; none when there was none, or when the file is not ours.
Value formerIds(const fs::path& folder, std::int64_t venue) {
  const fs::path file = folder / venuePath(venue) / "ids.json";
  std::error_code error;
  if (!fs::is_regular_file(file, error)) return {};
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return decodeJson(std::move(text).str()).value;
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

std::optional<std::string> writeCustomer(FolderSwap& swap, std::span<const VenuePlan> plans) {
  if (auto error = swap.write("full.json", customerDocument(plans))) return error;
  if (auto error = swap.write("locale/full.json", localesDocument(plans))) return error;
  return swap.write("map-template/" + std::string(mapTemplateId) + "/full.json",
                    mapTemplateDocument());
}

}  // namespace

WrittenVenues writeVenues(std::span<const Draft> drafts, const VenueWishes& wishes,
                          const fs::path& folder) {
  WrittenVenues written;
  FolderSwap swap(folder);
  if ((written.error = swap.begin())) return written;
  IdTable ids;
  for (std::size_t i = 0; i < drafts.size(); ++i) {
    ids.keep(formerIds(folder, wishes.id + static_cast<std::int64_t>(i)));
  }
  std::vector<VenuePlan> plans;
  for (const Draft& draft : drafts) {
    VenueWishes own = wishes;
    own.id += static_cast<std::int64_t>(plans.size());
    plans.push_back(planVenue(draft, own, ids));
    if ((written.error = writeVenue(swap, plans.back(), ids.takeDocument()))) return written;
    written.venues.push_back(summaryOf(plans.back()));
    const std::vector<Oddity>& told = plans.back().oddities.told();
    written.told.insert(written.told.end(), told.begin(), told.end());
  }
  if ((written.error = writeCustomer(swap, plans))) return written;
  written.error = swap.commit();
  return written;
}

}  // namespace tern::imports
