#include "TernCoreKit/platform/detail/common/SharedWork.hpp"

#include <algorithm>
#include <new>
#include <thread>
#include <vector>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/platform/detail/common/Processors.hpp"

namespace tern::inline v5::detail {

void shareWork(std::size_t pieces, const std::function<void(Pieces&)>& work) {
  Pieces left(pieces);
  std::atomic<bool> hasRunOut = false;
  const auto attemptWork = [&] {
    if (attempt([&] { work(left); })) return;
    hasRunOut = true;
    left.stop();
  };
  std::vector<std::thread> helpers;
  const std::size_t most = std::min<std::size_t>(pieces, usableProcessors());
  attempt([&] {
    while (helpers.size() + 1 < most) helpers.emplace_back(attemptWork);
  });
  attemptWork();
  for (std::thread& helper : helpers) helper.join();
  if (hasRunOut) throw std::bad_alloc();
}

}  // namespace tern::detail
