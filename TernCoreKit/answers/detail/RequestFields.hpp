// Reads the fields of one request and remembers the first that is missing or of the wrong kind.
//
// A field is asked for by name and kind. One that cannot be read gives 0, false or empty, so that a
// handler reads all it needs and then asks once whether the request was understood.
//
// Ownership: the request must outlive it. Threads: one. Fails: by `error`, which names the field.
//
//   RequestFields fields(request);
//   const std::int64_t from = fields.integer("from");
//   const TernCoordinate at = fields.point("at");
//   if (fields.error()) return {};
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::inline v5::detail {

class RequestFields {
 public:
  // REQUIRES: the request is a map.
  explicit RequestFields(const Value& request) : request_(request) {}

  // A number without a fraction, such as 12 or 12.0, that fits 64 bits.
  std::int64_t integer(std::string_view name);
  // The accessibility level; everyone's, 100, when the request names none.
  std::int64_t level();
  std::vector<std::int64_t> integers(std::string_view name);
  // A list of them, or one alone as a list of one.
  std::vector<std::int64_t> integerOrIntegers(std::string_view name);
  double number(std::string_view name);
  // A list of as many lists of numbers, at most so many; the diagonal may be anything and reads as
  // 0.
  std::vector<std::vector<double>> matrix(std::string_view name, std::size_t most);
  // A list of two numbers.
  TernCoordinate point(std::string_view name);
  // A map of numbers; absent when it is missing or null.
  Value numbersOrNone(std::string_view name);
  bool flag(std::string_view name);
  std::string_view text(std::string_view name);
  bool has(std::string_view name) const { return request_.find(name) != nullptr; }

  // Says what is wrong with fields that are right each for itself.
  void refuse(std::string what);

  // E.g. "from" is missing, or "at" must be a list of two numbers; with the field's name in quotes.
  const std::optional<std::string>& error() const { return error_; }

 private:
  // The field, or null after a complaint when it is missing.
  const Value* required(std::string_view name);
  void complain(std::string_view name, std::string_view what);

  const Value& request_;
  std::optional<std::string> error_;
};

}  // namespace tern::detail
