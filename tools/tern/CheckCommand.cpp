// The command that says what in a venue's data keeps people from their way.
#include <fstream>
#include <optional>
#include <string>

#include "tools/check/CheckPicture.hpp"
#include "tools/check/CheckVenue.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/VenueFolder.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

// Nothing that was found is a feature of a map by itself, so there is no GeoJSON of it.
Reading readDrawingFile(const std::string& text) {
  if (text.ends_with(".svg") || text.ends_with(".html")) return Value(text);
  return "\"" + text + "\" must end in .svg or .html";
}

std::optional<Failure> drawPicture(const std::string& file, const check::Subject& subject,
                                   const check::Findings& findings) {
  if (file.empty()) return std::nullopt;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  const picture::PicturePlan plan = planOf(subject, findings);
  stream << (file.ends_with(".html") ? picture::htmlOf(plan) : picture::svgOf(plan));
  stream.close();
  if (stream) return std::nullopt;
  return wrongWords("--picture: cannot write " + file);
}

Outcome checkFolder(const Arguments& call, Console&) {
  std::optional<std::int64_t> venueId;
  if (const Value* id = call.request.find("venue")) venueId = id->integer();
  VenueDocuments documents;
  const auto loaded = loadVenue(call.data, venueId, std::nullopt, &documents);
  if (const auto* failure = std::get_if<Failure>(&loaded)) return *failure;
  const check::Subject subject(*std::get<std::shared_ptr<TernActiveVenue>>(loaded), documents.venue,
                               documents.buildings);
  const check::Findings findings = check::checkVenue(subject);
  if (auto failure = drawPicture(call.picture, subject, findings)) return *std::move(failure);
  const ExitStatus status =
      check::hasFailure(findings) ? ExitStatus::nothingFound : ExitStatus::answered;
  if (call.json) return Answer{status, jsonLine(check::reportOf(findings)), {}};
  return Answer{status, onItsLines(check::reportText(subject, findings)), {}};
}

}  // namespace

const Command checkCommand{
    .name = "check",
    .summary = "find what in a venue keeps people from their way",
    .options = {{"--data", "DIR", "the venue folder to check", readText, required},
                {"--venue", "V", "the venue; left out: the only one", readWhole},
                {"--picture", "FILE", "draw the floors to FILE.svg or FILE.html", readDrawingFile}},
    .about = checkFolder,
    .help = R"(Examples:
  tern generate --out mall
  tern check --data mall
  tern check --data mall --venue 1 --json
  tern check --data mall --picture check.html

Tells of ways that hang together with nothing, of places that nobody reaches or
nobody without steps, of ids that lead nowhere or are there twice, and of what
is missing or cannot be: how many of each, what to do about it and the first of
them; all of them with --json. docs/check.md says what each looks at.
The picture shows each part that hangs together in a colour of its own.

Exits with 0 when nothing was found, and with 1 when anything was; places that
are not step-free are told of and no failure.
)"};

}  // namespace tern::command
