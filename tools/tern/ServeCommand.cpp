// The command that serves a venue folder as a mapping service does, until SIGINT or SIGTERM. It
// says its address when it is ready. Fails: by value, naming the folder or the port.
#include <csignal>
#include <string>

#include "tools/service/MappingService.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

namespace {

// The process must not have started a thread that could take the signals instead.
Outcome serveFolder(const Arguments& call, Console& console) {
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGINT);
  sigaddset(&ends, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &ends, nullptr);
  const auto asked = [&](const char* name) { return std::string(call.request[name].text()); };
  const std::string& secret = call.service.clientSecret;
  service::MappingService service({.folder = asked("data"),
                                   .clientId = asked("client-id"),
                                   .clientSecret = secret.empty() ? "local" : secret,
                                   .address = asked("listen"),
                                   .port = static_cast<int>(call.request["port"].integer())});
  if (const auto error = service.start()) return notFound(*error);
  console.answers.write("Serving " + asked("data") + " at " + service.url() + "\n");
  console.answers.flush();
  int signal = 0;
  sigwait(&ends, &signal);
  service.stop();
  return Answer();
}

}  // namespace

const Command serveCommand{
    .name = "serve",
    .summary = "serve a venue folder as a mapping service does",
    .options = {{"--data", "DIR", "the venue folder to serve", readText, required},
                {"--port", "P", "where to listen; 0 is any that is free",
                 readWholeBetween<0, 65'535>, orElse("0")},
                {"--listen", "ADDR", "the address to listen on", readText, orElse("127.0.0.1")},
                {"--client-id", "ID", "who may ask", readText, orElse("local")}},
    .about = serveFolder,
    .help = R"(Examples:
  tern generate --out mall
  tern serve --data mall --port 8080
  TERN_CLIENT_SECRET=open-sesame tern serve --data mall --client-id app

Serves one customer, whose id stands in full.json, until SIGINT or SIGTERM, and
says its address when it is ready. The secret is that of TERN_CLIENT_SECRET,
else "local". It is plain HTTP: listen to other machines only where nobody
reads along.
)"};

}  // namespace tern::command
