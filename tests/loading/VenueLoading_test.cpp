// What tests/tools/tern/VenueFolder_test.cpp says of folders holds; here the documents are handed
// over.
#include "TernCoreKit/loading/VenueLoading.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/JoinedVenues.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern {
namespace {

using testing::ElementsAre;

class VenueLoading : public testing::Test {
 protected:
  DocumentSource source() {
    return {{}, [this](const std::string& path) -> std::variant<std::string, TernError> {
              asked_.push_back(path);
              const auto found = documents_.find(path);
              if (found != documents_.end()) return found->second;
              return TernError::initWithErrorType(TernErrorTypeObjectNotFound, path + ": nothing");
            }};
  }
  template <class T>
  static std::string messageOf(const std::variant<std::shared_ptr<T>, TernError>& loaded) {
    const auto* error = std::get_if<TernError>(&loaded);
    return error != nullptr ? error->code + " " + error->message : "loaded";
  }

  std::map<std::string, std::string> documents_ = {
      {"full.json", R"({"venues":{"items":[{"id":1,"name":"drawn"}]}})"},
      {"venue/1/full.json", encodeJson(test::twoFloorsVenueDocument(), JsonLayout::compact)},
      {"venue/1/building/1/full.json",
       encodeJson(test::twoFloorsBuildingDocument(), JsonLayout::compact)}};
  std::vector<std::string> asked_;
};

TEST_F(VenueLoading, documentsThatAreHandedOverMakeAVenueWithItsGraph) {
  const auto loaded = loadVenue(source());
  ASSERT_EQ(messageOf(loaded), "loaded");
  const auto& venue = *std::get<std::shared_ptr<TernActiveVenue>>(loaded);
  EXPECT_NE(venue.globalASGrid(), nullptr);
  EXPECT_NE(venue.nearestElement(), nullptr);
  EXPECT_THAT(asked_,
              ElementsAre("full.json", "venue/1/full.json", "venue/1/building/1/full.json"));
}

TEST_F(VenueLoading, onlyWhatIsNeededIsAskedFor) {
  EXPECT_EQ(messageOf(loadVenue(source(), 1)), "loaded");
  EXPECT_THAT(asked_, ElementsAre("venue/1/full.json", "venue/1/building/1/full.json"));
}

TEST_F(VenueLoading, errorsNameTheDocument) {
  EXPECT_EQ(messageOf(loadVenue(source(), 2)),
            "TN007 there is no venue 2 in full.json; it has 1 (drawn)");
  EXPECT_EQ(messageOf(loadVenue(source(), 1, 9)),
            "TN007 there is no building 9 in venue/1/full.json; it has 1");
  documents_["venue/1/building/1/full.json"] = "[]";
  EXPECT_EQ(messageOf(loadVenue(source())),
            "TN003 venue/1/building/1/full.json: holds no JSON object");
  documents_.erase("venue/1/building/1/full.json");
  EXPECT_EQ(messageOf(loadVenue(source())), "TN007 venue/1/building/1/full.json: nothing");
  documents_["full.json"] = R"({"venues":{"items":[{"id":1},{"id":2}]}})";
  EXPECT_EQ(messageOf(loadVenue(source())), "TN006 name one of the venues 1, 2");
  documents_.clear();
  EXPECT_EQ(messageOf(loadVenue(source(), 1)), "TN007 full.json: nothing");
  EXPECT_EQ(messageOf(readVenues(source())), "TN007 full.json: nothing");
}

TEST_F(VenueLoading, whereMemoryRunsOutThereIsAnError) {
  std::string message;
  const auto from = source();
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread, [&] { message = messageOf(loadVenue(from)); },
      [&] {
        ASSERT_TRUE(message.empty() || message == "loaded" || message.starts_with("TN")) << message;
        message.clear();
      },
      test::Throwing::badAlloc);
  EXPECT_GT(failed, 10);
}

TEST_F(VenueLoading, joinedVenuesHaveTheirGraph) {
  const auto joined =
      joinVenues({test::rowVenue(1, {{103, "2:201"}}), test::rowVenue(2, {{201, "1:103"}})});
  ASSERT_NE(joined, nullptr);
  EXPECT_NE(joined->globalASGrid(), nullptr);
  EXPECT_EQ(joined->dictOfActiveVenues().size(), 2U);
  EXPECT_NE(joinVenues({}), nullptr);
}

}  // namespace
}  // namespace tern
