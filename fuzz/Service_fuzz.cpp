// The targets of the local service and of the page that shows venues: on the first line a path and
// query, on the second the stamp, or the tag and the codings, of the client. No name leads out of
// the folder, and every answer is a document or says what is wrong.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/ServedFolder.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/MadePage.hpp"
#include "tools/service/PageSite.hpp"
#include "tools/service/RequestTarget.hpp"
#include "tools/service/ServedDocuments.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::fuzz {
namespace {

void checkTarget(std::string_view target) {
  const auto parsed = service::parseTarget(target);
  if (!parsed) return;
  for (const std::string& name : parsed->names) {
    require(!name.empty() && name != "." && name != "..", "a name is one");
    require(name.find('/') == name.npos && name.find('\0') == name.npos, "and no way");
    require(service::isFileName(name), "and can be a file's");
  }
  require(target.starts_with(parsed->path), "the path is the beginning of the target");
}

void checkAnswer(const service::ServedAnswer& answer) {
  require(answer.body.find(ServedFolder::hidden) == std::string::npos,
          "nothing outside is ever read");
  const int statuses[] = {200, 304, 400, 404, 500};
  require(std::ranges::find(statuses, answer.status) != std::end(statuses), "a status is known");
  require((answer.status == 304) == answer.body.empty(), "304 comes alone");
  if (answer.status < 400) return;
  const JsonResult body = decodeJson(answer.body);
  require(!body.error && body.value["statusCode"] == Value(answer.status), "an error says so");
}

// A page over the folder, of one file.
service::PageSite pageOver(const ServedFolder& folder) {
  static test::MadePage page;
  page.add("index.html", "text/html", "<p>page");
  return service::PageSite({.files = page.files(),
                            .venues = {1, 7},
                            .documents = command::documentsWithin(folder.path()),
                            .findings = [](std::int64_t) { return std::string("{}"); }});
}

void checkPageAnswer(const service::ServedAnswer& answer) {
  require(answer.body.find(ServedFolder::hidden) == std::string::npos,
          "nothing outside is ever shown");
  const int statuses[] = {200, 304, 404, 500};
  require(std::ranges::find(statuses, answer.status) != std::end(statuses), "a status is known");
  require(std::ranges::find(answer.headers, "Content-Security-Policy", &HttpHeader::name) !=
              answer.headers.end(),
          "every answer is under the policy");
  if (answer.status < 400) return;
  const JsonResult body = decodeJson(answer.body);
  require(!body.error && body.value["statusCode"] == Value(answer.status), "an error says so");
}

void run(const std::string& text) {
  static const ServedFolder folder;
  static const service::ServedDocuments documents(folder.path());
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string target = text.substr(0, end);
  std::optional<std::string> stamp;
  if (end < text.size()) stamp = text.substr(end + 1);
  checkTarget(target);
  checkAnswer(documents.answer(target, stamp));
  checkAnswer(documents.answer(ServedFolder::customer + target, stamp));
  static service::PageSite page = pageOver(folder);
  const std::string held = stamp.value_or("");
  for (const std::string& asked : {target, "/data" + target}) {
    checkPageAnswer(page.answer(
        {.method = "GET",
         .target = asked,
         .headers = {{"Host", "localhost:1"}, {"If-None-Match", held}, {"Accept-Encoding", held}},
         .wake = [] {}},
        1));
  }
}

std::vector<std::string> seeds() {
  return {"/full?v=4.12&locale=en-US\n17",
          "/full?externalIds=b%20c,a",
          "/venue/1/full?v=4.12\nMon, 1",
          "/venue/1/building/3/full",
          "/destination/full?venueIds=1,2",
          "/map-template/calm/full",
          "/locale/full\nstamp",
          "/venue/7/full",
          "/full.json",
          "/venue/1/building/3/full.json\nbr;q=1, gzip;q=0.5",
          "/venue/7/full.json",
          "/venue/..%2f..%2foutside/full.json",
          "/findings.json?venue=1",
          "/index.html\nW/\"0-gzip\", gzip;q=1",
          "/venue/..%2f..%2foutside/full",
          "/venue/%2e%2e/%2e%2e/outside/full",
          "/venue/1%00/full",
          "/notes",
          "/QRVS/api/customer/5/full",
          "/a%zz"};
}

}  // namespace

extern const Target serviceTarget{
    .name = "service", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
