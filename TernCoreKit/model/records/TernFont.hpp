// A font with the colour of its text, for drawing labels.
//
// Ownership: values. Threads: as a standard container: any number of readers, or one writer.
// Fails: never.
#pragma once

#include <string>

#include "TernCoreKit/platform/Export.hpp"

namespace tern {

// Red, green, blue and opacity, each from 0 to 1.
struct TernColor {
  float r = 0;
  float g = 0;
  float b = 0;
  float a = 1;

  friend bool operator==(const TernColor&, const TernColor&) = default;
};

class TERN_API TernFont {
 public:
  // The size is in points.
  static TernFont fontWithName(std::string name, double sizePt, TernColor color);

  const std::string& name() const { return name_; }
  double sizePt() const { return sizePt_; }
  TernColor textColor() const { return textColor_; }

 private:
  TernFont(std::string name, double sizePt, TernColor color);

  std::string name_;
  double sizePt_;
  TernColor textColor_;
};

}  // namespace tern
