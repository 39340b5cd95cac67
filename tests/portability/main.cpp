// Answers requests as `tern batch` does, with nothing but the library and the reader of venue
// folders, so that it is quickly built for any machine.
//
//   portable_answers FOLDER VENUE... <requests >answers
#include <cstdint>
#include <cstdio>
#include <future>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace {

using Venue = std::shared_ptr<tern::TernActiveVenue>;

class Listener final : public tern::TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { isLoaded.set_value(); }

  std::promise<void> isLoaded;
};

tern::TernAnswers answersOf(const std::vector<Venue>& venues) {
  if (venues.size() == 1) return tern::TernAnswers(venues.front());
  const auto listener = std::make_shared<Listener>();
  auto joined = tern::TernMultiActiveVenues::initWithActiveVenues(venues, listener);
  listener->isLoaded.get_future().wait();
  return tern::TernAnswers(std::move(joined));
}

}  // namespace

int main(int count, char** words) {
  tern::setLogSink([](std::string_view) {});
  std::vector<Venue> venues;
  for (int i = 2; i < count; ++i) {
    auto loaded = tern::command::loadVenue(words[1], std::stoll(words[i]), std::nullopt);
    const auto* venue = std::get_if<Venue>(&loaded);
    if (venue == nullptr) {
      std::fprintf(stderr, "venue %s of %s could not be loaded\n", words[i], words[1]);
      return 1;
    }
    venues.push_back(*venue);
  }
  if (venues.empty()) return 2;
  const tern::TernAnswers answers = answersOf(venues);
  std::ios::sync_with_stdio(false);
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << answers.answerText(std::move(line)) << '\n';
  }
}
