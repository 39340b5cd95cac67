#include "TernCoreKit/c/detail/Options.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/c/detail/Guard.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::inline v5::detail {

namespace {

[[noreturn]] void refuseField(std::string_view name, std::string_view what) {
  refuseArgument("\"" + std::string(name) + "\" " + std::string(what));
}

Value decodedOptions(const char* text) {
  if (text == nullptr) return Value::map();
  JsonResult decoded = decodeJson(textArgument(text, "text of options"));
  if (decoded.error) refuseArgument("the options are not JSON: " + *decoded.error);
  if (!decoded.value.isMap()) refuseArgument("options are a JSON object");
  return std::move(decoded.value);
}

}  // namespace

Options::Options(const char* text, std::initializer_list<std::string_view> known)
    : options_(decodedOptions(text)) {
  for (const Value::Entry& entry : options_.entries()) {
    if (std::ranges::find(known, entry.key.text()) != known.end()) continue;
    refuseField(shortened(entry.key.text()), "is no option");
  }
}

std::vector<std::int64_t> Options::ids(std::string_view name) const {
  std::vector<std::int64_t> ids;
  const Value* list = options_.find(name);
  if (list == nullptr) return ids;
  for (const Value& id : list->items()) {
    if (!id.isInteger()) refuseField(name, "must be a list of ids");
    if (std::ranges::find(ids, id.integer()) != ids.end()) refuseField(name, "names an id twice");
    ids.push_back(id.integer());
  }
  if (ids.empty()) refuseField(name, "must be a list of ids");
  return ids;
}

std::string Options::text(std::string_view name) const {
  const Value* text = options_.find(name);
  if (text == nullptr) return {};
  if (!text->isText() || text->text().empty()) refuseField(name, "must be a text");
  return std::string(text->text());
}

std::string Options::requiredText(std::string_view name) const {
  if (options_.find(name) == nullptr) refuseField(name, "is missing");
  return text(name);
}

std::int64_t Options::requiredInteger(std::string_view name) const {
  const Value* number = options_.find(name);
  if (number == nullptr) refuseField(name, "is missing");
  if (!number->isInteger()) refuseField(name, "must be a whole number");
  return number->integer();
}

bool Options::flag(std::string_view name, bool otherwise) const {
  const Value* flag = options_.find(name);
  if (flag == nullptr) return otherwise;
  if (!flag->isBoolean()) refuseField(name, "must be true or false");
  return flag->flag();
}

}  // namespace tern::detail
