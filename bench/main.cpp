// Measures the library beside named peers: `tern_bench` runs everything, `tern_bench NAME...`
// those.
#include <cstdio>
#include <string_view>

#include "TernCoreKit/platform/Log.hpp"
#include "bench/Bench.hpp"

namespace {

struct Named {
  std::string_view name;
  void (*run)();
};

constexpr Named benchmarks[] = {
    {"decode", tern::bench::benchDecode},   {"records", tern::bench::benchRecords},
    {"graph", tern::bench::benchGraph},     {"search", tern::bench::benchSearch},
    {"spatial", tern::bench::benchSpatial}, {"alternatives", tern::bench::benchAlternatives},
    {"threads", tern::bench::benchThreads}, {"joined", tern::bench::benchJoined},
    {"tour", tern::bench::benchTour},       {"places", tern::bench::benchPlaces},
    {"walks", tern::bench::benchWalks},     {"serving", tern::bench::benchServing}};

bool runNamed(std::string_view name) {
  for (const Named& each : benchmarks) {
    if (each.name != name) continue;
    each.run();
    return true;
  }
  return false;
}

}  // namespace

int main(int count, char** arguments) {
  tern::setLogSink([](std::string_view) {});
  if (count == 1) {
    for (const Named& each : benchmarks) each.run();
    return 0;
  }
  for (int i = 1; i < count; ++i) {
    if (runNamed(arguments[i])) continue;
    std::fprintf(stderr, "no such benchmark: %s; there are", arguments[i]);
    for (const Named& each : benchmarks) std::fprintf(stderr, " %s", each.name.data());
    std::fputc('\n', stderr);
    return 2;
  }
  return 0;
}
