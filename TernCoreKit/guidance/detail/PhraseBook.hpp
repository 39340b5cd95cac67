// The texts of steps in one language, as its file under TernCoreKit/guidance/languages/ has them.
//
// Texts hold names in braces, such as {place}, which are filled in. What a language lacks is
// English.
//
// Threads: any. Fails: for want of memory, by std::bad_alloc.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

class PhraseBook {
 public:
  using Filling = std::pair<std::string_view, std::string_view>;

  // Of a language tag (BCP 47) such as "de", "en-US" or "fr-CA": its language decides, and the
  // region only which units are used. English for what is not known.
  static PhraseBook of(std::string_view tag);
  static std::vector<std::string> languages();
  // The kind of mover that a name speaks of in any of the languages ("lift" for "Aufzug 3"), or "".
  static std::string_view moverKind(std::string_view name);

  // The text of that key, "turn.left" say, filled in.
  std::string text(std::string_view key, std::initializer_list<Filling> fillings = {}) const;
  bool has(std::string_view key) const;

  // "40 m", "1.2 km", "130 ft"; a length under half a unit is "0 m".
  std::string length(double mm) const;
  // "3 minutes", rounded, at least one.
  std::string minutes(double seconds) const;

  // Its file, and whether lengths are in feet.
  const Value& file() const { return *file_; }

 private:
  PhraseBook(const Value& file, bool isImperial) : file_(&file), isImperial_(isImperial) {}
  std::string number(double value, int decimals) const;
  std::string counted(std::string_view key, double count, int decimals) const;

  const Value* file_;
  bool isImperial_;
};

}  // namespace tern::detail
