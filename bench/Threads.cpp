// Several threads that search one graph: how much more they answer together than one does.
#include <algorithm>
#include <cstdio>
#include <random>
#include <thread>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/LoadedVenue.hpp"

namespace tern::bench {

namespace {

constexpr std::int64_t everything = 100;
constexpr int rounds = 9;

struct Question {
  std::shared_ptr<TernWaypoint> from;
  std::shared_ptr<TernWaypoint> to;
};

std::vector<Question> randomQuestions(const TernASGrid& grid, std::size_t count) {
  std::mt19937_64 random(10);
  const auto& waypoints = grid.waypoints();
  std::vector<Question> questions;
  while (questions.size() < count) {
    questions.push_back(
        {waypoints[random() % waypoints.size()], waypoints[random() % waypoints.size()]});
  }
  return questions;
}

using Answer = void (*)(const TernActiveVenue&, const Question&);

void route(const TernActiveVenue& venue, const Question& question) {
  venue.wayfind(question.from, question.to, everything);
}

void alternatives(const TernActiveVenue& venue, const Question& question) {
  venue.wayfind(question.from, question.to, {}, everything, [](const auto&, const auto&) {});
}

// Each of the threads answers all questions.
double secondsOn(unsigned threadCount, const TernActiveVenue& venue,
                 const std::vector<Question>& questions, Answer answer) {
  const auto answerAll = [&] {
    for (const Question& question : questions) answer(venue, question);
  };
  return secondsOf([&] {
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < threadCount; ++i) threads.emplace_back(answerAll);
    for (std::thread& thread : threads) thread.join();
  });
}

void measure(const char* title, std::size_t waypoints, std::size_t count, Answer answer) {
  const auto venue = assemble(makeIndoorVenue(waypoints, IdOrder::walking));
  venue->loadGridData();
  const auto questions = randomQuestions(*venue->globalASGrid(), count);
  const unsigned threadCount = std::max(2U, std::thread::hardware_concurrency());
  std::vector<double> gains;
  for (int round = 0; round <= rounds; ++round) {
    const double alone = secondsOn(1, *venue, questions, answer);
    const double together = secondsOn(threadCount, *venue, questions, answer);
    // The first round makes the states that the later ones use again.
    if (round > 0) gains.push_back(threadCount * alone / together);
  }
  std::printf("%-14s %9zu  %u threads answer %.2f times as much as one\n", title,
              venue->globalASGrid()->nodeCount(), threadCount, median(gains));
  std::fflush(stdout);
}

}  // namespace

void benchThreads() {
  measure("routes", 1'000, 20'000, route);
  measure("routes", 10'000, 2'000, route);
  measure("routes", 100'000, 150, route);
  measure("alternatives", 1'000, 500, alternatives);
  measure("alternatives", 10'000, 30, alternatives);
}

}  // namespace tern::bench
