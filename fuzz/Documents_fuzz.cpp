// Whole venues: documents are loaded, and routes, alternatives, tours and what is nearest asked of
// whatever came of them.
#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/SeedDocuments.hpp"
#include "fuzz/Target.hpp"
#include "fuzz/VenueChecks.hpp"

namespace tern::fuzz {
namespace {

void run(const std::string& text) {
  const JsonResult documents = decodeJson(text);
  if (documents.error) return;
  const auto venue = venueOf(documents.value);
  venue->loadGridData();
  venue->loadKDTree();
  checkVenue(*venue);
}

std::vector<std::string> seeds() {
  std::vector<std::string> texts;
  for (const Value& documents : {smallVenue(), ringVenue(), thinnedSample()}) {
    texts.push_back(encodeJson(documents, JsonLayout::compact));
  }
  return texts;
}

}  // namespace

extern const Target documentsTarget{
    .name = "documents", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
