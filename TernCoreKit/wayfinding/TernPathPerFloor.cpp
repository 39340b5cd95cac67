#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern {

TernPathPerFloor TernPathPerFloor::copyWithZone() const {
  TernPathPerFloor copy = *this;
  copy.points = TernASNode::copiesWithoutParents(points);
  return copy;
}

}  // namespace tern
