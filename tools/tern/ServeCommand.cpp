#include "tools/tern/ServeCommand.hpp"

#include <csignal>

#include "tools/service/MappingService.hpp"
#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

std::optional<Failure> serveFolder(const Arguments& call, Output& answers) {
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGINT);
  sigaddset(&ends, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &ends, nullptr);
  service::MappingService service({.folder = call.data,
                                   .clientId = call.service.clientId,
                                   .clientSecret = call.service.clientSecret,
                                   .address = call.listen,
                                   .port = call.port});
  if (const auto error = service.start()) return notFound(*error);
  answers.write("Serving " + call.data + " at " + service.url() + "\n");
  answers.flush();
  int signal = 0;
  sigwait(&ends, &signal);
  service.stop();
  return std::nullopt;
}

}  // namespace tern::command
