// The venues that a service answers about. Each is loaded when it is first asked about, once, and
// stays as it is.
//
// Ownership: holds the venues. Threads: any; who asks about a venue while it is loaded waits.
// Fails: by an answer of a service, never by leaving a venue half loaded: the next one to ask loads
// it anew.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "tools/service/ServedAnswer.hpp"

namespace tern::service {

using SharedAnswers = std::shared_ptr<const TernAnswers>;

struct VenueList {
  std::vector<std::int64_t> ids = {};
  // Null when it cannot be loaded.
  std::function<SharedAnswers(std::int64_t id)> load = {};
  // What is meant where no venue is named; null: the only one.
  SharedAnswers meant = nullptr;
};

class ServedVenues {
 public:
  explicit ServedVenues(VenueList list);

  // The venue of that id; of an empty text what is meant by it.
  std::variant<SharedAnswers, ServedAnswer> find(std::string_view id);

 private:
  struct Venue {
    std::int64_t id;
    Mutex mutex;
    SharedAnswers answers TERN_GUARDED_BY(mutex);
  };

  Venue* venueOf(std::string_view id);

  const std::function<SharedAnswers(std::int64_t)> load_;
  const SharedAnswers meant_;
  // "1, 2"
  std::string names_;
  std::vector<std::unique_ptr<Venue>> venues_;
};

}  // namespace tern::service
