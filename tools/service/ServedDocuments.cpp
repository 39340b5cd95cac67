#include "tools/service/ServedDocuments.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/service/RequestTarget.hpp"

namespace tern::service {

namespace {

const char* const customerFile = "full.json";

ServedAnswer noDocument(std::string_view path) {
  return errorAnswer(404, "There is nothing at " + std::string(path));
}

// The file of the path's document below the customer's; empty when no document has that path.
std::string fileOf(const std::vector<std::string>& names) {
  const auto is = [&](std::initializer_list<std::string_view> pattern) {
    return std::ranges::equal(names, pattern, [](std::string_view name, std::string_view wanted) {
      return wanted == "*" || name == wanted;
    });
  };
  if (!is({"full"}) && !is({"locale", "full"}) && !is({"map-template", "*", "full"}) &&
      !is({"venue", "*", "full"}) && !is({"venue", "*", "building", "*", "full"})) {
    return {};
  }
  std::string file;
  for (const std::string& name : names) file.append(file.empty() ? "" : "/").append(name);
  return file + ".json";
}

std::string stampOf(const Value& document) {
  const Value* history = document.find("recordHistory");
  return (history != nullptr ? (*history)["updatedAt"] : document["generatedAt"]).printed();
}

bool isCurrent(const std::optional<std::string>& stamp, const std::string& current) {
  return stamp && !stamp->empty() && *stamp == current;
}

bool isListed(std::string_view list, std::string_view wanted) {
  const auto parts = split(list, ',');
  return std::ranges::find(parts, wanted) != parts.end();
}

// The customer's document with only those venues.
Value withVenues(Value customer, std::string_view externalIds) {
  Value* venues = customer.find("venues");
  if (venues == nullptr || !venues->isMap()) return customer;
  Value kept = Value::list();
  for (const Value& venue : (*venues)["items"].items()) {
    if (isListed(externalIds, venue["externalId"].printed())) kept.append(venue);
  }
  venues->set("items", std::move(kept));
  return customer;
}

}  // namespace

ServedDocuments::ServedDocuments(std::string folder)
    : folder_(std::move(folder)),
      files_(makeFileSystem(std::filesystem::absolute(folder_).string())) {}

std::optional<Value> ServedDocuments::readDocument(const std::string& file) const {
  auto text = files_->readFile(file);
  if (!text) return std::nullopt;
  JsonResult document = decodeJson(std::move(*text));
  if (document.error || !document.value.isMap()) return std::nullopt;
  return std::move(document.value);
}

std::optional<std::string> ServedDocuments::complaint() const {
  if (!files_->isFile(customerFile)) return folder_ + " is no venue folder: it has no full.json";
  const auto customer = readDocument(customerFile);
  if (!customer) return folder_ + "/full.json: holds no JSON object";
  if ((*customer)["id"].printed().empty()) return folder_ + "/full.json: has no \"id\"";
  return std::nullopt;
}

ServedAnswer ServedDocuments::answer(std::string_view target,
                                     const std::optional<std::string>& stamp) const {
  const auto request = parseTarget(target);
  if (!request) return errorAnswer(400, "The path of the request is not understood");
  const auto& names = request->names;
  const bool isOfACustomer =
      names.size() > 4 && names[0] == "QRVS" && names[1] == "api" && names[2] == "customer";
  if (!isOfACustomer) return noDocument(request->path);
  auto customer = readDocument(customerFile);
  if (!customer) return errorAnswer(500, "The customer's document cannot be read");
  if ((*customer)["id"].printed() != names[3]) {
    return errorAnswer(404, "There is no customer " + names[3]);
  }
  const std::vector<std::string> below(names.begin() + 4, names.end());
  if (below == std::vector<std::string>{"destination", "full"}) {
    return answerDestinations(request->parameter("venueIds"));
  }
  const std::string file = fileOf(below);
  if (file.empty() || !files_->isFile(file)) return noDocument(request->path);
  const std::string_view externalIds = request->parameter("externalIds");
  if (file != customerFile || externalIds.empty()) return answerFile(file, stamp);
  if (isCurrent(stamp, stampOf(*customer))) return {304, {}};
  return {200, encodeJson(withVenues(*std::move(customer), externalIds), JsonLayout::compact)};
}

std::optional<std::string> ServedDocuments::stampOfText(const std::string& text) const {
  const std::size_t hash = std::hash<std::string>{}(text);
  {
    const MutexLock lock(mutex_);
    if (const auto known = stamps_.find(hash); known != stamps_.end()) return known->second;
  }
  const JsonResult document = decodeJson(text);
  if (document.error || !document.value.isMap()) return std::nullopt;
  const MutexLock lock(mutex_);
  constexpr std::size_t mostKept = 1000;
  if (stamps_.size() >= mostKept) stamps_.clear();
  return stamps_.emplace(hash, stampOf(document.value)).first->second;
}

ServedAnswer ServedDocuments::answerFile(const std::string& file,
                                         const std::optional<std::string>& stamp) const {
  auto text = files_->readFile(file);
  if (!text) return errorAnswer(500, "The document cannot be read");
  if (!stamp) return {200, std::move(*text)};
  const auto current = stampOfText(*text);
  if (!current) return errorAnswer(500, "The document is no JSON object");
  if (isCurrent(stamp, *current)) return {304, {}};
  return {200, std::move(*text)};
}

ServedAnswer ServedDocuments::answerDestinations(std::string_view venueIds) const {
  Value items = Value::list();
  for (const std::string& id : split(venueIds, ',')) {
    if (!isFileName(id) || !files_->isFile("venue/" + id + "/full.json")) {
      return errorAnswer(404, "There is no venue " + id);
    }
    if (auto entry = readDocument("venue/" + id + "/destinations.json")) {
      items.append(std::move(*entry));
    }
  }
  Value answer = Value::map();
  answer.set("items", std::move(items));
  return {200, encodeJson(answer, JsonLayout::compact)};
}

}  // namespace tern::service
