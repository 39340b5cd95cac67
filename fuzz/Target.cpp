#include "fuzz/Target.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "fuzz/AnsweringTransport.hpp"
#include "tests/support/WorkQueues.hpp"

namespace tern::fuzz {

extern const Target jsonTarget;
extern const Target documentsTarget;
extern const Target joinedTarget;
extern const Target requestsTarget;
extern const Target treeArchiveTarget;
extern const Target hubTarget;
extern const Target httpTarget;
extern const Target redirectsTarget;
extern const Target serviceTarget;
extern const Target servedBytesTarget;
extern const Target wordsTarget;
#ifdef TERN_WITH_IMPORT
extern const Target importNetworkTarget;
extern const Target importFeedTarget;
extern const Target importArchiveTarget;
extern const Target importImdfTarget;
extern const Target importOsmTarget;
extern const Target importPbfTarget;
#endif

namespace {

constexpr std::array table = {
    &jsonTarget,          &documentsTarget,   &joinedTarget,        &requestsTarget,
    &treeArchiveTarget,   &hubTarget,         &httpTarget,          &redirectsTarget,
    &serviceTarget,       &servedBytesTarget, &wordsTarget,
#ifdef TERN_WITH_IMPORT
    &importNetworkTarget, &importFeedTarget,  &importArchiveTarget, &importOsmTarget,
    &importPbfTarget,     &importImdfTarget,
#endif
};

}  // namespace

std::span<const Target* const> targets() { return table; }

const Target* findTarget(std::string_view name) {
  const auto* const found = std::ranges::find(table, name, [](const Target* t) { return t->name; });
  return found != table.end() ? *found : nullptr;
}

void isolate() {
  setLogSink([](std::string_view line) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    require(std::ranges::none_of(line, isControl), "a log line is one line");
  });
  setBackgroundQueue(std::make_shared<test::RunNowQueue>());
  setHttpTransport(std::make_shared<AnsweringTransport>(
      [](const HttpRequest&) { return HttpResponse{.error = "no network"}; }));
}

void require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "BROKEN: %s\n", promise);
  std::abort();
}

}  // namespace tern::fuzz
