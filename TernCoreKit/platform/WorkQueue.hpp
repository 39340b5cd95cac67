/// @file
/// Runs the library's background work. A host application may put its own queue (its thread pool,
/// its event loop) in place of the default one, which has two threads of its own.
///
/// Tasks start in the order in which they come, but do not wait for each other: two may run at
/// once.
#pragma once

#include <functional>
#include <memory>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Runs tasks on threads of its own.
///
/// Ownership: shared by those who give it tasks.
/// Threads: any.
/// Fails: by dropping tasks, at its end only.
class TERN_API WorkQueue {
 public:
  virtual ~WorkQueue() = default;

  /// Runs the task once, on any thread, or never when the queue comes to its end before. The task
  /// may run before the call returns, so a caller holds no lock that the task takes.
  /// Threads: may be called from any, also from within a task.
  /// REQUIRES: the task is not empty, does not throw and ends by itself.
  /// Ownership: the queue owns the task from here on and destroys it as soon as it has run.
  virtual void run(std::function<void()> task) = 0;
};

/// The process-wide queue for background work; never null. The default one starts its threads with
/// the first tasks. When the process ends (main returns, or somebody calls exit), it waits for the
/// tasks that are running and drops those that have not begun; later ones are dropped too.
/// Threads: any.
TERN_API std::shared_ptr<WorkQueue> backgroundQueue();

/// Puts a queue in the place of the current one; null brings the default back. Tasks that the old
/// queue has taken stay with it.
/// Threads: any.
TERN_API void setBackgroundQueue(std::shared_ptr<WorkQueue> queue);

}  // namespace tern
