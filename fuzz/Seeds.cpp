// The same targets without libFuzzer, for any compiler: every seed, and each changed a number of
// times, always in the same way.
//
//   tern_fuzz_seeds [TARGET [FILE...]]
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/JsonMutator.hpp"
#include "fuzz/Target.hpp"

namespace tern::fuzz {
namespace {

constexpr std::size_t mostBytes = 20'000;
// The time is the tests' to bound; what is tried is always the same.
constexpr std::size_t inputsOfATarget = 400;

void runSeeds(const Target& target) {
  const std::vector<std::string> seeds = target.seeds();
  require(!seeds.empty(), "a target has inputs to begin with");
  for (const std::string& seed : seeds) target.run(seed);
  std::mt19937_64 random(7);
  const MutateBytes mutateBytes = [&](std::string bytes) {
    return mutateSomeBytes(std::move(bytes), random);
  };
  for (std::size_t i = seeds.size(); i < inputsOfATarget; ++i) {
    std::string input = seeds[i % seeds.size()];
    for (std::size_t rounds = 1 + i % 3; rounds > 0; --rounds) {
      input = target.takesJson ? JsonMutator(random(), mutateBytes)
                                     .mutate(input, seeds[random() % seeds.size()], mostBytes)
                               : mutateBytes(std::move(input));
    }
    target.run(input);
  }
  std::printf("%-14s %zu seeds, %zu inputs\n", std::string(target.name).c_str(), seeds.size(),
              std::max(seeds.size(), inputsOfATarget));
  std::fflush(stdout);
}

std::string contentsOf(const char* file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace
}  // namespace tern::fuzz

int main(int count, char** words) {
  using namespace tern::fuzz;
  const Target* const chosen = count > 1 ? findTarget(words[1]) : nullptr;
  if (count > 1 && chosen == nullptr) {
    std::fprintf(stderr, "there is no target %s\n", words[1]);
    return 2;
  }
  isolate();
  for (int i = 2; i < count; ++i) chosen->run(contentsOf(words[i]));
  if (count > 2) return 0;
  for (const Target* target : targets()) {
    if (chosen == nullptr || chosen == target) runSeeds(*target);
  }
  return 0;
}
