// The command that writes a synthetic venue folder.
//
// It writes to a folder that is missing, is empty or is a venue folder already; files of the same
// names are replaced and nothing is ever removed. Any other folder is refused. Fails: by value,
// naming the option or the file.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "tools/generate/GenerateVenue.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {

namespace {

namespace fs = std::filesystem;

bool isVenueFolder(const fs::path& folder) {
  std::error_code ignored;
  return fs::is_regular_file(folder / "full.json", ignored) &&
         fs::is_directory(folder / "venue", ignored);
}

// Why nothing may be written there.
std::optional<std::string> objectionTo(const fs::path& folder) {
  std::error_code error;
  const fs::file_status status = fs::status(folder, error);
  if (status.type() == fs::file_type::not_found) return std::nullopt;
  if (error) return "cannot be reached: " + error.message();
  if (!fs::is_directory(status)) return "is no folder";
  const bool empty = fs::is_empty(folder, error);
  if (error) return "cannot be read: " + error.message();
  if (empty || isVenueFolder(folder)) return std::nullopt;
  return "holds other things than a venue folder; name a new or an empty one";
}

generate::GenerateOptions generateOptions(const Arguments& call) {
  const auto whole = [&](std::string_view name) { return call.request[name].integer(); };
  generate::GenerateOptions wanted{.seed = static_cast<std::uint64_t>(whole("seed")),
                                   .buildings = whole("buildings"),
                                   .floors = whole("floors"),
                                   .shops = whole("shops"),
                                   .waypoints = {},
                                   .spacing = whole("spacing"),
                                   .customer = whole("customer"),
                                   .venue = whole("venue"),
                                   .venues = whole("venues")};
  if (const Value* waypoints = call.request.find("waypoints")) {
    wanted.waypoints = waypoints->integer();
  }
  return wanted;
}

Outcome generateFolder(const Arguments& call, Console&) {
  const generate::GenerateOptions wanted = generateOptions(call);
  const std::string out(call.request["out"].text());
  if (const auto objection = objectionTo(out)) {
    return wrongWords("--out: " + out + " " + *objection);
  }
  if (const auto error = generate::generateVenueFolder(wanted, out)) {
    return wrongWords("--out: " + *error);
  }
  if (call.json) return Answer{.text = jsonLine(Value::map({{"ok", true}})), .remark = {}};
  const std::int64_t last = wanted.venue + wanted.venues - 1;
  const std::string first = std::to_string(wanted.venue);
  const std::string venues = wanted.venues == 1
                                 ? "Venue " + first + " is in "
                                 : "Venues " + first + " to " + std::to_string(last) + " are in ";
  return Answer{.text = venues + out + "\n", .remark = {}};
}

}  // namespace

const Command generateCommand{
    .name = "generate",
    .summary = "write a synthetic venue folder",
    .options = {{"--out", "DIR", "the folder to write to; it is made when it is missing", readText,
                 required},
                {"--seed", "S", "chooses names and shapes", readWhole, orElse("1")},
                {"--buildings", "N", "how many buildings", readWhole, orElse("2")},
                {"--floors", "N", "how many floors the first building has", readWhole, orElse("4")},
                {"--shops", "N", "how many shops the venue has", readWhole, orElse("80")},
                {"--waypoints", "N", "about as many waypoints, in place of --shops", readWhole},
                {"--spacing", "N", "widest gap between waypoints, in metres", readWhole,
                 orElse("4")},
                {"--customer", "N", "the customer's id", readWhole, orElse("1")},
                {"--venue", "N", "the venue's id", readWhole, orElse("1")},
                {"--venues", "N", "how many venues, joined by their exits", readWhole,
                 orElse("1")}},
    .about = generateFolder,
    .objection = [](const Arguments& call) { return generate::validate(generateOptions(call)); },
    .help = R"(Examples:
  tern generate --out mall
  tern generate --out town --seed 7 --buildings 3 --floors 5 --shops 400
  tern generate --out two --venues 2

Several venues have exits to each other, and the coordinates of their waypoints
are longitude and latitude, which only the graph that joins them takes for what
they are.

The same options give the same bytes. A folder that holds anything but a venue
folder is refused.
)"};

}  // namespace tern::command
