#include "TernCoreKit/model/records/TernFont.hpp"

#include <utility>

namespace tern::inline v5 {

TernFont::TernFont(std::string name, double sizePt, TernColor color)
    : name_(std::move(name)), sizePt_(sizePt), textColor_(color) {}

TernFont TernFont::fontWithName(std::string name, double sizePt, TernColor color) {
  return {std::move(name), sizePt, color};
}

}  // namespace tern
