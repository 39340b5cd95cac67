// Puts an HTTP stack of the application's own behind the library: this one has no network at all
// and answers from a venue folder.
//
//   own_http_stack data/plaza
#include <TernCoreKit/TernCoreKit.hpp>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

class FolderTransport final : public tern::HttpTransport {
 public:
  explicit FolderTransport(std::string folder) : folder_(std::move(folder)) {}

  // Answers at once, on the caller's thread.
  void send(tern::HttpRequest request, Completion completion) override {
    completion(request.method == "POST" ? token() : document(request.url));
  }

 private:
  static tern::HttpResponse token() {
    return {.status = 200, .body = R"({"access_token":"of no use","expires_in":3600})"};
  }

  // ".../QRVS/api/customer/1/venue/1/full?v=..." is FOLDER/venue/1/full.json.
  tern::HttpResponse document(std::string_view url) const {
    constexpr std::string_view customer = "/QRVS/api/customer/1/";
    const std::size_t start = url.find(customer);
    if (start == std::string_view::npos) return notFound();
    std::string_view path = url.substr(start + customer.size());
    path = path.substr(0, path.find('?'));
    std::ifstream file(folder_ + "/" + std::string(path) + ".json", std::ios::binary);
    if (!file) return notFound();
    return {.status = 200, .body = std::string(std::istreambuf_iterator<char>(file), {})};
  }

  static tern::HttpResponse notFound() {
    return {.status = 404, .body = R"({"statusCode":404,"message":"There is no such document"})"};
  }

  const std::string folder_;
};

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("use: own_http_stack FOLDER\n", stderr);
    return 2;
  }
  // Before the first hub is made.
  tern::setHttpTransport(std::make_shared<FolderTransport>(words[1]));

  const auto hub =
      tern::TernHub::initWithCustomerId(1, true, "https://nowhere.example", "me", "secret");
  hub->getVenues([](const std::vector<std::shared_ptr<tern::TernVenue>>& venues,
                    const std::optional<tern::TernError>& error) {
    if (error) std::puts(error->message.c_str());
    for (const auto& venue : venues) {
      std::printf("venue %s: %s\n", venue->id.printed().c_str(), venue->name.printed().c_str());
    }
  });
  hub->populateVenueByVenueId(99, [](const std::shared_ptr<tern::TernActiveVenue>&,
                                     const std::optional<tern::TernError>& error) {
    if (error) std::printf("venue 99: %s\n", error->message.c_str());
  });
}
