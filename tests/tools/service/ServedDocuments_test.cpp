#include "tools/service/ServedDocuments.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::service {
namespace {

using testing::HasSubstr;

const std::string customer = "/QRVS/api/customer/5";

class ServedDocumentsTest : public testing::Test {
 protected:
  ServedDocumentsTest() {
    folder_.write("full.json", R"({"id":5,"generatedAt":1722758340139,"venues":{"items":[
        {"id":1,"externalId":"a"},{"id":2,"externalId":"b c"}]}})");
    folder_.write("venue/1/full.json", R"({"id":1,"recordHistory":{"updatedAt":"Mon, 1"},)"
                                       R"("generatedAt":"unused"})");
    folder_.write("venue/1/building/3/full.json", R"({"id":3})");
    folder_.write("venue/1/destinations.json", R"({"venueId":1})");
    folder_.write("venue/2/full.json", R"({"id":2,"recordHistory":{},"generatedAt":"unused"})");
    folder_.write("locale/full.json", "not JSON");
    folder_.write("map-template/calm/full.json", R"({"id":"calm"})");
    folder_.write("notes.json", "mine");
  }

  ServedAnswer ask(const std::string& path,
                   const std::optional<std::string>& stamp = std::nullopt) const {
    return documents_.answer(customer + path, stamp);
  }
  void expectError(int status, const ServedAnswer& answer) const {
    EXPECT_EQ(answer.status, status);
    const Value body = decodeJson(answer.body).value;
    EXPECT_EQ(body["statusCode"], Value(status)) << answer.body;
    EXPECT_NE(body["message"].text(), "");
  }

  test::TemporaryFolder folder_;
  ServedDocuments documents_{folder_.at("")};
};

TEST_F(ServedDocumentsTest, eachEndpointIsAFile) {
  for (const auto& [path, file] : {std::pair{"/full", "full.json"},
                                   {"/locale/full", "locale/full.json"},
                                   {"/map-template/calm/full", "map-template/calm/full.json"},
                                   {"/venue/1/full", "venue/1/full.json"},
                                   {"/venue/1/building/3/full", "venue/1/building/3/full.json"}}) {
    const ServedAnswer answer = ask(path + std::string("?v=4.12&locale=en-US&geojson=false"));
    EXPECT_EQ(answer.status, 200) << path;
    EXPECT_EQ(answer.body, folder_.read(file)) << path;
  }
}

TEST_F(ServedDocumentsTest, customersVenuesAreThoseOfTheExternalIds) {
  const auto venuesOf = [&](const std::string& ids) {
    const Value answer = decodeJson(ask("/full?externalIds=" + ids).body).value;
    EXPECT_EQ(answer["generatedAt"].printed(), "1722758340139");
    std::string found;
    for (const Value& venue : answer["venues"]["items"].items()) found += venue["id"].printed();
    return found;
  };
  EXPECT_EQ(venuesOf("a"), "1");
  EXPECT_EQ(venuesOf("b%20c,a"), "12");
  EXPECT_EQ(venuesOf("x"), "");
  EXPECT_EQ(venuesOf(""), "12");
}

TEST_F(ServedDocumentsTest, destinationsAreGatheredFromTheVenues) {
  EXPECT_EQ(ask("/destination/full?venueIds=1,2").body, R"({"items":[{"venueId":1}]})");
  EXPECT_EQ(ask("/destination/full").body, R"({"items":[]})");
  expectError(404, ask("/destination/full?venueIds=1,9"));
  expectError(404, ask("/destination/full?venueIds=..%2F1"));
}

TEST_F(ServedDocumentsTest, documentOfThatStampIsNotSentAgain) {
  EXPECT_EQ(ask("/full?externalIds=a", "1722758340139").status, 304);
  EXPECT_EQ(ask("/full", "1722758340139").status, 304);
  EXPECT_EQ(ask("/full", "1722758340139").body, "");
  EXPECT_EQ(ask("/full", "1722758340138").status, 200);
  EXPECT_EQ(ask("/venue/1/full", "Mon, 1").status, 304);
  EXPECT_EQ(ask("/venue/1/full", "unused").status, 200);
  EXPECT_EQ(ask("/venue/2/full", "unused").status, 200);
  EXPECT_EQ(ask("/venue/2/full", "").status, 200);
  EXPECT_EQ(ask("/venue/1/building/3/full", "").status, 200);
}

TEST_F(ServedDocumentsTest, whatDoesNotExistIsNotFound) {
  for (const char* const path :
       {"/venue/9/full", "/venue/1/building/9/full", "/map-template/x/full", "/notes", "/full.json",
        "/venue/1/destinations", "/venue/full", "/venue/1/building/3/full/full", ""}) {
    expectError(404, ask(path));
  }
  expectError(404, documents_.answer("/QRVS/api/customer/6/full", std::nullopt));
  expectError(404, documents_.answer("/full", std::nullopt));
}

TEST_F(ServedDocumentsTest, nothingLeadsOutOfTheFolder) {
  const test::TemporaryFolder outside;
  outside.write("full.json", R"({"id":"secret"})");
  std::filesystem::create_directory_symlink(outside.path(), folder_.at("venue/7"));
  std::filesystem::create_symlink(outside.at("full.json"),
                                  folder_.at("venue/1/building/3/linked.json"));
  std::filesystem::create_directories(folder_.at("venue/8"));
  std::filesystem::create_symlink(outside.at("full.json"), folder_.at("venue/8/full.json"));
  expectError(404, ask("/venue/7/full"));
  expectError(404, ask("/venue/8/full"));
  const std::string name = outside.path().filename().string();
  for (const std::string& way :
       {"/venue/..%2f..%2f" + name + "/full", "/venue/../../" + name + "/full",
        "/venue/%2e%2e/%2e%2e/" + name + "/full", std::string("/venue/1%00/full")}) {
    expectError(400, ask(way));
  }
}

TEST_F(ServedDocumentsTest, documentThatCannotBeReadIsAnErrorOfTheService) {
  expectError(500, ask("/locale/full", "stamp"));
  folder_.write("full.json", "[");
  expectError(500, ask("/venue/1/full"));
}

TEST_F(ServedDocumentsTest, replacedDocumentIsServedAnew) {
  folder_.write("venue/2/full.json", R"({"id":2,"name":"new"})");
  EXPECT_THAT(ask("/venue/2/full").body, HasSubstr("new"));
}

TEST_F(ServedDocumentsTest, folderThatIsNoneOfAVenueIsComplainedOf) {
  EXPECT_FALSE(documents_.complaint());
  EXPECT_THAT(*ServedDocuments(folder_.at("nowhere")).complaint(), HasSubstr("nowhere"));
  EXPECT_THAT(*ServedDocuments(folder_.at("locale")).complaint(), HasSubstr("no JSON object"));
  EXPECT_THAT(*ServedDocuments(folder_.at("venue")).complaint(), HasSubstr("no venue folder"));
  folder_.write("venue/full.json", "{}");
  EXPECT_THAT(*ServedDocuments(folder_.at("venue")).complaint(), HasSubstr("has no \"id\""));
}

}  // namespace
}  // namespace tern::service
