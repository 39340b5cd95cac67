#include "bench/Bench.hpp"

#include <malloc.h>

#include <algorithm>

namespace tern::bench {

namespace {

volatile double kept = 0;

}  // namespace

double secondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

std::vector<std::vector<double>> race(const std::vector<Contender>& contenders, int rounds) {
  std::vector<std::vector<double>> seconds(contenders.size());
  for (const Contender& contender : contenders) contender.work();
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      seconds[i].push_back(secondsOf(contenders[i].work));
    }
  }
  return seconds;
}

double ratioOf(const std::vector<double>& seconds, const std::vector<double>& peerSeconds) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < seconds.size(); ++i) ratios.push_back(seconds[i] / peerSeconds[i]);
  return median(std::move(ratios));
}

std::size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void keep(double value) { kept = value; }

}  // namespace tern::bench
