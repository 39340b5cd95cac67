#include "TernCoreKit/answers/detail/RequestFields.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr std::string_view wantsInteger = " must be a whole number";
constexpr std::string_view wantsMatrix = " must be a square list of lists of numbers";

std::optional<std::int64_t> wholeNumber(const Value& value) {
  if (value.isInteger()) return value.integer();
  return value.isNumber() ? tern::wholeNumber(value.number()) : std::nullopt;
}

bool isPoint(const Value& value) {
  return value.size() == 2 && value.isList() && value.items()[0].isNumber() &&
         value.items()[1].isNumber();
}

}  // namespace

const Value* RequestFields::required(std::string_view name) {
  const Value* field = request_.find(name);
  if (field == nullptr) complain(name, " is missing");
  return field;
}

void RequestFields::complain(std::string_view name, std::string_view what) {
  if (!error_) error_.emplace("\"").append(name).append("\"").append(what);
}

void RequestFields::refuse(std::string what) {
  if (!error_) error_ = std::move(what);
}

std::int64_t RequestFields::integer(std::string_view name) {
  const Value* field = required(name);
  if (field == nullptr) return 0;
  const auto whole = wholeNumber(*field);
  if (!whole) complain(name, wantsInteger);
  return whole.value_or(0);
}

std::int64_t RequestFields::level() {
  return has("accessibility") ? integer("accessibility") : 100;
}

std::vector<std::int64_t> RequestFields::integers(std::string_view name) {
  std::vector<std::int64_t> numbers;
  const Value* field = required(name);
  if (field == nullptr) return numbers;
  if (!field->isList()) complain(name, " must be a list of whole numbers");
  for (const Value& item : field->items()) {
    const auto whole = wholeNumber(item);
    if (!whole) complain(name, " must be a list of whole numbers");
    numbers.push_back(whole.value_or(0));
  }
  return numbers;
}

std::vector<std::int64_t> RequestFields::integerOrIntegers(std::string_view name) {
  const Value* field = request_.find(name);
  if (field != nullptr && field->isNumber()) return {integer(name)};
  return integers(name);
}

double RequestFields::number(std::string_view name) {
  const Value* field = required(name);
  if (field == nullptr) return 0;
  if (!field->isNumber()) complain(name, " must be a number");
  return field->number();
}

std::vector<std::vector<double>> RequestFields::matrix(std::string_view name, std::size_t most) {
  const Value* field = required(name);
  if (field == nullptr) return {};
  const auto rows = field->items();
  if (!field->isList()) complain(name, wantsMatrix);
  if (rows.size() > most) {
    complain(name, " has " + std::to_string(rows.size()) + " rows; at most " +
                       std::to_string(most) + " can be solved");
  }
  std::vector<std::vector<double>> numbers;
  for (std::size_t i = 0; i < rows.size() && !error_; ++i) {
    if (!rows[i].isList() || rows[i].size() != rows.size()) complain(name, wantsMatrix);
    numbers.emplace_back();
    for (const Value& cell : rows[i].items()) {
      const bool isRead = numbers.back().size() != i;
      if (isRead && !cell.isNumber()) complain(name, wantsMatrix);
      numbers.back().push_back(isRead ? cell.number() : 0);
    }
  }
  return numbers;
}

TernCoordinate RequestFields::point(std::string_view name) {
  const Value* field = required(name);
  if (field == nullptr) return {};
  if (!isPoint(*field)) {
    complain(name, " must be a list of two numbers");
    return {};
  }
  return {field->items()[0].number(), field->items()[1].number()};
}

Value RequestFields::numbersOrNone(std::string_view name) {
  const Value* field = request_.find(name);
  if (field == nullptr || field->isNull()) return {};
  const auto isNumber = [](const Value::Entry& entry) { return entry.value.isNumber(); };
  if (field->isMap() && std::ranges::all_of(field->entries(), isNumber)) return *field;
  complain(name, " must be a map of numbers");
  return {};
}

bool RequestFields::flag(std::string_view name) {
  const Value* field = required(name);
  if (field != nullptr && !field->isBoolean()) complain(name, " must be true or false");
  return field != nullptr && field->flag();
}

std::string_view RequestFields::text(std::string_view name) {
  const Value* field = required(name);
  if (field != nullptr && !field->isText()) complain(name, " must be a text");
  return field != nullptr ? field->text() : std::string_view();
}

}  // namespace tern::detail
