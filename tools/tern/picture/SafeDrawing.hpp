// A floor's drawing, which comes as text from a service, reduced to what may be shown inside a
// picture of ours (see DrawingRules.hpp).
//
// Ids of the drawing are replaced by ours, so drawings beside each other do not mix. What refers to
// something that is missing or not of the right kind is dropped, and so are references that would
// let a small drawing unfold into a huge one.
//
// Ownership: a plain value that owns its contents.
// Threads: as a standard container.
// Fails: `read` reports a drawing that is not well-formed, no SVG, or too large to show.
//
//   const ReadDrawing read = SafeDrawing::read(map.svg.text());
//   if (read.problem.empty()) out += read.drawing.markup("floor3-", 0.5);
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/tern/picture/DrawingRules.hpp"
#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

struct ReadDrawing;

class SafeDrawing {
 public:
  static constexpr std::size_t mostBytes = 16U << 20U;
  static constexpr std::size_t mostElements = 200'000;

  static ReadDrawing read(std::string_view svg);

  // The part of its own coordinates that the drawing says it fills; none when it does not say.
  const std::optional<Box>& frame() const { return frame_; }

  // The drawing as one group. Every id begins with `idPrefix` (letters, digits and -). `scale` is
  // the size of a drawing unit in the picture: texts that would come out smaller than anyone can
  // read are left out.
  std::string markup(std::string_view idPrefix, double scale) const;

 private:
  friend class DrawingReader;
  class Writer;

  static constexpr std::uint32_t none = UINT32_MAX;

  // An element, or a text when it has no name. Parents come before their children.
  struct Node {
    std::string_view element;
    std::string text;
    Declarations attributes;
    std::uint32_t parent = none;
    std::vector<std::uint32_t> children;
    // Elements below and including this one, and whether one of them is a `use`.
    std::size_t size = 1;
    bool hasUse = false;
    bool isReferredTo = false;
    // Where the attributes that refer to something lead: their places among the attributes.
    std::vector<std::pair<std::size_t, std::uint32_t>> targets;
  };

  std::optional<Box> frame_;
  std::vector<Node> nodes_;
};

struct [[nodiscard]] ReadDrawing {
  SafeDrawing drawing;
  // Empty when the drawing can be shown.
  std::string problem;
};

}  // namespace tern::picture
