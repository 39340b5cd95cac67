#include "tools/tern/VenueFolder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <variant>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/MadeRecords.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using test::Drawing;
using test::ids;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const char* const venueFile = "venue/1/full.json";
const char* const buildingFile = "venue/1/building/1/full.json";

const Drawing onePath{.floors = {{.lines = {"A-B"}}}, .paths = {"A-B"}};

// A folder of one customer with the venue 1, which has one building.
class VenueFolder : public testing::Test {
 protected:
  VenueFolder() {
    write("full.json", R"({"id": 5, "name": "customer", "venues": {"items": [
        {"id": 1, "name": "Plaza"}]}})");
    Value venue = test::drawVenueDocument(onePath);
    venue.set("destinations", test::parsed(R"({"items": [{"id": 3,
        "locations": [{"mapId": 1, "waypointIds": [2]}]}]})"));
    write(venueFile, encodeJson(venue, JsonLayout::pretty));
    write(buildingFile, encodeJson(test::drawBuildingDocument(onePath), JsonLayout::compact));
  }

  void write(std::string_view name, std::string_view text) const { folder_.write(name, text); }
  void remove(std::string_view name) const { std::filesystem::remove_all(folder_.at(name)); }
  std::string at(std::string_view name) const { return folder_.at(name); }

  Loaded<TernActiveVenue> load(std::optional<std::int64_t> venue = std::nullopt,
                               std::optional<std::int64_t> building = std::nullopt) const {
    return loadVenue(folder_.path(), venue, building);
  }

  // The venue that must have been loaded.
  std::shared_ptr<TernActiveVenue> loaded(
      std::optional<std::int64_t> venue = std::nullopt,
      std::optional<std::int64_t> building = std::nullopt) const {
    auto result = load(venue, building);
    if (const auto* failure = std::get_if<Failure>(&result)) {
      ADD_FAILURE() << failure->error.message;
      return std::make_shared<TernActiveVenue>();
    }
    return std::get<std::shared_ptr<TernActiveVenue>>(result);
  }

  const TemporaryFolder folder_;
};

template <class T>
void expectFailure(const Loaded<T>& result, const std::string& code, const std::string& line,
                   ExitStatus status = ExitStatus::notLoaded) {
  const auto* failure = std::get_if<Failure>(&result);
  ASSERT_NE(failure, nullptr) << line;
  EXPECT_EQ(failure->error.message, line);
  EXPECT_EQ(failure->error.code, code);
  EXPECT_EQ(failure->status, status);
}

// TN003 is text that cannot be understood, TN006 a wrong call, TN007 something that is not there.

TEST_F(VenueFolder, aVenueComesAssembledWithItsGraph) {
  const auto venue = loaded();
  EXPECT_EQ(venue->id, Value(1));
  EXPECT_THAT(ids(venue->maps->getAll()), ElementsAre(1));
  EXPECT_THAT(ids(venue->destinations->getById(3)->waypoints), ElementsAre(2));
  EXPECT_EQ(venue->buildings->getAllFloors().at(0)->buildingId, Value(1));
  ASSERT_NE(venue->globalASGrid(), nullptr);
  const auto waypoints = venue->maps->getAllWaypoints();
  EXPECT_EQ(test::lettersOf(venue->wayfind(waypoints[0], waypoints[1], 100)), "AB");
}

TEST_F(VenueFolder, theSampleVenueIsLoadedWithoutAWordOfComplaint) {
  const test::CapturedLog log;
  const auto result = loadVenue(test::samplePath(), std::nullopt, std::nullopt);
  ASSERT_EQ(result.index(), 0U) << std::get<Failure>(result).sentence;
  const TernActiveVenue& venue = *std::get<0>(result);
  EXPECT_EQ(venue.globalASGrid()->nodeCount(), venue.maps->getAllWaypoints().size());
  EXPECT_GT(venue.globalASGrid()->linkCount(), venue.globalASGrid()->nodeCount());
}

TEST_F(VenueFolder, theCustomersVenuesAreListed) {
  const auto venues = readVenues(folder_.path());
  ASSERT_EQ(venues.index(), 0U);
  EXPECT_THAT(ids(std::get<0>(venues)->getAll()), ElementsAre(1));
}

TEST_F(VenueFolder, aVenueThatIsNamedNeedsNoCustomer) {
  remove("full.json");
  EXPECT_EQ(loaded(1)->id, Value(1));
}

TEST_F(VenueFolder, withSeveralVenuesOneMustBeNamed) {
  write("full.json", R"({"venues": {"items": [{"id": 1, "name": "Plaza"}, {"id": 2},
      {"id": 3, "name": "Two\nlines"}]}})");
  expectFailure(load(), "TN006", "--venue: name one of the venues 1 (Plaza), 2, 3 (Two lines)",
                ExitStatus::wrongWords);
  EXPECT_EQ(loaded(1)->id, Value(1));
}

TEST_F(VenueFolder, aLongListOfVenuesIsCut) {
  Value items = Value::list();
  for (int id = 1; id <= 30; ++id) items.append(Value::map({{"id", id}}));
  const Value customer = Value::map({{"venues", Value::map({{"items", std::move(items)}})}});
  write("full.json", encodeJson(customer, JsonLayout::compact));
  const auto result = load(31);
  EXPECT_THAT(std::get<Failure>(result).sentence, testing::EndsWith(" 19, 20, ..."));
}

TEST_F(VenueFolder, aVenueThatIsNotThereListsThoseThatAre) {
  expectFailure(load(9), "TN007",
                "there is no venue 9 in " + folder_.path().string() + "; it has 1 (Plaza)");
}

TEST_F(VenueFolder, aVenueWithoutItsFileIsMissing) {
  remove(venueFile);
  expectFailure(load(), "TN007", at(venueFile) + ": no such file");
  expectFailure(load(1), "TN007", at(venueFile) + ": no such file");
}

TEST_F(VenueFolder, aBuildingWithoutItsFileIsMissing) {
  remove(buildingFile);
  expectFailure(load(), "TN007", at(buildingFile) + ": no such file");
}

TEST_F(VenueFolder, allBuildingsAreLoadedInAscendingOrderOfTheirIds) {
  write(venueFile, R"({"id": 1, "buildings": {"items": [{"id": 10}, {"id": 9}, {"id": 2}]}})");
  for (const char* id : {"2", "9", "10"}) {
    const std::string number(id);
    write("venue/1/building/" + number + "/full.json",
          R"({"id": )" + number + R"(, "floors": {"items": [{"id": 1, "map": {"id": )" + number +
              "}}]}}");
  }
  EXPECT_THAT(ids(loaded()->maps->getAll()), ElementsAre(2, 9, 10));
  // Of one building no other one's file is read.
  remove("venue/1/building/9");
  EXPECT_THAT(ids(loaded(std::nullopt, 10)->maps->getAll()), ElementsAre(10));
}

TEST_F(VenueFolder, aBuildingThatIsNotThereListsThoseThatAre) {
  expectFailure(load(1, 4), "TN007", "there is no building 4 in " + at(venueFile) + "; it has 1");
}

TEST_F(VenueFolder, aVenueWithoutBuildingsIsNotLoaded) {
  for (const char* document :
       {"{}", R"({"id": 1, "buildings": {"items": []}})", R"({"id": 1, "buildings": 7})"}) {
    write(venueFile, document);
    expectFailure(load(), "TN007", at(venueFile) + ": has no buildings");
  }
}

TEST_F(VenueFolder, aVenueWithAnUnknownKeyHasNoBuildingsLeft) {
  test::CapturedLog log;
  write(venueFile, R"({"id": 1, "odd": 1, "buildings": {"items": [{"id": 1}]}})");
  expectFailure(load(), "TN007", at(venueFile) + ": has no buildings");
  EXPECT_THAT(log.take(), ElementsAre(HasSubstr("odd")));
}

TEST_F(VenueFolder, aCustomerWithoutVenuesHasNoneToChoose) {
  write("full.json", R"({"venues": {"items": []}})");
  expectFailure(load(), "TN007", at("full.json") + ": lists no venue");
  expectFailure(load(9), "TN007",
                "there is no venue 9 in " + folder_.path().string() + "; it has none");
  write("full.json", R"({"id": 5})");
  expectFailure(load(), "TN003", at("full.json") + ": has no \"venues\"");
}

TEST_F(VenueFolder, eachFileThatIsNoJsonIsNamed) {
  for (const char* file : {"full.json", venueFile, buildingFile}) {
    const std::string whole = folder_.read(file);
    for (const char* text : {"", "{", "nonsense", "{\"id\": 1} x", "\xFF"}) {
      write(file, text);
      const auto result = load();
      ASSERT_EQ(result.index(), 1U) << file << ": " << text;
      const TernError& error = std::get<Failure>(result).error;
      EXPECT_EQ(error.code, "TN003");
      EXPECT_THAT(error.message, StartsWith(at(file) + ": "));
      EXPECT_THAT(error.message, testing::Not(HasSubstr("\n")));
    }
    for (const char* text : {"[]", "null", "7", "\"text\""}) {
      write(file, text);
      expectFailure(load(), "TN003", at(file) + ": holds no JSON object");
    }
    write(file, whole);
  }
  EXPECT_EQ(loaded()->id, Value(1));
}

TEST_F(VenueFolder, whatIsNoPlainFileIsNotOpened) {
  for (const char* file : {"full.json", venueFile, buildingFile}) {
    const std::string whole = folder_.read(file);
    remove(file);
    std::filesystem::create_directory(at(file));
    expectFailure(load(), "TN007", at(file) + ": is no file");
    remove(file);
    // Opening a pipe that nobody writes to would wait for ever.
    ASSERT_EQ(mkfifo(at(file).c_str(), 0600), 0);
    expectFailure(load(), "TN007", at(file) + ": is no file");
    remove(file);
    std::filesystem::create_symlink("nowhere", at(file));
    expectFailure(load(), "TN007", at(file) + ": no such file");
    remove(file);
    write(file, whole);
  }
}

TEST_F(VenueFolder, aFileThatIsTooLargeIsNotRead) {
  // A hole: it takes no room on the disk.
  std::filesystem::resize_file(at(buildingFile), maximumDocumentBytes + 1);
  expectFailure(load(), "TN003", at(buildingFile) + ": is larger than 1 GiB");
}

TEST_F(VenueFolder, aFolderThatIsNotThereIsNamed) {
  const std::string nowhere = at("nowhere");
  expectFailure(readVenues(nowhere), "TN007", "there is no folder " + nowhere);
  expectFailure(loadVenue(nowhere, std::nullopt, std::nullopt), "TN007",
                "there is no folder " + nowhere);
  expectFailure(loadVenue(nowhere, 1, std::nullopt), "TN007", "there is no folder " + nowhere);
  expectFailure(readVenues(at("full.json")), "TN007", "there is no folder " + at("full.json"));
}

}  // namespace
}  // namespace tern::command
