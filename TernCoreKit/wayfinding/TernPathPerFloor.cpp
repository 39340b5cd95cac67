#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5 {

TernPathPerFloor TernPathPerFloor::copyWithZone() const {
  TernPathPerFloor copy = *this;
  copy.points = TernASNode::copiesWithoutParents(points);
  return copy;
}

}  // namespace tern
