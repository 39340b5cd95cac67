// The command that serves a venue folder as a mapping service does, and answers requests about its
// venues, until SIGINT or SIGTERM. It says its address when it is ready. Fails: by value, naming
// the folder or the port.
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "TernCoreKit/platform/Log.hpp"
#include "tools/service/MappingService.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/EndSignals.hpp"
#include "tools/tern/JoinedVenues.hpp"
#include "tools/tern/ProcessEnd.hpp"
#include "tools/tern/VenueChoice.hpp"
#include "tools/tern/VenueFolder.hpp"
#include "tools/tern/VenueSource.hpp"

namespace tern::command {

namespace {

constexpr std::chrono::seconds graceTime{10};

// Many clients at once are many connections; what the system allows without asking is often fewer.
void allowDescriptors() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

// What can be asked about in the folder: of one whose customer cannot be read, nothing.
service::VenueList venuesIn(const std::string& folder) {
  service::VenueList list;
  const auto venues = readVenues(folder);
  if (std::holds_alternative<Failure>(venues)) return list;
  for (const auto& venue : std::get<std::shared_ptr<TernVenueCollection>>(venues)->each()) {
    list.ids.push_back(venue.id.integer());
  }
  list.load = [folder](std::int64_t id) -> service::SharedAnswers {
    auto loaded = loadVenue(folder, id, std::nullopt);
    auto* venue = std::get_if<std::shared_ptr<TernActiveVenue>>(&loaded);
    return venue != nullptr ? std::make_shared<TernAnswers>(std::move(*venue)) : nullptr;
  };
  return list;
}

// What is meant where no venue is named; null: the only one.
Loaded<const TernAnswers> answersMeant(const Arguments& call) {
  if (call.venues.empty()) return nullptr;
  auto opened = openSource(call, STDERR_FILENO);
  if (auto* failure = std::get_if<Failure>(&opened)) return std::move(*failure);
  VenueSource& source = *std::get<std::unique_ptr<VenueSource>>(opened);
  const auto about = [](auto loaded) -> Loaded<const TernAnswers> {
    if (auto* failure = std::get_if<Failure>(&loaded)) return std::move(*failure);
    return std::make_shared<const TernAnswers>(std::get<0>(std::move(loaded)));
  };
  if (call.venues.size() > 1) return about(loadVenues(source, call.venues));
  return about(source.loadVenue(call.venues.front(), std::nullopt));
}

service::ServiceSettings settingsOf(const Arguments& call, service::VenueList venues) {
  const auto asked = [&](const char* name) { return std::string(call.request[name].text()); };
  const std::string& secret = call.service.clientSecret;
  return {.folder = call.data,
          .clientId = asked("client-id"),
          .clientSecret = secret.empty() ? "local" : secret,
          .address = asked("listen"),
          .port = static_cast<int>(call.request["port"].integer()),
          .venues = std::move(venues)};
}

Outcome serveFolder(const Arguments& call, Console& console) {
  const EndSignals ends;
  allowDescriptors();
  // Each answer says itself what it found.
  setLogSink([](std::string_view) {});
  auto meant = answersMeant(call);
  if (auto* failure = std::get_if<Failure>(&meant)) return std::move(*failure);
  service::VenueList venues = venuesIn(call.data);
  venues.meant = std::get<service::SharedAnswers>(std::move(meant));
  service::MappingService service(settingsOf(call, std::move(venues)));
  if (const auto error = service.start()) return notFound(*error);
  console.answers.write("Serving " + call.data + " at " + service.url() + "\n");
  console.answers.flush();
  ends.wait();
  // A line that has begun is answered to its end, however long that takes; once its client is gone
  // nobody waits for it.
  endProcessWithin(2 * graceTime, ExitStatus::answered);
  service.stop(graceTime);
  return Answer();
}

}  // namespace

const Command serveCommand{
    .name = "serve",
    .summary = "serve a venue folder, and answers about its venues, over HTTP",
    .options = {{"--data", "DIR", "the venue folder to serve", readText, required},
                {"--port", "P", "where to listen; 0 is any that is free",
                 readWholeBetween<0, 65'535>, orElse("0")},
                {"--listen", "ADDR", "the address to listen on", readText, orElse("127.0.0.1")},
                {"--client-id", "ID", "who may ask", readText, orElse("local")},
                {"--venue", "V,...", "what is meant where none is named; several are joined",
                 readVenueIds}},
    .about = serveFolder,
    .help = R"(Examples:
  tern generate --out mall
  tern serve --data mall --port 8080
  TERN_CLIENT_SECRET=open-sesame tern serve --data mall --client-id app

Serves one customer, whose id stands in full.json, until SIGINT or SIGTERM, and
says its address when it is ready. The secret is that of TERN_CLIENT_SECRET,
else "local". It is plain HTTP: listen to other machines only where nobody
reads along.

Its documents are those that a mapping service has. It also answers requests,
those of tern batch, which come as the lines of a body:
  POST /answer             about the only venue, or that of --venue
  POST /answer?venue=2     about that one
With --venue 1,2 the first is about both, joined: a route leads from one to the
other, and every other request names its "venue". The answers come line by
line, in order, as they are made. Both want a token:
  POST /QRVS/api/auth/token
with grant_type=client_credentials, client_id and client_secret as a form; then
"Authorization: Bearer TOKEN". Those of --venue are loaded before it is ready,
others when they are first asked about, and all stay as they are until the
service ends. A request that blocks is refused with TN006, since all are
answered of one venue.

A body of more than 1 MiB or 10000 lines, or a line of more than 64 KiB, is
refused with 413, and one more than 3000 bodies at a time with 503. What has
not been begun within 60 seconds is answered with TN008. At a signal it listens
no more and gives what is under way 10 seconds to come to its end.
)"};

}  // namespace tern::command
