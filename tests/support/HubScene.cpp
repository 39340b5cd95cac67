#include "tests/support/HubScene.hpp"

#include <utility>

#include "TernCoreKit/platform/Files.hpp"

namespace tern::test {

namespace {

constexpr std::string_view customerPath = "/QRVS/api/customer/1";
constexpr std::string_view tokenPath = "/QRVS/api/auth/token";

// What follows the customer's path; the whole text when that is not in it.
std::string_view behindCustomer(std::string_view text) {
  const std::size_t place = text.find(customerPath);
  if (place != std::string_view::npos) text.remove_prefix(place + customerPath.size());
  return text;
}

std::string withoutQuery(std::string_view endpoint) {
  std::string text(behindCustomer(endpoint));
  const std::size_t place = text.find(HubScene::query);
  if (place != std::string::npos) text.erase(place, HubScene::query.size());
  return text;
}

std::string describe(const HttpRequest& request) {
  if (request.url.ends_with(tokenPath)) return "token";
  std::string text = request.method + " " + withoutQuery(request.url);
  for (const HttpHeader& header : request.headers) {
    if (header.name == "If-Modified-Since") text += " since " + header.value;
    if (header.name == "Authorization" && header.value != "Bearer secret") text += " unauthorized";
  }
  return text;
}

std::string describe(std::string_view name, const Value& payload) {
  std::string text(name.substr(name.rfind('_') + 1));
  text += " " + withoutQuery(payload["endpoint"].text());
  if (const Value* error = payload.find("error")) {
    text += " " + (*error)["code"].printed() + " " + (*error)["message"].printed() + " | " +
            (*error)["description"].printed();
  }
  return text;
}

std::string fileOf(std::string_view path) {
  return "Tern/cache/5.12.2" + std::string(customerPath) + std::string(path) +
         std::string(HubScene::query) + "/data.json";
}

}  // namespace

HubScene::HubScene()
    : tokenAnswer(json(R"({"access_token":"secret","expires_in":3600})")),
      transport(std::make_shared<FakeTransport>(
          [this](const HttpRequest& request) { return answer(request); })),
      observer_(addObserver([this](std::string_view name, const Value& payload) {
        events_.push_back(describe(name, payload));
      })) {
  setHttpTransport(transport);
  setFileSystem(makeFileSystem(folder.path().string()));
}

HubScene::~HubScene() {
  hub_ = nullptr;
  removeObserver(observer_);
  setHttpTransport(nullptr);
  setFileSystem(nullptr);
}

HttpResponse HubScene::json(std::string body, int status) {
  return {.status = status, .body = std::move(body)};
}

Value HubScene::options() {
  return Value::map(
      {{"customerId", 1}, {"host", host}, {"clientId", "me"}, {"clientSecret", "hush"}});
}

TernHub& HubScene::hub() {
  if (hub_ == nullptr) remakeHub();
  return *hub_;
}

std::shared_ptr<TernHub> HubScene::remakeHub(const Value& options) {
  return hub_ = TernHub::initCustomerWithDictionary(options);
}

HttpResponse HubScene::answer(const HttpRequest& request) const {
  if (request.url.ends_with(tokenPath)) return tokenAnswer;
  std::string_view path = behindCustomer(request.url);
  path = path.substr(0, path.find('?'));
  const auto found = answers.find(path);
  return found != answers.end() ? found->second : otherwise;
}

std::vector<std::string> HubScene::requests() const {
  std::vector<std::string> described;
  for (const HttpRequest& request : transport->requests()) described.push_back(describe(request));
  return described;
}

std::vector<std::string> HubScene::events() { return std::exchange(events_, {}); }

std::string HubScene::cached(std::string_view path) const { return folder.read(fileOf(path)); }

void HubScene::writeCache(std::string_view path, std::string_view text) const {
  folder.write(fileOf(path), text);
}

}  // namespace tern::test
