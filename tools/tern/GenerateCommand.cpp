#include "tools/tern/GenerateCommand.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "tools/generate/GenerateVenue.hpp"

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

}  // namespace

Outcome generateFolder(const Arguments& call) {
  if (const auto objection = objectionTo(call.out)) {
    return wrongWords("--out: " + call.out + " " + *objection);
  }
  if (const auto error = generate::generateVenueFolder(call.generate, call.out)) {
    return wrongWords("--out: " + *error);
  }
  if (call.json) return Answer{.text = jsonLine(Value::map({{"ok", true}})), .remark = {}};
  const std::int64_t first = call.generate.venue;
  const std::int64_t last = first + call.generate.venues - 1;
  const std::string venues = first == last ? "Venue " + std::to_string(first) + " is in "
                                           : "Venues " + std::to_string(first) + " to " +
                                                 std::to_string(last) + " are in ";
  return Answer{.text = venues + call.out + "\n", .remark = {}};
}

}  // namespace tern::command
