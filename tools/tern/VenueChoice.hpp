// What was loaded of a customer's venues, or how the call ends without it.
//
// Threads: any. Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tools/tern/Failure.hpp"

namespace tern::command {

template <class T>
using Loaded = std::variant<std::shared_ptr<T>, Failure>;

Failure notLoaded(TernErrorType type, std::string line);
Failure notFound(std::string line);

// The same for an error of the library's. Where a choice is missing, a word of the call is.
Failure notLoaded(TernError error);

// The ids, or that of the only venue where there are none.
std::variant<std::vector<std::int64_t>, Failure> chosenVenues(const TernVenueCollection& venues,
                                                              const std::string& place,
                                                              std::vector<std::int64_t> ids);

template <class T>
Loaded<T> orFailure(std::variant<std::shared_ptr<T>, TernError> loaded) {
  if (auto* error = std::get_if<TernError>(&loaded)) return notLoaded(std::move(*error));
  return std::get<std::shared_ptr<T>>(std::move(loaded));
}

}  // namespace tern::command
