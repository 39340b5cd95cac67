// The command that shows venues in a browser on this machine, until SIGINT or SIGTERM. It says the
// address of its page when it is ready, and opens it where a person sits at a desktop. Fails: by
// value, naming the port.
#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/loading/VenueLoading.hpp"
#include "tools/check/CheckVenue.hpp"
#include "tools/service/Exhaustion.hpp"
#include "tools/service/PageService.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Desktop.hpp"
#include "tools/tern/EndSignals.hpp"
#include "tools/tern/ProcessEnd.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

namespace {

// A page asks again for what was broken off.
constexpr std::chrono::seconds mostGrace{1};

// What `tern check --json` answers about the venue.
Value findingsOf(const DocumentSource& documents, std::int64_t venue) {
  VenueDocuments read;
  const auto loaded = loadVenue(documents, venue, std::nullopt, &read);
  if (const auto* error = std::get_if<TernError>(&loaded)) return errorAnswer(*error);
  const check::Subject subject(*std::get<std::shared_ptr<TernActiveVenue>>(loaded), read.venue,
                               read.buildings);
  return check::reportOf(check::checkVenue(subject));
}

std::string findingsText(const DocumentSource& documents, std::int64_t venue) {
  std::string text = R"({"error":{"code":"TN008","message":"out of memory"}})";
  service::hasEnough([&] { text = jsonLine(findingsOf(documents, venue)); });
  return text;
}

// What is shown, as the call names it.
std::string shownBy(const Arguments& call) {
  return call.data.empty() ? call.service.host : call.data;
}

std::string greeting(const Arguments& call, const std::string& url) {
  if (call.json) return jsonLine(Value::map({{"url", url}}));
  return "Showing " + shownBy(call) + " at " + url + "\n";
}

Outcome explore(const Arguments& call, const VenueFiles& files, Console& console) {
  const EndSignals ends;
  service::PageService page({.files = console.page,
                             .venues = files.venues,
                             .documents = files.documents,
                             .findings = [documents = files.documents](std::int64_t venue) {
                               return findingsText(documents, venue);
                             }});
  if (const auto error = page.start(static_cast<int>(call.request["port"].integer()))) {
    return notFound(*error);
  }
  console.answers.write(greeting(call, page.url()));
  console.answers.flush();
  if (console.answers.isTerminal() && hasDesktop()) openOnDesktop(page.url());
  ends.wait();
  // A check that has begun goes on to its end, however long that takes.
  endProcessWithin(2 * mostGrace, ExitStatus::answered);
  page.stop(mostGrace);
  return Answer();
}

}  // namespace

const Command exploreCommand{.name = "explore",
                             .summary = "show a venue in a browser",
                             .options = {venueOptions.front(),
                                         {"--port", "P", "where to listen; 0 is any that is free",
                                          readWholeBetween<0, 65'535>, orElse("0")}},
                             .about = explore,
                             .help = R"(Examples:
  tern generate --out mall
  tern explore --data mall

Says the address of a page that shows the venue: its floors, the ways over them
and what keeps people from their way. At a desktop it opens the page. Ends at
SIGINT or SIGTERM.

The page is served to browsers on this machine only, without a token: whoever
has an account here can read the venue's documents while it runs. It asks
nobody else for anything. What came from a mapping service is shown as it was
loaded; the secret stays with this program.

It is for a tern that was built with the page, as scripts/explore does.
)"};

}  // namespace tern::command
