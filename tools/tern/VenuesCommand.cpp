// The command that lists which venues a customer has.
#include <string>
#include <utility>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

Outcome listVenues(const Arguments& call, const TernVenueCollection& venues) {
  Value list = Value::list();
  std::string text;
  for (const TernVenue& venue : venues.each()) {
    list.append(Value::map({{"id", venue.id.integer()},
                            {"externalId", venue.externalId.text()},
                            {"name", venue.name.text()}}));
    text += padded(venue.id.printed(), 8) + std::string(venue.name.text());
    const std::string_view externalId = venue.externalId.text();
    text += externalId.empty() ? "\n" : " (" + std::string(externalId) + ")\n";
  }
  if (call.json) text = jsonLine(Value::map({{"venues", std::move(list)}}));
  return Answer{.text = std::move(text), .remark = {}};
}

}  // namespace

const Command venuesCommand{.name = "venues",
                            .summary = "list the venues of the data",
                            .about = listVenues,
                            .help = R"(Examples:
  tern generate --out mall
  tern venues --data mall
  tern venues --data mall --json
)"};

}  // namespace tern::command
