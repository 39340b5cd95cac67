#include "tests/c/FakeHost.hpp"

#include <cstring>
#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tests/support/Waiting.hpp"

namespace tern::test {

FakeHost::FakeHost() {
  callbacks_.size = sizeof callbacks_;
  callbacks_.context = this;
  callbacks_.release = [](void* context) {
    const std::lock_guard lock(of(context).mutex_);
    ++of(context).releases_;
  };
  callbacks_.http_send = [](void* context, const tern_http_request* request,
                            tern_http_exchange* exchange) {
    of(context).answer(*request, exchange);
  };
  callbacks_.http_cancel = [](void* context, tern_http_exchange* exchange) {
    const std::lock_guard lock(of(context).mutex_);
    of(context).cancelled_.push_back(exchange);
  };
  callbacks_.file_read = [](void* context, const char* path, tern_sink* sink) {
    const auto files = of(context).files();
    const auto found = files.find(path);
    if (found == files.end()) return;
    // In two pieces.
    const std::size_t half = found->second.size() / 2;
    tern_give(sink, found->second.data(), half, nullptr);
    tern_give(sink, found->second.data() + half, found->second.size() - half, nullptr);
  };
  callbacks_.file_write = [](void* context, const char* path, const void* bytes, size_t size) {
    if (of(context).refusesFiles) return false;
    of(context).store(path, std::string(static_cast<const char*>(bytes), size));
    return true;
  };
  callbacks_.file_remove = [](void* context, const char* path) {
    const std::lock_guard lock(of(context).mutex_);
    return !of(context).refusesFiles && of(context).files_.erase(path) > 0;
  };
  callbacks_.file_list = [](void* context, const char* prefix, tern_sink* sink) {
    for (const auto& [path, contents] : of(context).files()) {
      if (path.starts_with(prefix)) tern_give(sink, path.data(), path.size(), nullptr);
    }
  };
  callbacks_.log = [](void* context, const char* line) {
    const std::lock_guard lock(of(context).mutex_);
    of(context).lines_.emplace_back(line);
  };
}

FakeHost::~FakeHost() {
  if (!isSettled_) return;
  tern_set_host(nullptr, nullptr);
  awaitUntil([this] { return releases() == 1; }, "the release of the host");
}

void FakeHost::settle() { isSettled_ = tern_set_host(&callbacks_, nullptr); }

void FakeHost::answer(const tern_http_request& request, tern_http_exchange* exchange) {
  const std::string_view url = request.url;
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(std::string(request.method) + " " + std::string(url));
  }
  if (std::strcmp(request.method, "POST") == 0) {
    completeWith(exchange, 200, R"({"access_token":"t","expires_in":3600})");
    return;
  }
  if (keepsWaiting) {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(exchange);
    return;
  }
  constexpr std::string_view customer = "/QRVS/api/customer/1/";
  const std::size_t start = url.find(customer) + customer.size();
  const auto found = documents.find(std::string(url.substr(start, url.find('?') - start)));
  if (found == documents.end()) {
    completeWith(exchange, 404, R"({"message":"nothing there","statusCode":404})");
  } else {
    completeWith(exchange, 200, found->second);
  }
}

std::vector<std::string> FakeHost::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

std::vector<tern_http_exchange*> FakeHost::waiting() const {
  const std::lock_guard lock(mutex_);
  return waiting_;
}

std::vector<tern_http_exchange*> FakeHost::cancelled() const {
  const std::lock_guard lock(mutex_);
  return cancelled_;
}

std::vector<std::string> FakeHost::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

std::map<std::string, std::string> FakeHost::files() const {
  const std::lock_guard lock(mutex_);
  return files_;
}

void FakeHost::store(const std::string& path, std::string contents) {
  const std::lock_guard lock(mutex_);
  files_[path] = std::move(contents);
}

int FakeHost::releases() const {
  const std::lock_guard lock(mutex_);
  return releases_;
}

std::map<std::string, std::string> twoFloorsDocuments() {
  const auto json = [](const Value& value) { return encodeJson(value, JsonLayout::compact); };
  return {{"full", R"({"id":1,"venues":{"items":[{"id":1,"externalId":"v1","name":"drawn"}]}})"},
          {"venue/1/full", json(twoFloorsVenueDocument())},
          {"venue/1/building/1/full", json(twoFloorsBuildingDocument())}};
}

bool completeWith(tern_http_exchange* exchange, int status, const std::string& body) {
  tern_http_response response{};
  response.size = sizeof response;
  response.status = status;
  response.body = body.data();
  response.body_size = body.size();
  return tern_http_complete(exchange, &response, nullptr);
}

}  // namespace tern::test
