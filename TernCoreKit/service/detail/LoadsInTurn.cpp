#include "TernCoreKit/service/detail/LoadsInTurn.hpp"

#include <cstddef>
#include <memory>
#include <utility>

#include "TernCoreKit/platform/WorkQueue.hpp"

namespace tern::inline v5::detail {

namespace {

struct Row : std::enable_shared_from_this<Row> {
  std::vector<std::int64_t> ids;
  std::function<void(std::int64_t, LoadNext)> load;
  std::function<void()> finish;
  std::size_t next = 0;

  void goOn() {
    backgroundQueue()->run([self = shared_from_this()] { self->loadNext(); });
  }

  void loadNext() {
    if (next == ids.size()) return finish();
    load(ids[next++], [self = shared_from_this()] { self->goOn(); });
  }
};

}  // namespace

void loadInTurn(std::vector<std::int64_t> ids, std::function<void(std::int64_t, LoadNext)> load,
                std::function<void()> finish) {
  auto row = std::make_shared<Row>();
  row->ids = std::move(ids);
  row->load = std::move(load);
  row->finish = std::move(finish);
  row->goOn();
}

}  // namespace tern::detail
