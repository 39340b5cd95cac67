#include "TernCoreKit/service/detail/LoadsInTurn.hpp"

#include <cstddef>
#include <memory>
#include <utility>

#include "TernCoreKit/platform/WorkQueue.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

namespace {

struct Row;

// A row that this thread is going through, and those that it was going through when it came to it.
class Turn {
 public:
  explicit Turn(const Row* row) : row_(row), outer_(std::exchange(innermost, this)) {}
  ~Turn() { innermost = outer_; }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

  // The one of that row on this thread; null without one.
  static Turn* of(const Row* row) {
    Turn* turn = innermost;
    while (turn != nullptr && turn->row_ != row) turn = turn->outer_;
    return turn;
  }

  bool isToGoOn = false;

 private:
  static thread_local Turn* innermost;

  const Row* row_;
  Turn* outer_;
};

thread_local Turn* Turn::innermost = nullptr;

struct Row : std::enable_shared_from_this<Row> {
  std::vector<std::int64_t> ids;
  std::function<void(std::int64_t, LoadNext)> load;
  std::function<void(bool)> finish;
  std::size_t next = 0;

  void goOn() {
    const auto hand = [this] {
      backgroundQueue()->run([self = shared_from_this()] { self->takeTurn(); });
    };
    if (!attempt(hand)) takeTurn();
  }

  // Where the queue and the loads do all at once, the next one would begin inside the one before,
  // and thousands would fill the stack; it begins behind it instead.
  void takeTurn() {
    if (Turn* outer = Turn::of(this)) {
      outer->isToGoOn = true;
      return;
    }
    Turn turn(this);
    do {
      turn.isToGoOn = false;
      loadNext();
    } while (turn.isToGoOn);
  }

  void loadNext() {
    if (next == ids.size()) return finish(true);
    const auto begin = [this] { load(ids[next++], [self = shared_from_this()] { self->goOn(); }); };
    if (!attempt(begin)) finish(false);
  }
};

}  // namespace

void loadInTurn(std::vector<std::int64_t> ids, std::function<void(std::int64_t, LoadNext)> load,
                std::function<void(bool)> finish) {
  auto row = std::make_shared<Row>();
  row->ids = std::move(ids);
  row->load = std::move(load);
  row->finish = std::move(finish);
  row->goOn();
}

}  // namespace tern::detail
