#include "TernCoreKit/c/detail/JoinedTurn.hpp"

#include <condition_variable>
#include <utility>

#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5::detail {

// Hears when the list is empty.
class JoinedTurn::Leaving final : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { end(); }
  void multiVenueWayfindDataFailed() override { end(); }

  void end() {
    {
      const MutexLock lock(mutex_);
      hasEnded_ = true;
    }
    ended_.notify_all();
  }

  void wait() {
    MutexLock lock(mutex_);
    while (!hasEnded_) ended_.wait(lock);
  }

 private:
  Mutex mutex_;
  std::condition_variable_any ended_;
  bool hasEnded_ TERN_GUARDED_BY(mutex_) = false;
};

struct JoinedTurn::Shared {
  Mutex mutex;
  bool isTaken TERN_GUARDED_BY(mutex) = false;
  // Of the last one; null when there was none.
  std::shared_ptr<Leaving> leaving TERN_GUARDED_BY(mutex);
};

JoinedTurn::Shared& JoinedTurn::shared() {
  static Immortal<Shared> shared;
  return shared.value;
}

JoinedTurn::JoinedTurn() : leaving_(std::make_shared<Leaving>()) {}

std::shared_ptr<JoinedTurn> JoinedTurn::take() {
  std::shared_ptr<JoinedTurn> turn(new JoinedTurn);
  std::shared_ptr<Leaving> before;
  {
    const MutexLock lock(shared().mutex);
    if (std::exchange(shared().isTaken, true)) return nullptr;
    turn->isHeld_ = true;
    before = std::exchange(shared().leaving, nullptr);
  }
  if (before != nullptr) before->wait();
  return turn;
}

TernError JoinedTurn::isTaken() {
  return TernError::initWithErrorType(TernErrorTypeIncorrectObjectType,
                                      "joined venues are open already; close them first");
}

JoinedTurn::~JoinedTurn() {
  if (!isHeld_) return;
  const bool isLeaving =
      attempt([this] { TernMultiActiveVenues::initWithActiveVenues({}, leaving_); });
  const MutexLock lock(shared().mutex);
  shared().leaving = isLeaving ? leaving_ : nullptr;
  shared().isTaken = false;
}

}  // namespace tern::detail
