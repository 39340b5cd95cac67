#include "TernCoreKit/c/detail/VenuesLoad.hpp"

#include <string>
#include <variant>

#include "TernCoreKit/c/detail/Guard.hpp"
#include "TernCoreKit/c/detail/Handles.hpp"
#include "TernCoreKit/loading/VenueChoice.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::inline v5::detail {

void VenuesLoad::begin() {
  if (!ids_.empty()) return loadNext();
  hub().populateCoreWithExternalIds("", then<VenuesLoad>(&VenuesLoad::chooseVenue));
}

void VenuesLoad::chooseVenue(std::optional<TernError> error) {
  if (error) return fail(*error);
  const auto venues = hub().venues();
  if (venues == nullptr || (venues->getCount() == 0 && hub().id().isAbsent())) {
    return fail(cannotBeHad("the list of venues"));
  }
  const auto only = onlyVenue(*venues, hub().hostURL());
  if (const auto* none = std::get_if<TernError>(&only)) return fail(*none);
  ids_ = {std::get<std::int64_t>(only)};
  loadNext();
}

void VenuesLoad::loadNext() {
  if (venues_.size() == ids_.size()) return join();
  hub().populateVenueByVenueId(ids_[venues_.size()], then<VenuesLoad>(&VenuesLoad::takeVenue));
}

// A venue without its map template is a venue all the same.
void VenuesLoad::takeVenue(std::shared_ptr<TernActiveVenue> venue, std::optional<TernError> error) {
  const std::string name = "venue " + std::to_string(ids_[venues_.size()]);
  if (venue == nullptr) return fail(error ? *error : cannotBeHad(name));
  if (venue->id.isAbsent()) return fail(cannotBeHad(name));
  auto wanted = buildingIds(*venue, name + " of " + hub().hostURL());
  if (const auto* none = std::get_if<TernError>(&wanted)) return fail(*none);
  hub().populateBuildingsInVenue(venue, std::get<std::vector<std::int64_t>>(std::move(wanted)),
                                 then<VenuesLoad>(&VenuesLoad::takeBuildings));
}

void VenuesLoad::takeBuildings(std::shared_ptr<TernActiveVenue> venue,
                               std::optional<TernError> error) {
  if (error) return fail(*error);
  for (const TernBuilding& building : venue->buildings->each()) {
    if (hasServiceFailed() && !building.floors) {
      return fail(cannotBeHad("building " + building.id.printed()));
    }
  }
  venue->loadGridData();
  venue->loadKDTree();
  venues_.push_back(std::move(venue));
  loadNext();
}

void VenuesLoad::join() {
  if (venues_.size() == 1) return finish({nullptr, TernAnswers(venues_.front())});
  joinedTurn_ = JoinedTurn::take();
  if (joinedTurn_ == nullptr) return fail(JoinedTurn::isTaken());
  keptWhileJoining_ = shared_from_this();
  const auto start = [this] {
    joined_ = TernMultiActiveVenues::initWithActiveVenues(venues_, shared_from_this());
  };
  if (!attempt(start)) {
    keptWhileJoining_ = nullptr;
    breakOffAttempt();
  }
  takeJoined(true);
}

void VenuesLoad::multiVenueWayfindDataLoaded() {
  const auto kept = std::exchange(keptWhileJoining_, nullptr);
  takeJoined(true);
}

void VenuesLoad::multiVenueWayfindDataFailed() {
  const auto kept = std::exchange(keptWhileJoining_, nullptr);
  takeJoined(false);
}

void VenuesLoad::takeJoined(bool isBuilt) {
  if (!isBuilt) return fail(noMemoryForJob());
  if (joinedParts_.fetch_add(1) != 1) return;
  const auto go = [this] { finish({joinedTurn_, TernAnswers(joined_)}); };
  if (!attempt(go)) fail(noMemoryForJob());
}

void VenuesLoad::finish(OpenVenue venue) {
  const auto opened = std::make_shared<OpenVenue>(std::move(venue));
  joinedTurn_ = nullptr;
  succeed([&] { loaded_(context_, handleTo<tern_venue>(handles().add(opened)), nullptr); });
}

void VenuesLoad::tellError(const TernError& error) {
  char* const text = errorTextOf(error);
  loaded_(context_, nullptr, text);
  freeText(text);
}

}  // namespace tern::detail
