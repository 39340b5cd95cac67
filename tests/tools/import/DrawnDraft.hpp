// What a reader makes of a building that a test draws, and what it tells of it.
//
//   const Draft draft = test::drawnDraft(building, "site", readImdf);
//   EXPECT_THAT(test::toldLines(draft), ElementsAre("lost dangling"));
//
// Threads: one. Fails: by the test's expectations.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/TemporaryFolder.hpp"
#include "tools/import/draft/ReadDraft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::test {

using DraftReader = imports::ReadDraft (*)(const imports::SourceFiles&);

// Written as a file or a folder of this name.
template <class Drawn>
imports::ReadDraft drawnRead(const Drawn& drawn, const char* name, DraftReader read) {
  const TemporaryFolder folder;
  drawn.writeTo(folder.at(name));
  return read(imports::openSource(folder.at(name)).files);
}

template <class Drawn>
imports::Draft drawnDraft(const Drawn& drawn, const char* name, DraftReader read) {
  imports::ReadDraft made = drawnRead(drawn, name, read);
  EXPECT_EQ(made.error, std::nullopt);
  return std::move(made.draft);
}

// Of each record that a draft or a plan tells of: "way/5 leadsNowhere".
template <class Made>
std::vector<std::string> toldLines(const Made& made) {
  std::vector<std::string> lines;
  for (const imports::Oddity& oddity : made.oddities.told()) {
    lines.push_back(oddity.id + " " + std::string(oddity.kind));
  }
  return lines;
}

}  // namespace tern::test
