// What a page in a browser on this machine is answered, which shows venues:
//
//   GET /                       index.html of the page; its other files by their names
//   GET /config.json            where the rest is, and the venues' ids: {"data":"data/",
//                               "findings":"data/findings.json","venues":[1,2]}
//   GET /data/full.json         a document of the venues, as a venue folder has them:
//                               venue/<id>/full.json, venue/<id>/building/<id>/full.json
//   GET /data/findings.json     what is wrong with the venue; with several, "?venue=2"
//
// and HEAD of the same; nothing else. There is no token: whoever has an account on this machine may
// ask. A page of another site may not: a request that does not name this machine is refused, so
// that no name that somebody else points here leads in, and each answer forbids the browser to hand
// it to anybody else. What the page itself may do is bounded by a policy (Content-Security-Policy):
// it runs its own scripts, and asks nobody but us.
//
// Ownership: owns what makes the findings; its destructor waits for those that are being made.
// Threads: any. Fails: by the status of an answer, with a body as that of the other services.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/loading/DocumentSource.hpp"
#include "tools/service/HttpServer.hpp"
#include "tools/service/PageFile.hpp"
#include "tools/service/RequestTarget.hpp"
#include "tools/service/SlowText.hpp"

namespace tern::service {

struct PageSettings {
  std::span<const PageFile> files = {};
  std::vector<std::int64_t> venues = {};
  // Asked for each request, so that a document that is replaced is shown anew.
  DocumentSource documents = {};
  // What is wrong with a venue, as JSON. Called once for each, when it is first asked for, on a
  // thread of its own. REQUIRES: throws nothing.
  std::function<std::string(std::int64_t venue)> findings = {};
};

class PageSite {
 public:
  explicit PageSite(PageSettings settings);
  PageSite(const PageSite&) = delete;
  PageSite& operator=(const PageSite&) = delete;

  // The port is the one that is listened on.
  Reception receive(const ReceivedRequest& head, int port);
  ServedAnswer answer(const ReceivedRequest& request, int port);

 private:
  ServedAnswer answerAsked(const ReceivedRequest& request, int port);
  ServedAnswer answerTarget(const ReceivedRequest& request, const RequestTarget& target);
  ServedAnswer answerFile(const ReceivedRequest& request, const RequestTarget& target) const;
  ServedAnswer answerDocument(const RequestTarget& target) const;
  ServedAnswer answerFindings(const ReceivedRequest& request, const RequestTarget& target);
  ServedAnswer answerConfig() const;
  bool isDocument(std::span<const std::string> names) const;
  // The place of the venue among ours; of an empty text that of the only one.
  std::optional<std::size_t> placeOf(std::string_view venue) const;

  const PageSettings settings_;
  // In the order of the venues.
  std::vector<std::unique_ptr<SlowText>> findings_;
};

}  // namespace tern::service
