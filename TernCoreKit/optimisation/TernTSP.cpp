#include "TernCoreKit/optimisation/TernTSP.hpp"

#include <algorithm>
#include <optional>
#include <string>

#include "TernCoreKit/optimisation/detail/ShortestPaths.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5 {

namespace {

class Tour {
 public:
  explicit Tour(TernTSP::Matrix lengths)
      : lengths_(std::move(lengths)), paths_(lengths_), all_((1U << lengths_.size()) - 1) {}

  double cost() const {
    double cost = std::numeric_limits<double>::infinity();
    for (std::size_t end = 1; end < lengths_.size(); ++end) {
      const double length = paths_.length(end, all_);
      if (length < cost) cost = length;
    }
    return cost;
  }

  std::vector<std::size_t> order() const {
    std::vector<std::size_t> backwards;
    std::uint32_t left = all_;
    while (backwards.size() + 1 < lengths_.size()) {
      backwards.push_back(lastOf(left, backwards));
      left &= ~(1U << backwards.back());
    }
    backwards.push_back(0);
    std::ranges::reverse(backwards);
    return backwards;
  }

 private:
  // The best end of a path over the stops that are left, when those behind it are settled.
  std::size_t lastOf(std::uint32_t left, const std::vector<std::size_t>& backwards) const {
    std::optional<std::size_t> best;
    double bestLength = 0;
    for (std::size_t end = 1; end < lengths_.size(); ++end) {
      if (TernTSP::notInt(static_cast<std::uint32_t>(end), left)) continue;
      double length = paths_.length(end, left);
      if (!backwards.empty()) length += lengths_[backwards.back()][end];
      if (best && !(length < bestLength)) continue;
      best = end;
      bestLength = length;
    }
    return best.value_or(0);
  }

  const TernTSP::Matrix lengths_;
  const detail::ShortestPaths paths_;
  const std::uint32_t all_;
};

// Without a stop where there is no memory even for one.
TernTSP::Result onlyTheStart() {
  TernTSP::Result result;
  detail::attempt([&] { result.tour.push_back(0); });
  return result;
}

std::string isUnsolved(std::size_t stops) {
  return "a tour of " + std::to_string(stops) + " stops is not solved";
}

}  // namespace

TernTSP::Result TernTSP::solve(const Matrix& lengths) {
  if (lengths.size() > mostStops) {
    detail::attempt(
        [&] { logSdk(isUnsolved(lengths.size()) + ", only of " + std::to_string(mostStops)); });
  }
  if (lengths.size() < 2 || lengths.size() > mostStops) return onlyTheStart();
  Result result;
  const auto order = [&] {
    Matrix square = lengths;
    for (auto& row : square) row.resize(lengths.size());
    const Tour tour(std::move(square));
    result = {tour.order(), tour.cost()};
  };
  if (detail::attempt(order)) return result;
  detail::attempt([&] { logSdk("out of memory: " + isUnsolved(lengths.size())); });
  return onlyTheStart();
}

std::vector<std::uint32_t> TernTSP::combinations(int r, int n) {
  std::vector<std::uint32_t> subsets;
  if (r >= 0 && n <= 32) combination(0, 0, r, n, subsets);
  return subsets;
}

void TernTSP::combination(std::uint32_t set, int at, int r, int n,
                          std::vector<std::uint32_t>& subsets) {
  if (n - at < r) return;
  if (r == 0) {
    subsets.push_back(set);
    return;
  }
  for (int stop = at; stop < n; ++stop) {
    combination(set | 1U << stop, stop + 1, r - 1, n, subsets);
  }
}

}  // namespace tern
