// A hub between files that somebody else wrote and a service that lies: {"files": {path: text or
// document}, "answers": {endpoint: {"status", "body"}}, "token": ..., "loads": [...]}. Whatever
// they say, requests go to the host that the application named, nothing is written outside the
// documents folder, and no secret comes to light.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/service/ServiceHost.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "fuzz/AnsweringTransport.hpp"
#include "fuzz/SeedDocuments.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/TurnedClock.hpp"

namespace tern::fuzz {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view host = "https://maps.example.com";
constexpr std::string_view customer = "/QRVS/api/customer/1";
constexpr std::string_view query = "?v=4.12&locale=en-US&geojson=false";
constexpr std::string_view secret = "h2u4s6h8";

std::string textOf(const Value& value) {
  return value.isText() ? std::string(value.text()) : encodeJson(value, JsonLayout::compact);
}

// What stands behind the customer in the URL, without its query.
std::string endpointOf(std::string_view url) {
  const std::size_t place = url.find(customer);
  if (place == url.npos) return "token";
  url.remove_prefix(place + customer.size());
  return std::string(url.substr(0, url.find('?')));
}

class Scene {
 public:
  explicit Scene(const Value& input) : input_(input) {
    canary_ = folder_.at("canary");
    folder_.write("canary", "as it was");
    setFileSystem(makeFileSystem(folder_.at("documents")));
    setHttpTransport(std::make_shared<AnsweringTransport>(
        [this](const HttpRequest& request) { return answer(request); }));
    for (const Value::Entry& file : input["files"].entries()) write(file.key.text(), file.value);
  }
  ~Scene() {
    setFileSystem(nullptr);
    isolate();
  }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  void load() {
    const auto hub = TernHub::initCustomerWithDictionary(Value::map(
        {{"customerId", 1}, {"host", host}, {"clientId", "me"}, {"clientSecret", secret}}));
    for (const Value& load : input_["loads"].items()) loadOne(*hub, load.integer());
    require(hub->hostURL() == host, "no document changes the host");
    if (const auto joined = hub->multiActiveVenues()) joined->destroyAllActiveVenues();
  }

  void checkFolder() const {
    require(folder_.read("canary") == "as it was", "what lies beside the folder stays as it is");
    std::size_t written = 0;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      require(entry.path().filename() == "canary" || entry.path().filename() == "documents",
              "nothing is written outside the folder");
    }
    std::error_code none;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.at("documents"), none)) {
      if (entry.is_regular_file()) written += entry.file_size();
    }
    require(written <= 64 * (bytesSent_ + 4096), "what is kept is a small multiple of what came");
  }

 private:
  // Cached answers as another process may have left them; the path is an endpoint's.
  void write(std::string_view endpoint, const Value& contents) {
    const auto files = fileSystem();
    std::string folder = "Tern/cache/5.12.2" + std::string(customer);
    folder.append(endpoint).append(query);
    const std::string text = textOf(contents);
    bytesSent_ += text.size();
    if (!files->createFolders(folder)) {
      static_cast<void>(files->createFile(folder + "/data.json", text));
    }
  }

  HttpResponse answer(const HttpRequest& request) {
    const bool isOurs = request.url.starts_with(std::string(host) + "/");
    const bool isDefault = request.url.starts_with(defaultServiceHost() + "/");
    require(isOurs || isDefault, "requests go to the host that was named");
    require(request.url.find(secret) == std::string::npos, "no secret stands in an address");
    const std::string endpoint = endpointOf(request.url);
    const Value& known = input_["answers"][endpoint];
    if (endpoint == "token" && known.isAbsent()) {
      return {.status = 200, .body = R"({"access_token":"secret","expires_in":3600})"};
    }
    if (!known.isMap()) return {.error = "no network"};
    HttpResponse response{.status = static_cast<int>(known["status"].integer() % 1000)};
    if (known.find("body") != nullptr) response.body = textOf(known["body"]);
    bytesSent_ += response.body.value_or("").size();
    return response;
  }

  static void checkError(const std::optional<TernError>& error) {
    if (!error) return;
    require(error->code.starts_with("TN"), "an error has a code");
    require(error->errorDescription.find(secret) == std::string::npos, "no secret comes to light");
  }

  void loadOne(TernHub& hub, std::int64_t which) {
    const auto takeVenue = [](const std::shared_ptr<TernActiveVenue>&, const auto& error) {
      checkError(error);
    };
    switch (which) {
      case 0:
        return hub.populateCoreWithExternalIds("", checkError);
      case 1:
        return hub.getVenues([](const auto&, const auto& error) { checkError(error); });
      case 2:
        return hub.getLocales([](const auto&, const auto& error) { checkError(error); });
      case 3:
        return hub.populateVenueWithDefaultBuildingByVenueId(1, takeVenue);
      case 4:
        if (hub.activeVenue() == nullptr) return;
        return hub.populateBuildingsInVenue(hub.activeVenue(), {1, 2}, takeVenue);
      case 5:
        return hub.populateVenuesWithDefaultBuilding(
            {1, 2}, [](const auto&, const auto& error) { checkError(error); });
      case 6:
        return hub.populateDestinationsForVenues(
            {1}, [](const auto&, const auto& error) { checkError(error); });
      case 7:
        return hub.getRequest("/x/full", [](const auto&, const auto& error) { checkError(error); });
      case 8:
        return hub.clearCacheByVenueId(1);
      default:
        return;
    }
  }

  const Value& input_;
  const test::TemporaryFolder folder_;
  const test::TurnedClock clock_;
  std::string canary_;
  std::size_t bytesSent_ = 0;
};

// A document that holds the secret may show it, as an id in an address say.
void run(const std::string& text) {
  const JsonResult input = decodeJson(text);
  if (input.error || text.find(secret) != std::string::npos || input.value["loads"].size() > 12)
    return;
  Scene scene(input.value);
  scene.load();
  scene.checkFolder();
}

Value answerOf(Value body, int status = 200) {
  return Value::map({{"status", status}, {"body", std::move(body)}});
}

std::vector<std::string> seeds() {
  const Value venue = smallVenue();
  const Value list = Value::list({Value::map({{"id", 1}}), Value::map({{"id", 2}})});
  const Value customerDocument = Value::map({{"id", 1},
                                             {"generatedAt", "Mon"},
                                             {"hostURL", "https://evil.example.org"},
                                             {"venues", Value::map({{"items", list}})}});
  const Value loads = Value::list({0, 1, 2, 3, 4, 5, 6, 7, 8});
  Value withStamp = venue["venue"];
  withStamp.set("id", 1);
  withStamp.set("generatedAt", "Tue");
  withStamp.set("defaultMapTemplateId", "calm");
  withStamp.set("hostURL", "https://evil.example.org");
  const auto text = [&](const Value& files, const Value& answers) {
    const Value input = Value::map({{"files", files}, {"answers", answers}, {"loads", loads}});
    return encodeJson(input, JsonLayout::compact);
  };
  const Value documents =
      Value::map({{"/full", customerDocument},
                  {"/venue/1/full", withStamp},
                  {"/venue/1/building/1/full", venue["buildings"]["1"]},
                  {"/locale/full", Value::map({{"items", Value::list({Value::map({{"id", 1}})})}})},
                  {"/map-template/calm/full", Value::map({{"id", "calm"}})}});
  Value answers = Value::map();
  for (const Value::Entry& entry : documents.entries()) {
    answers.set(entry.key.text(), answerOf(entry.value));
  }
  Value refusals = answers;
  for (Value::Entry& entry : refusals.entries()) entry.value = answerOf(Value::map(), 304);
  return {text(Value::map(), answers), text(documents, refusals), text(documents, Value::map()),
          text(documents, Value::map({{"/full", answerOf("{\"id\":", 500)},
                                      {"token", answerOf(Value::map({{"message", "no"}}), 401)}}))};
}

}  // namespace

extern const Target hubTarget{.name = "hub", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
