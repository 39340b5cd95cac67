// The command that makes a venue folder of open building data.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/import/Import.hpp"
#include "tools/import/write/ImportReport.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/VenueChoice.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

namespace fs = std::filesystem;

std::string textOf(const Arguments& call, std::string_view name) {
  return std::string(call.request[name].text());
}

imports::ImportWishes wishesOf(const Arguments& call) {
  imports::ImportWishes wishes;
  wishes.format = textOf(call, "format");
  wishes.stations.station = textOf(call, "station");
  wishes.stations.all = call.request["all"].flag();
  wishes.venue.name = textOf(call, "name");
  wishes.venue.language = textOf(call, "language");
  return wishes;
}

Failure failureOf(const imports::ImportFailure& failure) {
  if (!failure.option.empty())
    return wrongWords(std::string(failure.option) + ": " + failure.sentence);
  return notLoaded(TernErrorTypeObjectNotFound, failure.sentence);
}

Failure unwritable(const std::string& file) { return wrongWords("--report: cannot write " + file); }

// Whether a file can be written, found out before anything else is; what is there stays.
bool isWritable(const std::string& file) {
  std::error_code error;
  const bool isNew = !fs::exists(file, error);
  const bool opens = std::ofstream(file, std::ios::binary | std::ios::app).is_open();
  if (opens && isNew) fs::remove(file, error);
  return opens;
}

std::optional<Failure> writeReport(const std::string& file, const Value& report) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream << encodeJson(report, JsonLayout::rows) << '\n';
  stream.close();
  if (stream) return std::nullopt;
  return unwritable(file);
}

Outcome importFolder(const Arguments& call, Console&) {
  const std::string reportFile = textOf(call, "report");
  if (!reportFile.empty() && !isWritable(reportFile)) return unwritable(reportFile);
  const imports::Imported imported =
      imports::importSource(textOf(call, "source"), textOf(call, "out"), wishesOf(call));
  if (imported.failure) return failureOf(*imported.failure);
  const Value report = imports::reportOf(imported.written);
  if (!reportFile.empty()) {
    if (auto failure = writeReport(reportFile, report)) return *std::move(failure);
  }
  if (call.json) return Answer{.text = jsonLine(report), .remark = {}};
  return Answer{.text = onItsLines(imports::reportText(imported.written)), .remark = {}};
}

bool isWithin(const fs::path& file, const fs::path& folder) {
  std::error_code error;
  const fs::path below =
      fs::weakly_canonical(file, error).lexically_relative(fs::weakly_canonical(folder, error));
  return !below.empty() && *below.begin() != "..";
}

std::optional<std::string> objectionToWords(const Arguments& call) {
  constexpr std::array<std::string_view, 5> known{"", "network", "imdf", "gtfs", "osm"};
  const std::string format = textOf(call, "format");
  if (std::ranges::find(known, format) == known.end()) {
    return "--format: " + inQuotes(format) + " must be network, imdf, gtfs or osm";
  }
  const std::string report = textOf(call, "report");
  if (!report.empty() && isWithin(report, textOf(call, "out"))) {
    return "--report: " + report + " lies in the folder that --out replaces";
  }
  if (!call.request["all"].flag()) return std::nullopt;
  if (!textOf(call, "station").empty()) return "--all: --station names a single one";
  if (!textOf(call, "name").empty()) return "--all: --name is the name of a single venue";
  return std::nullopt;
}

}  // namespace

const Command importCommand{
    .name = "import",
    .summary = "make a venue folder of open building data",
    .options = {{"--out", "DIR", "the folder to write; a venue folder there is replaced", readText,
                 required},
                {"--format", "F", "network, imdf, gtfs or osm; left out: as the files tell",
                 readText},
                {"--station", "ID", "of a transit feed this station", readText},
                {"--all", "", "of a transit feed every station, each a venue"},
                {"--name", "N", "the venue's name; left out: the source's", readText},
                {"--language", "L", "of names, where the source has several", readText},
                {"--report", "FILE", "what --json prints, as a file", readText}},
    .operand = {"SOURCE", "SOURCE", "a folder of building data, a .zip or a file", readText,
                required, "source"},
    .about = importFolder,
    .objection = objectionToWords,
    .help = R"(Examples:
  tern import station --out venue
  tern import station --out venue --name "Harbour Station" --language en --json
  tern route --data venue --from 東口 --to 中央改札口
  tern import feed --out central --station central

Reads pedestrian networks: nodes and links as GeoJSON, with floor plans where
they lie beside; the stops, levels and pathways of transit feeds; IMDF, of whose
units and openings the ways are made; and what OpenStreetMap has of indoors, as
.osm or .osm.pbf. What of the source did not come through as it stands is told,
and what came through and looks odd, record by record with --json.
docs/import.md says what becomes of what.

The folder is written whole or not at all. Ids stay what they are when the same
building is imported again, and the same source gives the same bytes. Exits with
3 when the source cannot be read or holds no building.
)"};

}  // namespace tern::command
