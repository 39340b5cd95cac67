// What all benchmarks share: timing ours beside a peer in turn, and printing the ratios.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tern::bench {

double secondsOf(const std::function<void()>& work);

double median(std::vector<double> values);

// One thing that is measured: its name and the work, which is done once a round.
struct Contender {
  std::string name;
  std::function<void()> work;
};

// Runs all contenders in turn, round after round, after one round that does not count. Gives each
// one's seconds by round; the ratios of one round were taken under the same conditions.
std::vector<std::vector<double>> race(const std::vector<Contender>& contenders, int rounds);

// The median over the rounds of the one's time by the other's.
double ratioOf(const std::vector<double>& seconds, const std::vector<double>& peerSeconds);

// Bytes of heap in use now.
std::size_t heapInUse();

// Keeps the compiler from leaving out work whose result nobody reads.
void keep(double value);

// The benchmarks, by the name that the command line takes.
void benchDecode();
void benchRecords();
void benchGraph();
void benchSearch();
void benchSpatial();
void benchAlternatives();
void benchThreads();
void benchJoined();
void benchTour();
void benchPlaces();
void benchWalks();
void benchServing();

}  // namespace tern::bench
