#pragma once

#include <string>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Red, green, blue and opacity, each from 0 to 1.
struct TernColor {
  /// Red.
  float r = 0;
  /// Green.
  float g = 0;
  /// Blue.
  float b = 0;
  /// Opacity; 1 hides what lies below.
  float a = 1;

  /// Whether all four parts are equal.
  friend bool operator==(const TernColor&, const TernColor&) = default;
};

/// A font with the colour of its text, for drawing labels.
///
/// Ownership: values.
/// Threads: as a standard container: any number of readers, or one writer.
/// Fails: never.
class TERN_API TernFont {
 public:
  /// A font of that name; the size is in points.
  static TernFont fontWithName(std::string name, double sizePt, TernColor color);

  /// Name of the font, as the drawing layer knows it.
  const std::string& name() const { return name_; }
  /// Size in points.
  double sizePt() const { return sizePt_; }
  /// Colour of the text.
  TernColor textColor() const { return textColor_; }

 private:
  TernFont(std::string name, double sizePt, TernColor color);

  std::string name_;
  double sizePt_;
  TernColor textColor_;
};

}  // namespace tern
