// Follows what a hub asks of its service, and what comes of it.
//
//   TERN_CLIENT_SECRET=local follow_notifications http://127.0.0.1:8080
#include <TernCoreKit/TernCoreKit.hpp>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Observers are called on the thread that posts; this one writes each line with one call.
void show(std::string_view name, const tern::Value& payload) {
  std::string line = std::string(name) + " " + std::string(payload["endpoint"].text());
  if (const tern::Value* error = payload.find("error")) {
    line += ": " + std::string((*error)["message"].text());
  }
  std::puts(line.c_str());
}

void loadVenue(tern::TernHub& hub, std::int64_t venueId) {
  std::promise<void> done;
  hub.populateVenueByVenueId(venueId, [&](const auto&, const auto&) { done.set_value(); });
  done.get_future().wait();
}

}  // namespace

int main(int count, char** words) {
  const char* secret = std::getenv("TERN_CLIENT_SECRET");
  if (count != 2 || secret == nullptr) {
    std::fputs("use: TERN_CLIENT_SECRET=... follow_notifications HOST\n", stderr);
    return 2;
  }
  const tern::ObserverToken observer = tern::addObserver(show);
  const auto hub = tern::TernHub::initWithCustomerId(1, true, words[1], "local", secret);
  loadVenue(*hub, 1);
  loadVenue(*hub, 99);
  tern::removeObserver(observer);
}
