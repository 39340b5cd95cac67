// The same targets without libFuzzer, for any compiler: every seed, and each changed a number of
// times, always in the same way.
//
//   tern_fuzz_seeds                  all targets
//   tern_fuzz_seeds TARGET [COUNT]   one, with so many inputs
//   tern_fuzz_seeds TARGET FILE...   one, with the files only
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
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
// What a moment allows, under sanitizers too. What is tried is always the same.
constexpr std::size_t inputsOfATarget = 1'000;

// What is being tried, for who looks into why the process has ended.
const std::string* current = nullptr;

void keepCurrent(int /*signal*/) {
  const char* const name = "tern_fuzz_input";
  std::ofstream(name, std::ios::binary) << *current;
  std::fprintf(stderr, "the input is kept in %s\n", name);
}

void tryInput(const Target& target, const std::string& input) {
  current = &input;
  target.run(input);
}

void runSeeds(const Target& target, std::size_t inputs) {
  const std::vector<std::string> seeds = target.seeds();
  require(!seeds.empty(), "a target has inputs to begin with");
  for (const std::string& seed : seeds) tryInput(target, seed);
  std::mt19937_64 random(7);
  const MutateBytes mutateBytes = [&](std::string bytes) {
    return mutateSomeBytes(std::move(bytes), random);
  };
  for (std::size_t i = seeds.size(); i < inputs; ++i) {
    std::string input = seeds[i % seeds.size()];
    for (std::size_t rounds = 1 + i % 3; rounds > 0; --rounds) {
      input = target.takesJson ? JsonMutator(random(), mutateBytes)
                                     .mutate(input, seeds[random() % seeds.size()], mostBytes)
                               : mutateBytes(std::move(input));
    }
    tryInput(target, input);
  }
  std::printf("%-14s %zu seeds, %zu inputs\n", std::string(target.name).c_str(), seeds.size(),
              std::max(seeds.size(), inputs));
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
  std::signal(SIGABRT, keepCurrent);
  std::size_t inputs = count == 3 ? std::strtoul(words[2], nullptr, 10) : 0;
  if (count > 2 && inputs == 0) {
    for (int i = 2; i < count; ++i) tryInput(*chosen, contentsOf(words[i]));
    return 0;
  }
  if (inputs == 0) inputs = inputsOfATarget;
  for (const Target* target : targets()) {
    if (chosen == nullptr || chosen == target) runSeeds(*target, inputs);
  }
  return 0;
}
