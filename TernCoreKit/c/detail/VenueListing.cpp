#include "TernCoreKit/c/detail/VenueListing.hpp"

#include <string>

#include "TernCoreKit/c/detail/Guard.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::inline v5::detail {

namespace {

std::string textOfVenues(const TernVenueCollection& venues) {
  Value list = Value::list();
  for (const TernVenue& venue : venues.each()) {
    list.append(Value::map({{"id", venue.id.integer()},
                            {"externalId", venue.externalId.text()},
                            {"name", venue.name.text()}}));
  }
  return encodeJson(Value::map({{"venues", std::move(list)}}), JsonLayout::compact);
}

}  // namespace

void VenueListing::begin() {
  hub().populateCoreWithExternalIds("", then<VenueListing>(&VenueListing::takeVenues));
}

void VenueListing::takeVenues(std::optional<TernError> error) {
  if (error) return fail(*error);
  const auto venues = hub().venues();
  if (venues == nullptr || (venues->getCount() == 0 && hub().id().isAbsent())) {
    return fail(cannotBeHad("the list of venues"));
  }
  std::string text = textOfVenues(*venues);
  succeed([&] { listed_(context_, text.c_str()); });
}

void VenueListing::tellError(const TernError& error) {
  char* const text = errorTextOf(error);
  listed_(context_, text);
  freeText(text);
}

}  // namespace tern::detail
