// The table of commands. A command is an entry in a file of its own and a line in the list;
// parsing, help, completion, manual and dispatch read the entries and know no command by its name.
//
// Ownership: entries are constants, and so is all that they name. Threads: any. Fails: never.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/service/PageFile.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Option.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/Output.hpp"
#include "tools/tern/VenueFiles.hpp"

namespace tern::command {

// For commands that talk while they run: where requests come from, a descriptor, where answers go,
// and the page that is part of the program, which has no files where it was built without one.
struct Console {
  int requests;
  Output& answers;
  std::span<const service::PageFile> page = {};
};

// What a command is about, with the function that answers it: nothing that is loaded before,
using AboutNothing = Outcome (*)(const Arguments& call, Console& console);
// the venues of a customer,
using AboutCustomer = Outcome (*)(const Arguments& call, const TernVenueCollection& venues);
// a venue, and perhaps several that are joined,
struct AboutVenue {
  Outcome (*one)(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue);
  Outcome (*joined)(const Arguments& call,
                    const std::shared_ptr<TernMultiActiveVenues>& venues) = nullptr;
};
// requests to either,
using AboutRequests = Outcome (*)(const Arguments& call, const TernAnswers& answers,
                                  Console& console);
// or the documents of venues, for the page to show.
using AboutFiles = Outcome (*)(const Arguments& call, const VenueFiles& files, Console& console);

using About = std::variant<AboutNothing, AboutCustomer, AboutVenue, AboutRequests, AboutFiles>;

struct Command {
  std::string_view name;
  std::string_view summary;
  // Its own: their values make the request. Those that say what to load come with what it is about,
  // and --json with all.
  std::vector<Option> options = {};
  // What may stand without an option before it; nameless when nothing may.
  Option operand = {};
  About about;
  // What is wrong with options that are right each for itself.
  std::optional<std::string> (*objection)(const Arguments& call) = nullptr;
  // What its help ends with: "Examples:" and lines for a shell, to run one after the other in an
  // empty folder; behind an empty line what else there is to say.
  std::string_view help;
};

// Each in the file of its name, such as VenuesCommand.cpp.
extern const Command venuesCommand;
extern const Command infoCommand;
extern const Command floorsCommand;
extern const Command placesCommand;
extern const Command routeCommand;
extern const Command nearestCommand;
extern const Command alternativesCommand;
extern const Command tourCommand;
extern const Command matrixCommand;
extern const Command reachCommand;
extern const Command closestCommand;
extern const Command convertCommand;
extern const Command batchCommand;
extern const Command exploreCommand;
extern const Command serveCommand;
extern const Command generateCommand;
extern const Command checkCommand;
#ifdef TERN_WITH_IMPORT
extern const Command importCommand;
#endif
extern const Command completionCommand;
extern const Command manCommand;

// In the order of the help.
std::span<const Command* const> allCommands();
const Command* findCommand(std::string_view name);

bool loadsData(const Command& command);
bool loadsVenue(const Command& command);
bool joinsVenues(const Command& command);

// The names of the commands that are so: "venues, info, ...".
std::string namesOfCommands(bool (*isSo)(const Command&), std::string_view between);

// All that it takes, first its own and last those of a service.
std::vector<Option> optionsOf(const Command& command);

}  // namespace tern::command
