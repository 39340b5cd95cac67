/// @file
/// The process-wide notification service: named events with a payload, for whoever listens.
///
///     const ObserverToken token = addObserver([](std::string_view name, const Value& payload) {
///       std::cerr << name << ' ' << payload["endpoint"].text() << '\n';
///     });
///     removeObserver(token);
///
/// Threads: every function from any, also from within an observer.
/// Fails: never.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// Name and payload are valid only during the call. It is called on the thread that posts, outside
/// every lock of the library, so it must be safe to call from several at once.
/// REQUIRES: it does not throw.
using NotificationObserver = std::function<void(std::string_view name, const Value& payload)>;

/// Stands for an observer until it is removed; 0 for none.
enum class ObserverToken : std::uint64_t {};

/// Observers hear of every event, in the order in which they were added.
TERN_API ObserverToken addObserver(NotificationObserver observer);

/// No call of the observer begins after this one has returned, and none is running any more: what
/// the observer uses may be freed then. It waits for the calls that other threads have begun, so
/// that the caller must hold no lock which the observer takes.
///
/// From within an observer, this one or another, it does not wait: what the observer uses may then
/// be freed only by what the observer itself owns, a shared_ptr that it has captured, say, which it
/// lets go when the last of its calls has ended. A token that is not known means nothing.
TERN_API void removeObserver(ObserverToken token);

/// Calls every observer before it returns. One that is added meanwhile hears of later events only.
TERN_API void postNotification(std::string_view name, const Value& payload);

}  // namespace tern
